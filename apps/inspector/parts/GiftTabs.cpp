#include "inspector/parts/GiftTabs.h"

#include "gift/ZGiftListMgr.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/Pictures.h"

#include <QEvent>
#include <QIcon>
#include <QMap>

namespace {

constexpr QSize iconBox(20, 20);

} // namespace

GiftTabs::GiftTabs(Pictures& pictures, QWidget* parent)
    : QTabBar(parent)
    , m_pictures(pictures)
{
    setDrawBase(false);
    setExpanding(false);
    setIconSize(iconBox);
    connect(&pictures, &Pictures::sigLoaded, this, [this](const QString& path) {
        for (int place = 0; place < m_shown.size(); ++place) {
            if (m_shown.at(place).path == path)
                showIcon(place);
        }
    });
}

void GiftTabs::take()
{
    ZGiftListMgr* manager = ZGiftListMgr::getInstance();
    const QVector<ZGiftInfo>& gifts = manager->getGiftList();
    QMap<int, Tab> tabs;
    for (const ZGiftInfo& gift : gifts) {
        Tab& tab = tabs[gift.showTab];
        tab.number = gift.showTab;
        ++tab.gifts;
        if (gift.showTabIcon.isEmpty() || tab.icons.contains(gift.showTabIcon))
            continue;
        if (tab.icons.isEmpty()) {
            tab.path = manager->getGiftShowTabIconPathById(gift.giftId);
            tab.address = manager->getGiftShowTabIconUrlById(gift.giftId);
        }
        tab.icons.append(gift.showTabIcon);
    }
    m_shown = {Tab()};
    m_shown.first().gifts = static_cast<int>(gifts.size());
    for (const Tab& tab : qAsConst(tabs))
        m_shown.append(tab);
    while (count() > m_shown.size())
        removeTab(count() - 1);
    for (int place = 0; place < m_shown.size(); ++place) {
        if (place == count())
            addTab(QString());
        show(place, m_shown.at(place));
    }
}

int GiftTabs::tab() const
{
    return m_shown.value(currentIndex()).number; // while tabs come and go there may be none
}

void GiftTabs::changeEvent(QEvent* event)
{
    QTabBar::changeEvent(event);
    for (int place = 0; event->type() == QEvent::PaletteChange && place < m_shown.size(); ++place)
        showIcon(place);
}

void GiftTabs::show(int place, const Tab& tab)
{
    setTabText(place,
               tab.number == all ? tr("All (%1)").arg(tab.gifts)
                                 : tr("Tab %1 (%2)").arg(tab.number).arg(tab.gifts));
    showIcon(place);
}

void GiftTabs::showIcon(int place)
{
    const Tab& tab = m_shown.at(place);
    const qreal ratio = devicePixelRatioF();
    QImage icon = m_pictures.get(tab.path, tab.address, iconBox * ratio);
    icon.setDevicePixelRatio(ratio);
    setTabIcon(place, icon.isNull() ? QIcon() : QIcon(QPixmap::fromImage(icon)));
    const QString fault = m_pictures.fault(tab.path);
    setTabTextColor(place, fault.isEmpty() ? QColor() : Look::faultColour(palette()));
    QStringList words = tab.icons;
    if (words.size() > 1)
        words.prepend(tr("The gifts of this tab name several icons:"));
    if (!fault.isEmpty())
        words.append(fault);
    setTabToolTip(place, words.join(u'\n'));
}
