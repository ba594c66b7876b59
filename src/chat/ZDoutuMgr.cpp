#include "chat/ZDoutuMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"

namespace {

constexpr char stickerFolder[] = "/app/images/doutu/";

} // namespace

ZDoutuMgr& ZDoutuMgr::getInstance()
{
    static ZDoutuMgr instance;
    return instance;
}

const TableDeclaration& ZDoutuMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZDoutuMgr, ZDoutuInfo> table {
        {
            {Required, Text(), Z_FIELD(ZDoutuInfo, name), FileOn {"ImageResServer", stickerFolder}},
            {Required, TextAsInteger(), Z_FIELD(ZDoutuInfo, version)},
            {Required, TextAsInteger(), Z_FIELD(ZDoutuInfo, group)},
        },
        LeftOut {&ZDoutuInfo::group, "a row with a negative one is left out",
                 [](const ZDoutuInfo& info) { return info.group < 0; }},
        GroupedBy {&ZDoutuInfo::group, &ZDoutuMgr::m_groups},
        Logs {"Doutu加载完毕"}};
    return table;
}

bool ZDoutuMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
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
    const QString rendition = QStringLiteral("imageView2/0/w/256/h/256&");
    return ResourceServer::versionedImage(stickerFolder, sticker.name,
                                          rendition + QString::number(sticker.version));
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
