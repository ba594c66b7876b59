#include "inspector/window/PageList.h"

#include "inspector/pages/CachePage.h"
#include "inspector/pages/ChatPage.h"
#include "inspector/pages/GiftsPage.h"
#include "inspector/pages/LogPage.h"
#include "inspector/pages/LookPage.h"
#include "inspector/pages/OverviewPage.h"
#include "inspector/pages/PagesPage.h"
#include "inspector/pages/PeoplePage.h"
#include "inspector/pages/TablesPage.h"

namespace {

template <class Shown>
Page* make(const Inspected& inspected, QWidget* parent)
{
    return new Shown(inspected, parent);
}

} // namespace

const QVector<PageEntry>& pageList()
{
    static const QVector<PageEntry> list {
        {"overview", QT_TRANSLATE_NOOP("PageList", "Overview"), &make<OverviewPage>},
        {"tables", QT_TRANSLATE_NOOP("PageList", "Tables"), &make<TablesPage>},
        {"gifts", QT_TRANSLATE_NOOP("PageList", "Gifts"), &make<GiftsPage>},
        {"people", QT_TRANSLATE_NOOP("PageList", "People"), &make<PeoplePage>},
        {"chat", QT_TRANSLATE_NOOP("PageList", "Chat"), &make<ChatPage>},
        {"pages", QT_TRANSLATE_NOOP("PageList", "Pages"), &make<PagesPage>},
        {"look", QT_TRANSLATE_NOOP("PageList", "Look"), &make<LookPage>},
        {"cache", QT_TRANSLATE_NOOP("PageList", "Cache"), &make<CachePage>},
        {"log", QT_TRANSLATE_NOOP("PageList", "Log"), &make<LogPage>},
    };
    return list;
}
