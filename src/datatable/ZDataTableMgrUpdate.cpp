#include "datatable/CacheFolders.h"
#include "datatable/TableCatalogue.h"
#include "datatable/TableRows.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <memory>

using QtPromise::QPromise;

namespace {

const EDataTable::EDataTableType notAwaited = EDataTable::PCSkin;

bool hasContent(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() > 0;
}

bool isTable(const QByteArray& body)
{
    TableRows table;
    return ZGlobalConfig::readTableFile(body, table.header, table.rows);
}

QString notATable(const QString& address)
{
    return QStringLiteral("数据表解析失败,tableUrl:%1").arg(address);
}

QPromise<void> rejected(const QString& message)
{
    return QPromise<void>::reject(zErrorInfo(message, 0));
}

QPromise<QString> writeFile(const QString& path, const QByteArray& body)
{
    if (body.isEmpty())
        return QPromise<QString>::resolve(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(body) != body.size() || !file.flush()) {
        const QString message = QStringLiteral("Cannot write %1: %2");
        return QPromise<QString>::reject(zErrorInfo(message.arg(path, file.errorString()), 0));
    }
    return QPromise<QString>::resolve(path);
}

} // namespace

/** Everything a download needs, fixed when it starts: the version may change while it runs. */
struct ZDataTableMgr::TableDownload
{
    QString key;
    QString address;
    QString path;
    QString temporaryPath;

    QPromise<QByteArray> fetch() const { return ZHttpComm::getInstance()->get(QUrl(address)); }

    QPromise<void> failed() const
    {
        const QString message = QStringLiteral("静态表下载错误");
        qInfo().noquote() << message << key;
        return rejected(message);
    }

    QPromise<void> store(const QByteArray& body) const
    {
        QFile::remove(temporaryPath);
        QFile file(temporaryPath);
        if (!file.open(QIODevice::WriteOnly)) {
            const QString message = QStringLiteral("保存静态表失败");
            qInfo().noquote() << message << key << path;
            return rejected(message);
        }
        const qint64 written = file.write(body);
        file.close();
        if (written > 0) {
            QFile::remove(path);
            QFile::rename(temporaryPath, path);
        }
        qInfo().noquote() << QStringLiteral("保存静态表成功") << key << path;
        return QPromise<void>::resolve();
    }
};

ZDataTableMgr::TableDownload ZDataTableMgr::startDownload(EDataTable::EDataTableType type)
{
    const QString path = getTablePath(type);
    const QString now = QString::number(QDateTime::currentMSecsSinceEpoch());
    return {TableCatalogue::name(type), getDataTableUrl(type), path,
            path + QStringLiteral("_temp_") + now};
}

QPromise<void> ZDataTableMgr::updateDataTable(EDataTable::EDataTableType type)
{
    const TableDownload download = startDownload(type);
    if (hasContent(download.path))
        return QPromise<void>::resolve();
    return download.fetch().then(
        [download](const QByteArray& body) {
            if (!isTable(body))
                return rejected(notATable(download.address));
            return download.store(body);
        },
        [download] { return download.failed(); });
}

QPromise<void> ZDataTableMgr::updateAllDataTable()
{
    QDir().mkpath(CacheFolders::tables());
    QVector<QPromise<void>> awaited;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        const QPromise<void> update = updateDataTable(type);
        if (type != notAwaited)
            awaited.append(update);
    }
    return QtPromise::all(awaited).fail([] {
        qInfo().noquote() << QStringLiteral("更新静态表出错");
        return rejected(QStringLiteral("网络不给力，请重试"));
    });
}

QPromise<void> ZDataTableMgr::updateGiftDataTable()
{
    const TableDownload download = startDownload(EDataTable::CS_GiftList);
    return download.fetch().then(
        [this, download](const QByteArray& body) {
            if (!isTable(body))
                return rejected(notATable(download.address));
            if (body == m_lastGiftTable) {
                const QString message = QStringLiteral("数据没变化");
                qInfo().noquote() << message << QStringLiteral("updateGiftDataTable")
                                  << download.address;
                return rejected(message);
            }
            m_lastGiftTable = body;
            return download.store(body);
        },
        [download] { return download.failed(); });
}

QPromise<QString> ZDataTableMgr::downloadFile(const QString& path, const QString& url,
                                              bool reuseExisting)
{
    if (reuseExisting && QFileInfo(path).size() > 0)
        return QPromise<QString>::resolve(path);
    const QString folder = QFileInfo(path).path();
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
    const QUrl address(url);
    // A host may reject with anything; its own words are kept where it has some.
    const QString unnamed = QStringLiteral("Cannot download %1");
    const auto error = std::make_shared<zErrorInfo>(
        unnamed.arg(address.toString(QUrl::RemoveQuery | QUrl::RemoveUserInfo)), 0);
    return ZHttpComm::getInstance()
        ->get(address)
        .tapFail([error](const zErrorInfo& cause) { *error = zErrorInfo(cause.message(), 0); })
        .then([path](const QByteArray& body) { return writeFile(path, body); },
              [error] { return QPromise<QString>::reject(*error); });
}
