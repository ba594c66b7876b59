#include "datatable/CacheFolders.h"
#include "datatable/CachePaths.h"
#include "datatable/LogCategories.h"
#include "datatable/RequestCause.h"
#include "datatable/TableCatalogue.h"
#include "datatable/TableList.h"
#include "datatable/TableRows.h"
#include "datatable/ZDataTableMgr.h"
#include "file/WholeFile.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

template <typename T>
using Promise = QtPromise::QPromise<T>;

namespace {

const EDataTable::EDataTableType notAwaited = EDataTable::PCSkin;

bool hasContent(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() > 0;
}

QString notATable(const QString& address)
{
    return QStringLiteral("数据表解析失败,tableUrl:%1").arg(address);
}

/** Tells a web page or a server's message from a damaged table. */
QString beginningOf(const QByteArray& body)
{
    constexpr int shown = 24;
    QString text = QString::fromUtf8(body.left(shown));
    for (QChar& character : text) {
        if (!character.isPrint())
            character = QLatin1Char('.');
    }
    return QStringLiteral("%1 bytes that are no table, the first \"%2\"")
        .arg(QString::number(body.size()), text);
}

QString named(const QString& object, const QString& cause)
{
    return QStringLiteral("%1: %2").arg(object, cause);
}

Promise<void> rejected(const QString& message)
{
    return Promise<void>::reject(zErrorInfo(message, 0));
}

/** Why the file was not written; then there is none. */
QString writeStraight(const QString& path, const QByteArray& body)
{
    QFile file(path);
    QString cause;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        cause = file.errorString();
    } else {
        cause = WholeFile::writeAll(file, body);
        if (!cause.isEmpty())
            QFile::remove(path);
    }
    return cause.isEmpty() ? cause : QStringLiteral("Cannot write %1: %2").arg(path, cause);
}

/** Opens a file that nobody else has, not even another process in the same millisecond. */
bool openTemporary(QFile& file, const QString& path)
{
    for (qint64 time = QDateTime::currentMSecsSinceEpoch();; ++time) {
        file.setFileName(path + QStringLiteral("_temp_") + QString::number(time));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
            return true;
        if (!QFileInfo::exists(file.fileName()))
            return false;
    }
}

/** Why the table was not stored; then what was at path is still there. */
QString storeTable(const QString& path, const QByteArray& body)
{
    QFile file;
    if (!openTemporary(file, path))
        return file.errorString();
    QString cause = WholeFile::writeAll(file, body);
    if (cause.isEmpty() && !body.isEmpty())
        cause = WholeFile::replace(file.fileName(), path);
    if (!cause.isEmpty())
        file.remove();
    return cause;
}

} // namespace

/** Everything a download needs, fixed when it starts: the version may change while it runs. */
struct ZDataTableMgr::TableDownload
{
    int kind;
    QString table;
    int version;
    QString address;
    QString path;
    const TableDeclaration* declaration = nullptr; // of one that would take a good file's place

    /** Why the body is not what was asked for, or an empty text. */
    QString faultOf(const QByteArray& body) const
    {
        TableRows rows;
        QString cause;
        if (!rows.read(body, &cause)) {
            const QString fault = named(shownAddress(), beginningOf(body));
            return cause.isEmpty() ? fault : named(fault, cause);
        }
        const QString column =
            declaration == nullptr ? QString() : declaration->missingColumn(rows.header);
        return column.isEmpty()
            ? column
            : named(shownAddress(), QStringLiteral("the table has no column \"%1\"").arg(column));
    }

    TableFailure failure(TableFailure::Step step, const QString& cause, int httpStatus = 0) const
    {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        return {step, table, kind, version, shownAddress(), httpStatus, cause, now};
    }

    QString shownAddress() const { return RequestCause::shown(QUrl(address)); }
};

ZDataTableMgr::TableDownload ZDataTableMgr::startDownload(EDataTable::EDataTableType type)
{
    const QString address = getDataTableUrl(type); // gives it a version
    return {type, TableCatalogue::name(type), getTableVersion(type), address, getTablePath(type)};
}

void ZDataTableMgr::tellFailure(const TableFailure& failure, const QString& error)
{
    m_updateErrors.insert(failure.table, error);
    m_failures.insert(failure.table, failure);
    Q_EMIT sigTableFailed(failure);
}

