#include "presentation/ZSystemConfigMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZSystemConfigInfo>& columns()
{
    using Cells::Text;
    static const TableColumns<ZSystemConfigInfo> declared {
        {Required, "id", Text(), Z_FIELD(ZSystemConfigInfo, id)},
        {Required, "configKey", Text(), Z_FIELD(ZSystemConfigInfo, configKey)},
        {Required, "configValue", Text(), Z_FIELD(ZSystemConfigInfo, configValue)},
        {Required, "desc", Text(), Z_FIELD(ZSystemConfigInfo, desc)},
        {Required, "params", Text(), Z_FIELD(ZSystemConfigInfo, params)},
    };
    return declared;
}

} // namespace

ZSystemConfigMgr& ZSystemConfigMgr::getInstance()
{
    static ZSystemConfigMgr instance;
    return instance;
}

bool ZSystemConfigMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZSystemConfigInfo& info) { m_infos.insert(info.id, info); });
    qInfo().noquote() << QStringLiteral("SystemConfig加载完毕");
    Q_EMIT sigChangeSystemConfigData();
    return true;
}

void ZSystemConfigMgr::clear()
{
    m_infos.clear();
}

ZSystemConfigInfo ZSystemConfigMgr::getInfoByDefine(E_SysConfigDefine define)
{
    return getInfoById(QString::number(define));
}

ZSystemConfigInfo ZSystemConfigMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

bool ZSystemConfigMgr::isConfigData(QString id)
{
    return m_infos.contains(id);
}

TableDescription ZSystemConfigMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_infos; });
}
