#include "effect/ZActivityAwardEffectMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZActivityAwardEffectInfo>& columns()
{
    using namespace Cells;
    using Info = ZActivityAwardEffectInfo;
    static const TableColumns<Info> declared {
        {Required, "id", Text(), Z_FIELD(Info, id)},
        {Required, "rankType", Text(), Z_FIELD(Info, rankType)},
        {Required, "effectId", Text(), Z_FIELD(Info, effectId)},
        {Required, "name", Text(), Z_FIELD(Info, name)},
        {Required, "effectIcon", Text(), Z_FIELD(Info, effectIcon)},
        {Required, "availableTime", Integer(), Z_FIELD(Info, availableTime)},
        {Required, "availableGapTime", Integer(), Z_FIELD(Info, availableGapTime)},
        {Required, "activityId", Text(), Z_FIELD(Info, activityId)},
        {Required, "remark", "never read"},
    };
    return declared;
}

} // namespace

ZActivityAwardEffectMgr& ZActivityAwardEffectMgr::getInstance()
{
    static ZActivityAwardEffectMgr instance;
    return instance;
}

bool ZActivityAwardEffectMgr::loadListTable(const QString& path)
{
    clear();
    const auto table = columns().read(path);
    if (!table)
        return false;
    table->forEach([this](const ZActivityAwardEffectInfo& info) { m_infos.insert(info.id, info); });
    qDebug().noquote() << QStringLiteral("ActivityAwardEffect加载完毕");
    return true;
}

void ZActivityAwardEffectMgr::clear()
{
    m_infos.clear();
}

ZActivityAwardEffectInfo ZActivityAwardEffectMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

TableDescription ZActivityAwardEffectMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_infos; });
}
