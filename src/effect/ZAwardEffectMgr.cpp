#include "effect/ZAwardEffectMgr.h"

#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZAwardEffectInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZAwardEffectInfo> declared {
        {Required, "id", IntegerAsText(), Z_FIELD(ZAwardEffectInfo, id)},
        {Required, "sort", Integer(), Z_FIELD(ZAwardEffectInfo, sort)},
        {Required, "name", Text(), Z_FIELD(ZAwardEffectInfo, name)},
        {Required, "flash", Text(), Z_FIELD(ZAwardEffectInfo, flash)},
        {Required, "icon", Text(), Z_FIELD(ZAwardEffectInfo, icon)},
        {Required, "descs", Text(), Z_FIELD(ZAwardEffectInfo, descs)},
    };
    return declared;
}

} // namespace

ZAwardEffectMgr& ZAwardEffectMgr::getInstance()
{
    static ZAwardEffectMgr instance;
    return instance;
}

bool ZAwardEffectMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZAwardEffectInfo& info) { m_infos.insert(info.id, info); });
    qDebug().noquote() << QStringLiteral("CS_PlatAwardEffect加载完毕");
    return true;
}

void ZAwardEffectMgr::clear()
{
    m_infos.clear();
}

ZAwardEffectInfo ZAwardEffectMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

QString ZAwardEffectMgr::getIconUrlById(const QString& id)
{
    const auto found = m_infos.constFind(id);
    if (found == m_infos.constEnd())
        return {};
    return ResourceServer::images() + QStringLiteral("/app/images/activity/effect/") + found->icon;
}

TableDescription ZAwardEffectMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_infos; });
}
