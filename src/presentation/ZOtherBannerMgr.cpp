#include "presentation/ZOtherBannerMgr.h"

#include "datatable/DeclaredTable.h"
#include "presentation/EmbeddedPages.h"

namespace {

constexpr char pathPattern[] = "^https?://[^/]+(/.+)";

} // namespace

QSharedPointer<ZOtherBannerMgr> ZOtherBannerMgr::m_instance;

ZOtherBannerMgr* ZOtherBannerMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZOtherBannerMgr>(new ZOtherBannerMgr);
    return m_instance.data();
}

const TableDeclaration& ZOtherBannerMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZOtherBannerMgr, ZOtherBannerInfo> table {
        {
            {Required, Integer(), Z_FIELD(ZOtherBannerInfo, id)},
            {Required, Text(), Z_FIELD(ZOtherBannerInfo, targetObject), TextUse::Address},
            {Required, Integer(), Z_FIELD(ZOtherBannerInfo, isCefOpen),
             "from 1 on the trimmed targetObject joins the pages for the embedded browser",
             Between {0, 1}, OpensEmbedded {"targetObject", pathPattern}},
        },
        Emptied {&ZOtherBannerMgr::m_pages},
        EachRow {&ZOtherBannerMgr::notePage},
        Listed {&ZOtherBannerMgr::m_list, &ZOtherBannerInfo::id}};
    return table;
}

bool ZOtherBannerMgr::loadOtherBannerListTable(const QString& path)
{
    return declaration().load(path);
}

void ZOtherBannerMgr::clear()
{
    m_list.clear();
    m_pages.clear();
}

const QVector<ZOtherBannerInfo>& ZOtherBannerMgr::getList()
{
    return m_list;
}

bool ZOtherBannerMgr::otherBannerIsByCef(const QString& url)
{
    return !otherBannerCefPage(url).isEmpty();
}

QString ZOtherBannerMgr::otherBannerCefPage(const QString& url)
{
    return EmbeddedPages::pageFor(url, m_pages);
}

const QHash<QString, QString>& ZOtherBannerMgr::getPages()
{
    return m_pages;
}

void ZOtherBannerMgr::notePage(const ZOtherBannerInfo& info, const QJsonArray&)
{
    static const QRegularExpression pattern(QString::fromLatin1(pathPattern));
    if (info.isCefOpen >= 1)
        EmbeddedPages::add(info.targetObject.trimmed(), pattern, m_pages);
}
