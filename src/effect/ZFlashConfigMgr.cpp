#include "effect/ZFlashConfigMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QThreadPool>
#include <QUrl>

using CacheNames::VersionedName;

namespace {

constexpr char archiveFolder[] = "/app/logo/flash/";

constexpr int loadDelay = 1000; // milliseconds

VersionedName nameOf(const ZFlashConfigInfo& info)
{
    return {info.flashName, QString::number(info.flashVersion)};
}

int tableVersionNow()
{
    return ZDataTableMgr::getInstance()->getTableVersion(EDataTable::FlashConfig);
}

void store(const QString& folder, const QString& archiveName, const QByteArray& body)
{
    QDir().mkpath(folder);
    const QString archive = QStringLiteral("%1/%2").arg(folder, archiveName);
    QFile file(archive);
    if (!file.open(QIODevice::WriteOnly) || file.write(body) != body.size())
        return;
    file.close();
    QThreadPool::globalInstance()->start([archive] { ZGlobalConfig::unZipFile(archive, true); });
}

} // namespace

ZFlashConfigMgr& ZFlashConfigMgr::getInstance()
{
    static ZFlashConfigMgr instance(nullptr);
    return instance;
}

const TableDeclaration& ZFlashConfigMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZFlashConfigMgr, ZFlashConfigInfo> table {
        {
            {Required, Text(), Z_FIELD(ZFlashConfigInfo, flashName),
             FileOn {"ZZResServer", archiveFolder}},
            {Required, TextAsInteger(), Z_FIELD(ZFlashConfigInfo, flashVersion)},
            {Required, TextAsInteger(), Z_FIELD(ZFlashConfigInfo, flashPrevDownload)},
        },
        LeftOut {&ZFlashConfigInfo::flashName, "a row without it is left out",
                 [](const ZFlashConfigInfo& info) { return info.flashName.isEmpty(); }},
        KeyedBy {&ZFlashConfigInfo::flashName, &ZFlashConfigMgr::m_infos},
        Logs {"FlashConfig加载完毕"}};
    return table;
}

ZFlashConfigMgr::ZFlashConfigMgr(QObject* parent)
    : QObject(parent)
{
    QDir().mkpath(CacheFolders::flashes());
    m_timer.setSingleShot(true);
    m_timer.setInterval(loadDelay);
    connect(&m_timer, &QTimer::timeout, this, &ZFlashConfigMgr::sltDownLoadFlash);
}

bool ZFlashConfigMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZFlashConfigMgr::clear()
{
    m_infos.clear();
}

QMap<QString, ZFlashConfigInfo> ZFlashConfigMgr::getMessageMap() const
{
    return m_infos;
}

QStringList ZFlashConfigMgr::getAllFlashName()
{
    QStringList names;
    for (const ZFlashConfigInfo& info : qAsConst(m_infos))
        names.append(nameOf(info).whole());
    return names;
}

QString ZFlashConfigMgr::getFlashPath(const QString& flashName)
{
    if (flashName.isEmpty())
        return {};
    const auto known = m_infos.constFind(flashName);
    if (known == m_infos.constEnd())
        return VersionedName {flashName, QString()}.in(CacheFolders::flashes());
    return nameOf(*known).in(CacheFolders::flashes());
}

QString ZFlashConfigMgr::getFlashUrl(const QString& flashName)
{
    if (flashName.isEmpty())
        return {};
    const QString address = ResourceServer::zzRes() + QLatin1String(archiveFolder) + flashName;
    const auto known = m_infos.constFind(flashName);
    if (known == m_infos.constEnd())
        return address;
    return address + QLatin1Char('?') + QString::number(known->flashVersion);
}

void ZFlashConfigMgr::loadFlash()
{
    m_timer.start();
}

void ZFlashConfigMgr::sltDownLoadFlash()
{
    const int tableVersion = tableVersionNow();
    qInfo().noquote() << QStringLiteral("开始下载flash") << tableVersion;
    m_started = 0;
    for (const ZFlashConfigInfo& info : qAsConst(m_infos)) {
        const QString folder = getFlashPath(info.flashName);
        if (!QFile::exists(QStringLiteral("%1/%2.flajson").arg(folder, info.flashName)))
            download(info, tableVersion);
    }
    if (m_started == 0) {
        Q_EMIT sigDownloadFlash();
        qInfo().noquote() << QStringLiteral("下载FlashConfig完成");
    }
}

void ZFlashConfigMgr::download(const ZFlashConfigInfo& info, int tableVersion)
{
    ++m_started;
    const QString folder = getFlashPath(info.flashName);
    ZHttpComm::getInstance()
        ->get(QUrl(getFlashUrl(info.flashName)))
        .then([folder, info, tableVersion](const QByteArray& body) {
            // What was asked for under another version of the table may no longer be wanted.
            if (tableVersionNow() == tableVersion)
                store(folder, nameOf(info).whole(), body);
        })
        .fail([] {}); // the next pass finds it missing still
}
