#include "effect/ZFlashConfigMgr.h"

#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QThreadPool>
#include <QUrl>

namespace {

constexpr int loadDelay = 1000; // milliseconds

QString baseFolder()
{
    return QStringLiteral("res/flash");
}

const TableColumns<ZFlashConfigInfo>& columns()
{
    static const TableColumns<ZFlashConfigInfo> declared {
        {Required, "flashName", Cells::Text(), Z_FIELD(ZFlashConfigInfo, flashName),
         "a row without it is left out"},
        {Required, "flashVersion", Cells::TextAsInteger(), Z_FIELD(ZFlashConfigInfo, flashVersion)},
        {Required, "flashPrevDownload", Cells::TextAsInteger(),
         Z_FIELD(ZFlashConfigInfo, flashPrevDownload)},
    };
    return declared;
}

QString versioned(const ZFlashConfigInfo& info)
{
    return QStringLiteral("%1_%2").arg(info.flashName, QString::number(info.flashVersion));
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

ZFlashConfigMgr::ZFlashConfigMgr(QObject* parent)
    : QObject(parent)
{
    QDir().mkpath(baseFolder());
    m_timer.setSingleShot(true);
    m_timer.setInterval(loadDelay);
    connect(&m_timer, &QTimer::timeout, this, &ZFlashConfigMgr::sltDownLoadFlash);
}

bool ZFlashConfigMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZFlashConfigInfo& info) {
        if (!info.flashName.isEmpty())
            m_infos.insert(info.flashName, info);
    });
    qDebug().noquote() << QStringLiteral("FlashConfig加载完毕");
    return true;
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
        names.append(versioned(info));
    return names;
}

QString ZFlashConfigMgr::getFlashPath(const QString& flashName)
{
    if (flashName.isEmpty())
        return {};
    const auto known = m_infos.constFind(flashName);
    if (known == m_infos.constEnd())
        return QStringLiteral("%1/%2_").arg(baseFolder(), flashName);
    return QStringLiteral("%1/%2").arg(baseFolder(), versioned(*known));
}

QString ZFlashConfigMgr::getFlashUrl(const QString& flashName)
{
    if (flashName.isEmpty())
        return {};
    const QString server = ZGlobalConfig::getInstance().getConfig(QStringLiteral("ZZResServer"));
    const auto known = m_infos.constFind(flashName);
    if (known == m_infos.constEnd())
        return QStringLiteral("%1/app/logo/flash/%2").arg(server, flashName);
    return QStringLiteral("%1/app/logo/flash/%2?%3")
        .arg(server, flashName, QString::number(known->flashVersion));
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
                store(folder, versioned(info), body);
        })
        .fail([] {}); // the next pass finds it missing still
}

TableDescription ZFlashConfigMgr::describeTable()
{
    return columns().describe(QStringLiteral("flashName"), laterRowWins(),
                              [] { return getInstance().m_infos; });
}
