#include "chat/ZDoutuMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"

#include <QDebug>

namespace {

const TableColumns<ZDoutuInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZDoutuInfo> declared {
        {Required, "name", Text(), Z_FIELD(ZDoutuInfo, name)},
        {Required, "version", TextAsInteger(), Z_FIELD(ZDoutuInfo, version)},
        {Required, "group", TextAsInteger(), Z_FIELD(ZDoutuInfo, group),
         "a row with a negative one is left out"},
    };
    return declared;
}

} // namespace

ZDoutuMgr& ZDoutuMgr::getInstance()
{
    static ZDoutuMgr instance;
    return instance;
}

bool ZDoutuMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZDoutuInfo& info) {
        if (info.group >= 0)
            m_groups[info.group].append(info);
    });
    qDebug().noquote() << QStringLiteral("Doutu加载完毕");
    return true;
}

void ZDoutuMgr::clear()
{
    m_groups.clear();
}

const QMap<int, QVector<ZDoutuInfo>> ZDoutuMgr::getMessageMap()
{
    return m_groups;
}

QString ZDoutuMgr::getImageUrlById(int group, int index)
{
    const QVector<ZDoutuInfo> stickers = m_groups.value(group);
    if (index < 0 || index >= stickers.size())
        return {};
    const ZDoutuInfo& sticker = stickers.at(index);
    return QStringLiteral("%1/app/images/doutu/%2?imageView2/0/w/256/h/256&%3")
        .arg(ResourceServer::images(), sticker.name, QString::number(sticker.version));
}

QString ZDoutuMgr::getImagePathById(int group, int index)
{
    return CacheNames::imagePath(getImageUrlById(group, index));
}

QtPromise::QPromise<QString> ZDoutuMgr::getImagePathAndDownloadById(int group, int index)
{
    return ZDataTableMgr::getInstance()->downloadFile(getImagePathById(group, index),
                                                      getImageUrlById(group, index), true);
}

TableDescription ZDoutuMgr::describeTable()
{
    return columns().describe(
        QString(), QStringLiteral("all are kept, in table order within their group"), [] {
            QVector<ZDoutuInfo> stickers;
            for (const auto& group : qAsConst(getInstance().m_groups))
                stickers += group;
            return stickers;
        });
}
