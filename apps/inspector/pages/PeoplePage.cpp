#include "inspector/pages/PeoplePage.h"

#include "inspector/parts/FrameDay.h"
#include "inspector/parts/Gallery.h"

#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

struct Shelf
{
    const char* name;
    const char* title;
    const char* table;
    Gallery::WearableOf wearableOf; ///< null for the head frames, which have a day instead
};

constexpr Shelf shelves[] {
    {"level", QT_TRANSLATE_NOOP("PeoplePage", "Levels"), "CS_PlatFunLevel", &Wearables::level},
    {"medal", QT_TRANSLATE_NOOP("PeoplePage", "Medals"), "CS_MedalList", &Wearables::medal},
    {"frame", QT_TRANSLATE_NOOP("PeoplePage", "Head frames"), "CS_HeadframeList", nullptr},
    {"car", QT_TRANSLATE_NOOP("PeoplePage", "Cars"), "CS_CarList", &Wearables::car},
    {"stamp", QT_TRANSLATE_NOOP("PeoplePage", "Stamps"), "StampName", &Wearables::stamp},
    {"funstamp", QT_TRANSLATE_NOOP("PeoplePage", "Avatar stamps"), "CS_FunStamp",
     &Wearables::funStamp},
};

} // namespace

PeoplePage::PeoplePage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_tabs(new QTabWidget)
    , m_frames(new FrameDay(inspected))
{
    m_tabs->setObjectName(QStringLiteral("shelves"));
    m_tabs->setDocumentMode(true);
    const auto openTable = [this](const QString& thing) {
        Q_EMIT sigOpen(QStringLiteral("tables"), thing);
    };
    connect(m_frames, &FrameDay::sigOrigin, this, openTable);
    for (const Shelf& shelf : shelves) {
        QWidget* shown = m_frames;
        if (shelf.wearableOf != nullptr) {
            auto* gallery = new Gallery(inspected.host, inspected.pictures,
                                        QString::fromLatin1(shelf.table), shelf.wearableOf);
            connect(gallery, &Gallery::sigOrigin, this, openTable);
            shown = gallery;
        }
        shown->setObjectName(QString::fromLatin1(shelf.name));
        m_tabs->addTab(shown, tr(shelf.title));
    }
    (new QVBoxLayout(this))->addWidget(m_tabs);
    setFirst(m_tabs);
}

void PeoplePage::open(const QString& thing)
{
    const QString name = thing.section(u'/', 0, 0);
    const QString key = thing.section(u'/', 1);
    Gallery* shelf = gallery(name);
    bool isThere = false;
    if (shelf != nullptr) {
        m_tabs->setCurrentWidget(shelf);
        isThere = shelf->select(key);
    } else if (name == m_frames->objectName()) {
        m_tabs->setCurrentWidget(m_frames);
        isThere = m_frames->select(key);
    }
    if (!isThere)
        Q_EMIT sigFailure(tr("There is no %1").arg(thing));
}

QString PeoplePage::opened() const
{
    const QString name = m_tabs->currentWidget()->objectName();
    const Gallery* shelf = gallery(name);
    const QString key = shelf == nullptr ? m_frames->selected() : shelf->selected();
    return key.isEmpty() ? QString() : name + u'/' + key;
}

void PeoplePage::refresh()
{
    const auto shelves = findChildren<Gallery*>();
    for (Gallery* shelf : shelves)
        shelf->refresh();
}

QVector<Page::Scene> PeoplePage::scenes()
{
    const auto fetched = [this](const char* shelf, const char* key) {
        return [this, name = QString::fromLatin1(shelf), key = QString::fromLatin1(key)] {
            open(name + u'/' + key);
            gallery(name)->fetch();
        };
    };
    return {
        {QStringLiteral("people"), [this] { open(QStringLiteral("level/12")); }},
        {QStringLiteral("people-medals"), fetched("medal", "6")},
        {QStringLiteral("people-frames"),
         [this] {
             open(QStringLiteral("frame/103"));
             m_frames->setTime(QTime(20, 30));
         }},
        {QStringLiteral("people-cars"), fetched("car", "car_jeep")},
        {QStringLiteral("people-stamps"), [this] { open(QStringLiteral("stamp/6")); }},
        {QStringLiteral("people-avatarstamps"), [this] { open(QStringLiteral("funstamp/4")); }}};
}

bool PeoplePage::isAtRest() const
{
    const auto shelves = findChildren<Gallery*>();
    return m_frames->isAtRest()
        && std::all_of(shelves.begin(), shelves.end(),
                       [](const Gallery* shelf) { return shelf->isAtRest(); });
}

Gallery* PeoplePage::gallery(const QString& name) const
{
    return findChild<Gallery*>(name);
}
