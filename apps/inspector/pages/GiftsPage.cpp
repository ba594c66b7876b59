#include "inspector/pages/GiftsPage.h"

#include "client/ZGlobalClient.h"
#include "gift/ZGiftLabelMgr.h"
#include "gift/ZGiftListMgr.h"
#include "inspector/host/ClientHost.h"
#include "inspector/parts/AnimationBox.h"
#include "inspector/parts/EmptyNote.h"
#include "inspector/parts/ExplanationView.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/GiftTabs.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/RawTables.h"
#include "inspector/parts/SearchBox.h"
#include "inspector/parts/Tiles.h"
#include "inspector/parts/TimeSlider.h"
#include "models/ZGiftModel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

namespace {

constexpr QSize pictureSize(64, 64);

QString dayOf(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd"));
}

/** The rule that says no, in what fits on a tile; empty where none does. */
QString faultOf(const ZGiftInfo& gift, qint64 time)
{
    static const QVector<stGiftRule> rules = ZGiftListMgr::validityRules();
    for (const stGiftRule& rule : rules) {
        if (rule.holds(gift, time))
            continue;
        const QString column = QString::fromLatin1(rule.column);
        if (column == QLatin1String("startTime"))
            return GiftsPage::tr("from %1").arg(dayOf(gift.startTime));
        if (column == QLatin1String("endTime"))
            return GiftsPage::tr("until %1").arg(dayOf(gift.endTime));
        if (column == QLatin1String("isVisible"))
            return GiftsPage::tr("not visible");
        if (column == QLatin1String("giftDisplayLocation"))
            return GiftsPage::tr("not in the panel");
        return QString::fromUtf8(rule.words);
    }
    return {};
}

Tile tileOf(const QString& id, qint64 time)
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const ZGiftInfo gift = gifts->getGiftInfoById(id);
    Tile tile;
    tile.path = gifts->getGiftImagePathById(id);
    tile.address = gifts->getGiftImageUrlById(id);
    tile.title = gift.giftName;
    tile.below = QStringLiteral("%1 · %2").arg(id, QLocale().toString(gift.price));
    tile.fault = faultOf(gift, time);
    const ZGiftLabelInfo label = ZGiftLabelMgr::getInstance().getInfoById(gift.giftLabelId);
    tile.badge = label.giftLabelName;
    tile.badgeStart = QColor(label.startColor);
    tile.badgeEnd = QColor(label.endColor);
    tile.badgeHolds = gift.labelStartTime <= time && time <= gift.labelEndTime;
    return tile;
}

} // namespace

/** The gifts of a tab that can be sent, that cannot, or both. */
class GiftsPage::Panel : public FilterModel
{
public:
    enum Shown { All, Sendable, Unsendable };

    using FilterModel::FilterModel;

    void setFilter(const QString& search, int tab, Shown shown)
    {
        m_tab = tab;
        m_shown = shown;
        setSearch(search);
    }

    const ZGiftModel& gifts() const { return static_cast<const ZGiftModel&>(*sourceModel()); }
    QString id(const QModelIndex& shown) const { return gifts().key(mapToSource(shown).row()); }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        const int tab = gifts().value(row, QStringLiteral("showTab")).toInt();
        const bool isShown = m_shown == All || gifts().isSendable(row) == (m_shown == Sendable);
        return (m_tab == GiftTabs::all || m_tab == tab) && isShown
            && FilterModel::filterAcceptsRow(row, parent);
    }

private:
    int m_tab = GiftTabs::all;
    Shown m_shown = All;
};

