#include "effect/ZFlashConfigMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/CachePaths.h"
#include "datatable/DeclaredTable.h"
#include "datatable/LogCategories.h"
#include "datatable/RequestCause.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"
#include "file/WholeFile.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"

#include <QDir>
#include <QFileInfo>
#include <QThreadPool>
#include <QUrl>

using CacheNames::VersionedName;
template <typename T>
using Promise = QtPromise::QPromise<T>;

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

QString descriptionOf(const ZFlashConfigInfo& info)
{
    return QStringLiteral("%1/%2.flajson")
        .arg(nameOf(info).in(CacheFolders::flashes()), info.flashName);
}

/** Unpacks on the thread pool; fulfilled with why that failed, or with an empty text. */
Promise<QString> unpack(const QString& archive)
{
    return Promise<QString>([archive](const QtPromise::QPromiseResolve<QString>& resolve) {
        QThreadPool::globalInstance()->start([archive, resolve] {
            const bool unpacked = ZGlobalConfig::unZipFile(archive, true);
            resolve(unpacked ? QString() : QStringLiteral("%1 cannot be unpacked").arg(archive));
        });
    });
}

/** Stores the archive in its folder and unpacks it there; fulfilled as unpack() is. */
Promise<QString> store(const ZFlashConfigInfo& info, const QByteArray& body)
{
    const QString folder = nameOf(info).in(CacheFolders::flashes());
    QDir().mkpath(folder);
    const QString archive = QStringLiteral("%1/%2").arg(folder, nameOf(info).whole());
    const QString fault = WholeFile::write(archive, body);
    return fault.isEmpty() ? unpack(archive) : Promise<QString>::resolve(fault);
}

} // namespace

struct ZFlashConfigMgr::Pass
{
    int tableVersion = 0;
    int started = 0;
    int open = 0;
};

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
             ArchiveOn {"ZZResServer", archiveFolder, "flashVersion", "{}.flajson"}},
            {Required, TextAsInteger(), Z_FIELD(ZFlashConfigInfo, flashVersion)},
            {Required, TextAsInteger(), Z_FIELD(ZFlashConfigInfo, flashPrevDownload),
             Between {0, 1}},
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
    QString address = ResourceServer::zzRes() + QLatin1String(archiveFolder) + flashName;
    const auto known = m_infos.constFind(flashName);
    if (known == m_infos.constEnd())
        return address;
    return address + QLatin1Char('?') + QString::number(known->flashVersion);
}

void ZFlashConfigMgr::loadFlash()
{
    m_timer.start();
}

bool ZFlashConfigMgr::isPresent(const QString& flashName) const
{
    const auto known = m_infos.constFind(flashName);
    return known != m_infos.constEnd() && QFileInfo(descriptionOf(*known)).isFile();
}

QString ZFlashConfigMgr::getFailure(const QString& flashName) const
{
    return m_failures.value(flashName);
}

void ZFlashConfigMgr::sltDownLoadFlash()
{
    const auto pass = std::make_shared<Pass>();
    pass->tableVersion = tableVersionNow();
    qCInfo(LogCategories::resource).noquote()
        << QStringLiteral("开始下载flash") << pass->tableVersion;
    for (const ZFlashConfigInfo& info : qAsConst(m_infos)) {
        if (isPresent(info.flashName))
            continue;
        if (CachePaths::mayBeName(info.flashName + QStringLiteral(".flajson")))
            download(info, pass);
        else
            m_failures.insert(info.flashName, QStringLiteral("no file may have this name"));
    }
    if (pass->started == 0) {
        Q_EMIT sigDownloadFlash();
        qCInfo(LogCategories::resource).noquote() << QStringLiteral("下载FlashConfig完成");
        Q_EMIT sigPassEnded(0);
    }
}

void ZFlashConfigMgr::download(const ZFlashConfigInfo& info, const std::shared_ptr<Pass>& pass)
{
    ++pass->started;
    ++pass->open;
    const QUrl address(getFlashUrl(info.flashName));
    const RequestCause cause(address);
    ZHttpComm::getInstance()
        ->get(address)
        .tapFail(cause)
        .then(
            [info, pass](const QByteArray& body) {
                // What was asked for under another version of the table may no longer be wanted.
                if (tableVersionNow() != pass->tableVersion)
                    return Promise<QString>::resolve(QStringLiteral("the table has changed"));
                return store(info, body);
            },
            [cause] { return Promise<QString>::resolve(cause.message()); })
        .then([this, info, pass](const QString& failure) { ended(info, *pass, failure); });
}

void ZFlashConfigMgr::ended(const ZFlashConfigInfo& info, Pass& pass, const QString& failure)
{
    if (failure.isEmpty())
        m_failures.remove(info.flashName);
    else
        m_failures.insert(info.flashName, failure);
    if (--pass.open == 0)
        Q_EMIT sigPassEnded(pass.started);
}
