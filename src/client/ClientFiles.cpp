#include "client/ClientFiles.h"

#include "datatable/ZDataTableMgr.h"
#include "file/JsonText.h"
#include "file/WholeFile.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QUrl>

#include <memory>

namespace {

QString configurationFile()
{
    return QStringLiteral("zglobal.json");
}

/** Why a table of this declaration cannot be read from the bytes. */
QString faultOf(const QByteArray& bytes, const TableDeclaration& declaration)
{
    QHash<QString, int> header;
    QJsonArray rows;
    QString error;
    if (!ZGlobalConfig::readTableFile(bytes, header, rows, &error))
        return error;
    const QString column = declaration.missingColumn(header);
    return column.isEmpty() ? column : QStringLiteral("has no column \"%1\"").arg(column);
}

QString store(const TableStatus& table, const QByteArray& body)
{
    QString fault = faultOf(body, *table.declaration);
    if (!fault.isEmpty())
        return fault;
    const QString path = ClientFiles::unversionedPath(table.table);
    if (!QDir().mkpath(QFileInfo(path).path()))
        return QStringLiteral("the folder of %1 cannot be made").arg(path);
    return WholeFile::write(path, body);
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

QString ClientFiles::remember(const QJsonObject& values)
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
    if (error.isEmpty() && !values.isEmpty())
        error = WholeFile::write(configurationFile(), QJsonDocument(all).toJson());
    if (error.isEmpty() && !all.isEmpty())
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
        const QString address = ZGlobalConfig::getInstance().getConfig(QStringLiteral("cmsServer"))
            + QStringLiteral("app/resources/") + table.table;
        const auto failed = [failures, table](const QString& why) {
            failures->append({table.table, why});
        };
        fetches.append(ZHttpComm::getInstance()
                           ->get(QUrl(address))
                           .then([table, failed](const QByteArray& body) {
                               const QString fault = store(table, body);
                               if (!fault.isEmpty())
                                   failed(fault);
                           })
                           .fail([failed](const zErrorInfo& error) { failed(error.message()); }));
    }
    return QtPromise::all(fetches).then([failures] { return *failures; });
}
