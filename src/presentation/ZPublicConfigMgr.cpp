#include "presentation/ZPublicConfigMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZPublicConfigInfo>& columns()
{
    using Cells::Text;
    static const TableColumns<ZPublicConfigInfo> declared {
        {Required, "id", Text(), Z_FIELD(ZPublicConfigInfo, id)},
        {Required, "value", Text(), Z_FIELD(ZPublicConfigInfo, value)},
        {Required, "desc", Text(), Z_FIELD(ZPublicConfigInfo, desc)},
    };
    return declared;
}

} // namespace

ZPublicConfigMgr& ZPublicConfigMgr::getInstance()
{
    static ZPublicConfigMgr instance;
    return instance;
}

bool ZPublicConfigMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZPublicConfigInfo& info) { m_infos.insert(info.id, info); });
    qDebug().noquote() << QStringLiteral("PublicConfig加载完毕");
    return true;
}

void ZPublicConfigMgr::clear()
{
    m_infos.clear();
}

const ZPublicConfigInfo ZPublicConfigMgr::getInfoByDefine(const EPublicConfitType& type)
{
    return getInfoById(QString::number(type));
}

ZPublicConfigInfo ZPublicConfigMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

TableDescription ZPublicConfigMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_infos; });
}