/** The bytes of the table; what goes wrong is noted, logged and becomes the fixed words. */
Promise<QByteArray> ZDataTableMgr::fetch(const TableDownload& download)
{
    const QUrl address(download.address);
    const RequestCause cause(address);
    return ZHttpComm::getInstance()->get(address).tapFail(cause).then(
        [this, download](const QByteArray& body) {
            const QString fault = download.faultOf(body);
            if (fault.isEmpty())
                return Promise<QByteArray>::resolve(body);
            const QString message = notATable(download.address);
            tellFailure(download.failure(TableFailure::Content, fault), message);
            return Promise<QByteArray>::reject(zErrorInfo(message, 0));
        },
        [this, download, cause] {
            const QString message = QStringLiteral("静态表下载错误");
            qCInfo(LogCategories::update).noquote() << message << download.table;
            tellFailure(download.failure(TableFailure::Download, cause.message(), cause.status()),
                        cause.message());
            return Promise<QByteArray>::reject(zErrorInfo(message, 0));
        });
}

Promise<void> ZDataTableMgr::store(const TableDownload& download, const QByteArray& body)
{
    const QString cause = storeTable(download.path, body);
    if (!cause.isEmpty()) {
        const QString message = QStringLiteral("保存静态表失败");
        qCInfo(LogCategories::update).noquote() << message << download.table << download.path;
        const QString error = named(download.path, cause);
        tellFailure(download.failure(TableFailure::Store, error), error);
        return rejected(message);
    }
    m_updateErrors.remove(download.table);
    qCInfo(LogCategories::update).noquote()
        << QStringLiteral("保存静态表成功") << download.table << download.path;
    if (!body.isEmpty())
        Q_EMIT sigTableUpdated(download.table, download.kind, download.version);
    return Promise<void>::resolve();
}

Promise<void> ZDataTableMgr::updateDataTable(EDataTable::EDataTableType type)
{
    const TableDownload download = startDownload(type);
    if (hasContent(download.path)) {
        m_updateErrors.remove(download.table);
        return Promise<void>::resolve();
    }
    return fetch(download).then(
        [this, download](const QByteArray& body) { return store(download, body); });
}

Promise<void> ZDataTableMgr::updateAllDataTable()
{
    QDir().mkpath(CacheFolders::tables());
    QVector<Promise<void>> awaited;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        const Promise<void> update = updateDataTable(type);
        if (type != notAwaited)
            awaited.append(update);
    }
    return QtPromise::all(awaited).fail([] {
        qCInfo(LogCategories::update).noquote() << QStringLiteral("更新静态表出错");
        return rejected(QStringLiteral("网络不给力，请重试"));
    });
}

Promise<void> ZDataTableMgr::updateGiftDataTable()
{
    const TableDownload download = startDownload(EDataTable::CS_GiftList);
    return fetch(download).then([this, download](const QByteArray& body) {
        if (body == m_lastGiftTable) {
            const QString message = QStringLiteral("数据没变化");
            qCInfo(LogCategories::update).noquote()
                << message << QStringLiteral("updateGiftDataTable") << download.address;
            return rejected(message);
        }
        const Promise<void> stored = store(download, body);
        // What could not be stored has to be fetched again.
        m_lastGiftTable = stored.isFulfilled() ? body : QByteArray();
        return stored;
    });
}

Promise<void> ZDataTableMgr::updateUnversionedTable(const QString& table, const QString& path)
{
    const TableEntry* entry = tableEntry(table);
    if (entry == nullptr || entry->reader.kind >= 0)
        return rejected(QStringLiteral("%1 is no table without a version").arg(table));
    QDir().mkpath(QFileInfo(path).path());
    const TableDownload download {-1, table, 0, urlOf(table), path, &entry->reader.declaration()};
    return fetch(download)
        .then([this, download](const QByteArray& body) { return store(download, body); })
        .fail([this, table] { return rejected(m_failures.value(table).cause); });
}

Promise<QString> ZDataTableMgr::downloadFile(const QString& path, const QString& url,
                                             bool reuseExisting)
{
    const auto refused = [](const QString& why) {
        return Promise<QString>::reject(zErrorInfo(why, 0));
    };
    if (!CachePaths::mayBeUsed(path))
        return refused(QStringLiteral("%1 leads out of the cache").arg(path));
    const QFileInfo there(path);
    if (reuseExisting && there.isFile() && there.size() > 0)
        return Promise<QString>::resolve(path);
    const QString folder = there.path();
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
    const QUrl address(url);
    const RequestCause cause(address);
    return ZHttpComm::getInstance()->get(address).tapFail(cause).then(
        [path, refused](const QByteArray& body) {
            const QString fault = body.isEmpty() ? QString() : writeStraight(path, body);
            return fault.isEmpty() ? Promise<QString>::resolve(path) : refused(fault);
        },
        [cause, refused] { return refused(cause.message()); });
}