GiftsPage::GiftsPage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_host(inspected.host)
    , m_files(inspected.files)
    , m_gifts(new ZGiftModel(this))
    , m_panel(new Panel(this))
    , m_view(new TileView)
    , m_tabs(new GiftTabs(inspected.pictures))
    , m_shown(new QComboBox)
    , m_search(new SearchBox)
    , m_time(new TimeSlider)
    , m_count(new QLabel)
    , m_animation(new AnimationBox)
    , m_explanation(new ExplanationView)
{
    m_panel->setSourceModel(m_gifts);
    auto* parts = new KeptSplitter(QStringLiteral("gifts"), Qt::Horizontal,
                                   {makeTiles(inspected), makeGift()}, {800, 330});
    parts->setStretchFactor(0, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeTop());
    layout->addWidget(m_tabs);
    layout->addWidget(parts, 1);
    layout->addWidget(m_time);
    setFirst(m_view);
    m_explain.setSingleShot(true);
    connect(&m_explain, &QTimer::timeout, this, &GiftsPage::explain);
    connect(m_time, &TimeSlider::sigTimeChanged, this, &GiftsPage::setTime);
    connect(&m_host, &ClientHost::sigFilesChanged, this, &GiftsPage::refresh);
    connect(&m_files, &RawTables::sigRead, &m_explain, QOverload<>::of(&QTimer::start));
    setTime(m_time->time());
    readTable();
}

void GiftsPage::open(const QString& thing)
{
    m_tabs->setCurrentIndex(0);
    m_shown->setCurrentIndex(Panel::All);
    const int row = m_gifts->rowOf(thing);
    m_search->setText(row < 0 ? thing : QString());
    const QModelIndex shown = m_panel->mapFromSource(m_gifts->index(row, 0));
    m_view->setCurrentIndex(shown);
    m_view->scrollTo(shown);
}

QString GiftsPage::opened() const
{
    return m_selected;
}

void GiftsPage::refresh()
{
    readTable();
    play();
    m_explain.start();
}

QVector<Page::Scene> GiftsPage::scenes()
{
    return {{QStringLiteral("gifts"),
             [this] {
                 m_time->setTime(QDateTime::currentSecsSinceEpoch());
                 open(QStringLiteral("G1018"));
                 m_animation->fetch();
             }},
            {QStringLiteral("gifts-gone"),
             [this] {
                 m_time->setTime(QDateTime::currentSecsSinceEpoch());
                 m_tabs->setCurrentIndex(0);
                 m_search->setText(QStringLiteral("G1014"));
                 m_animation->fetch();
             }},
            {QStringLiteral("gifts-time"), [this] {
                 const QString gift = QStringLiteral("G1195");
                 open(gift);
                 m_tabs->setCurrentIndex(4);
                 m_view->scrollTo(m_view->currentIndex());
                 m_time->setTime(ZGiftListMgr::getInstance()->getGiftInfoById(gift).endTime + 1);
                 m_animation->fetch();
             }}};
}

bool GiftsPage::isAtRest() const
{
    return !m_explain.isActive() && !m_files.isReading() && m_animation->isAtRest();
}

QWidget* GiftsPage::makeTop()
{
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_shown->setObjectName(QStringLiteral("shown"));
    m_shown->addItems({tr("All gifts"), tr("Can be sent"), tr("Cannot be sent")});
    m_count->setObjectName(QStringLiteral("count"));
    auto* top = new QWidget;
    auto* layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_shown);
    layout->addWidget(m_count, 1);
    layout->addWidget(m_search, 1);
    connect(m_tabs, &GiftTabs::currentChanged, this, &GiftsPage::filter);
    connect(m_shown, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &GiftsPage::filter);
    connect(m_search, &QLineEdit::textChanged, this, &GiftsPage::filter);
    return top;
}

