#include "client/ClientFiles.h"

#include "datatable/ZDataTableMgr.h"
#include "file/JsonText.h"
#include "file/WholeFile.h"
#include "host/ZGlobalConfig.h"
#include "host/zErrorInfo.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryFile>

#include <memory>

namespace {

QString configurationFile()
{
    return QStringLiteral("zglobal.json");
}

/** Hosts take values from files only. */
QString putIntoForce(const QJsonObject& values)
{
    QTemporaryFile file;
    const QByteArray text = QJsonDocument(values).toJson();
    if (!file.open() || file.write(text) != text.size() || !file.flush())
        return QStringLiteral("no temporary file can be written: %1").arg(file.errorString());
    QString error;
    ZGlobalConfig::getInstance().loadConfig(file.fileName(), &error);
    return error;
}

} // namespace

QJsonObject ClientFiles::objectOf(const QByteArray& text, const QString& source, QString* error)
{
    QJsonObject object;
    const QString fault = JsonText::parse(text, object);
    if (!fault.isEmpty())
        *error = QStringLiteral("%1 is %2").arg(source, fault);
    return object;
}

QString ClientFiles::configure(const QJsonObject& values, bool remember)
{
    QString error;
    QJsonObject all;
    QFile file(configurationFile());
    if (file.exists()) {
        if (!file.open(QIODevice::ReadOnly))
            return QStringLiteral("%1 cannot be read: %2").arg(file.fileName(), file.errorString());
        all = objectOf(file.readAll(), configurationFile(), &error);
        file.close();
    }
    for (auto value = values.begin(); value != values.end(); ++value)
        all.insert(value.key(), value.value());
    if (error.isEmpty() && !values.isEmpty() && remember)
        error = WholeFile::write(configurationFile(), QJsonDocument(all).toJson());
    if (!error.isEmpty() || all.isEmpty())
        return error;
    if (!remember && !values.isEmpty())
        return putIntoForce(all);
    ZGlobalConfig::getInstance().loadConfig(configurationFile(), &error);
    return error;
}

QString ClientFiles::unversionedPath(const QString& table)
{
    return QStringLiteral("res/activity/") + table;
}

QtPromise::QPromise<QVector<ZClientFailure>> ClientFiles::fetchUnversioned()
{
    const auto failures = std::make_shared<QVector<ZClientFailure>>();
    QVector<QtPromise::QPromise<void>> fetches;
    const QVector<TableStatus> statuses = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& table : statuses) {
        if (table.kind >= 0)
            continue;
        fetches.append(ZDataTableMgr::getInstance()
                           ->updateUnversionedTable(table.table, unversionedPath(table.table))
                           .fail([failures, name = table.table](const zErrorInfo& error) {
                               failures->append({name, error.message()});
                           }));
    }
    return QtPromise::all(fetches).then([failures] { return *failures; });
}
