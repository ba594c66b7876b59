#include "presentation/ZOtherBannerMgr.h"

#include "datatable/TableColumns.h"
#include "presentation/EmbeddedPages.h"

namespace {

const TableColumns<ZOtherBannerInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZOtherBannerInfo> declared {
        {Required, "id", Integer(), Z_FIELD(ZOtherBannerInfo, id)},
        {Required, "targetObject", Text(), Z_FIELD(ZOtherBannerInfo, targetObject)},
        {Required, "isCefOpen", Integer(), Z_FIELD(ZOtherBannerInfo, isCefOpen),
         "from 1 on the trimmed targetObject joins the pages for the embedded browser"},
    };
    return declared;
}

} // namespace

QSharedPointer<ZOtherBannerMgr> ZOtherBannerMgr::m_instance;

ZOtherBannerMgr* ZOtherBannerMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZOtherBannerMgr>(new ZOtherBannerMgr);
    return m_instance.data();
}

bool ZOtherBannerMgr::loadOtherBannerListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZOtherBannerInfo& info) {
        if (info.isCefOpen >= 1)
            m_pages.insert(info.targetObject.trimmed());
        m_list.append(info);
    });
    return true;
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
    static const QRegularExpression pathPattern(QStringLiteral("^https?://[^/]+(/.+)"));
    return EmbeddedPages::pageFor(url, m_pages, pathPattern);
}

TableDescription ZOtherBannerMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), QStringLiteral("the list holds both"),
                              [] { return getInstance()->m_list; });
}