QWidget* GiftsPage::makeTiles(const Inspected& inspected)
{
    m_view->setObjectName(QStringLiteral("gifts"));
    m_view->setItemDelegate(new TileDelegate(
        inspected.pictures, pictureSize,
        [this](const QModelIndex& shown) { return tileOf(m_panel->id(shown), m_gifts->time()); },
        m_view));
    m_view->setModel(m_panel);
    new EmptyNote(m_view, m_gifts->table());
    connect(&inspected.pictures, &Pictures::sigLoaded, this, [this](const QString& path) {
        ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
        if (path == gifts->getGiftImagePathById(m_selected)
            || path == gifts->getGiftShowTabIconPathById(m_selected))
            m_explain.start(); // which tells whether the picture is there
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &GiftsPage::select);
    connect(m_view, &QAbstractItemView::clicked, this, &GiftsPage::play);
    return m_view;
}

QWidget* GiftsPage::makeGift()
{
    auto* gift = new QWidget;
    auto* layout = new QVBoxLayout(gift);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_animation);
    layout->addWidget(m_explanation, 1);
    m_explanation->setPlaceholderText(tr("Select a gift to see why it can be sent, or cannot."));
    connect(m_animation, &AnimationBox::sigFetched, this, [this] { m_explain.start(); });
    connect(m_explanation, &ExplanationView::sigMeant, this, &GiftsPage::open);
    connect(m_explanation, &ExplanationView::sigOrigin, this,
            [this](const QString& thing) { Q_EMIT sigOpen(QStringLiteral("tables"), thing); });
    return gift;
}

void GiftsPage::readTable()
{
    QVector<qint64> changes;
    const auto& gifts = ZGiftListMgr::getInstance()->getGiftList();
    for (const ZGiftInfo& gift : gifts)
        changes.append({gift.startTime, gift.endTime + 1}); // the last second is still on sale
    m_time->setChanges(changes);
    m_tabs->take();
    filter();
}

void GiftsPage::setTime(qint64 seconds)
{
    m_gifts->setTime(seconds);
    if (m_shown->currentIndex() != Panel::All)
        filter();
    m_view->viewport()->update(); // labels have their times, too
    count();
    m_explain.start();
}

void GiftsPage::filter()
{
    m_filters = true;
    m_panel->setFilter(m_search->text(), m_tabs->tab(),
                       static_cast<Panel::Shown>(m_shown->currentIndex()));
    // A view whose current row goes takes a neighbour, which nobody has asked for.
    m_view->setCurrentIndex(m_panel->mapFromSource(m_gifts->index(m_gifts->rowOf(m_selected), 0)));
    m_filters = false;
    if (m_panel->rowCount() == 1 && !m_search->text().isEmpty())
        m_view->setCurrentIndex(m_panel->index(0, 0)); // what was looked for
    count();
    m_explain.start(); // of what is looked for, where no tile has it
}

void GiftsPage::count()
{
    int sendable = 0;
    for (int row = 0; row < m_panel->rowCount(); ++row)
        sendable += m_gifts->isSendable(m_panel->mapToSource(m_panel->index(row, 0)).row()) ? 1 : 0;
    m_count->setText(tr("%1 of %2 can be sent").arg(sendable).arg(m_panel->rowCount()));
}

void GiftsPage::select(const QModelIndex& shown)
{
    if (m_filters || !shown.isValid())
        return;
    m_selected = m_panel->id(shown);
    play();
    m_explain.start();
}

void GiftsPage::play()
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const QString name = gifts->getGiftInfoById(m_selected).animationName;
    m_animation->show(Moving {name.isEmpty() ? Moving::None : Moving::Archive, name,
                              gifts->getGiftAnimationPathById(m_selected),
                              gifts->getGiftAnimationUrlById(m_selected)});
}

void GiftsPage::explain()
{
    const bool isMissed = m_panel->rowCount() == 0 && !m_search->text().isEmpty();
    const QString asked = isMissed ? m_search->text() : m_selected;
    const Why::Files files = m_files.filesFor(QStringLiteral("gift"));
    if (asked.isEmpty())
        m_explanation->show(Why::Reply());
    else if (files)
        m_explanation->show(Why::gift(asked, QDateTime::fromSecsSinceEpoch(m_gifts->time()),
                                      m_host.client().failures(), files));
}
