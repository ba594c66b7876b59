#include "presentation/ZPCSkinMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/LogCategories.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"
#include "file/WholeFile.h"
#include "host/ZHttpComm.h"

#include <QDir>
#include <QMetaEnum>

namespace {

int tableVersion()
{
    return ZDataTableMgr::getInstance()->getTableVersion(EDataTable::PCSkin);
}

void store(const QString& path, const QByteArray& picture)
{
    if (picture.isEmpty())
        return;
    // Whole or not at all: the client may be painting the earlier picture.
    const QString fault = WholeFile::write(path, picture);
    if (!fault.isEmpty())
        qCWarning(LogCategories::resource).noquote() << fault;
}

} // namespace

ZPCSkinMgr& ZPCSkinMgr::getInstance()
{
    static ZPCSkinMgr instance;
    return instance;
}

const TableDeclaration& ZPCSkinMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZPCSkinMgr, ZPCSkinInfo> table {
        {
            {Optional, Text(), Z_FIELD(ZPCSkinInfo, id),
             FileOn {"ImageResServer", "/app/images/pcskin/", "{}_0_{version}"},
             FileOn {"ImageResServer", "/app/images/pcskin/", "{}_1_{version}"}},
            {Optional, Text(), Z_FIELD(ZPCSkinInfo, version)},
            {Optional, Text(), Z_FIELD(ZPCSkinInfo, desc)},
        },
        Listed {&ZPCSkinMgr::m_skins},
        Duplicates {"all are kept, the last row is the current skin"},
        Logs {"PCSkin加载完毕", QtInfoMsg}};
    return table;
}

ZPCSkinMgr::ZPCSkinMgr()
{
    QDir().mkpath(CacheFolders::skins());
    m_timer.setSingleShot(true);
    m_timer.setInterval(1000);
    connect(&m_timer, &QTimer::timeout, this, &ZPCSkinMgr::downloadSkinImages);
}

bool ZPCSkinMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZPCSkinMgr::clear()
{
    m_skins.clear();
}

void ZPCSkinMgr::loadPCSkinImages()
{
    m_timer.stop();
    m_timer.start();
}

QString ZPCSkinMgr::getSkinUrl(E_SkinLocate locate)
{
    if (m_skins.isEmpty() || m_skins.last().version.isEmpty())
        return {};
    const ZPCSkinInfo& current = m_skins.last();
    return QStringLiteral("%1/app/images/pcskin/%2_%3_%4")
        .arg(ResourceServer::imageRes(), current.id, QString::number(locate), current.version);
}

QString ZPCSkinMgr::getSkinPath(E_SkinLocate locate)
{
    return QStringLiteral("%1/%2").arg(CacheFolders::skins(),
                                       CacheNames::ofAddress(getSkinUrl(locate)));
}

void ZPCSkinMgr::downloadSkinImages()
{
    if (m_skins.isEmpty() || m_skins.last().version.isEmpty()) {
        qCInfo(LogCategories::resource).noquote() << QStringLiteral("皮肤不存在");
        Q_EMIT sigDownloadImages();
        return;
    }
    qCInfo(LogCategories::resource).noquote() << QStringLiteral("开始下载皮肤") << tableVersion();
    m_downloads = 0;
    const auto places = QMetaEnum::fromType<E_SkinLocate>();
    for (int i = 0; i < places.keyCount(); ++i) {
        const auto place = static_cast<E_SkinLocate>(places.value(i));
        ++m_downloads;
        ZHttpComm::getInstance()
            ->get(QUrl(getSkinUrl(place)))
            .then([this, path = getSkinPath(place)](const QByteArray& picture) {
                store(path, picture);
                if (--m_downloads == 0)
                    announceImages();
            })
            .fail([] {}); // leaves the run unannounced
    }
    if (m_downloads == 0)
        announceImages();
}

void ZPCSkinMgr::announceImages()
{
    qCInfo(LogCategories::resource).noquote()
        << QStringLiteral("下载皮肤图片完成") << tableVersion();
    Q_EMIT sigDownloadImages();
}
