#include "content/ServedContent.h"

#include "datatable/TableCatalogue.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"

#include <QUrl>
#include <QVector>

#include <algorithm>
#include <memory>

template <typename T>
using Promise = QtPromise::QPromise<T>;

namespace {

QString withSlash(const QString& address)
{
    return address.endsWith(QLatin1Char('/')) ? address : address + QLatin1Char('/');
}

bool saysMissing(const zErrorInfo& error)
{
    constexpr int notFound = 404;
    constexpr int gone = 410;
    return error.code() == notFound || error.code() == gone;
}

QString versionsFile()
{
    return QStringLiteral("app/versions.json");
}

/** As clients ask for it: by its version, or 0 where they learn none. */
QString tableAddress(const QString& table, const Content& content)
{
    QString path = QStringLiteral("app/resources/") + table;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        if (TableCatalogue::name(type) != table)
            continue;
        const auto versions = content.versionNumbers();
        const int version = versions ? versions->value(table).toInt() : 0;
        return QStringLiteral("%1?%2").arg(path, QString::number(std::max(version, 0)));
    }
    return path;
}

/** The bodies by what they were asked for by, which follows the base. */
Promise<QHash<QString, QByteArray>> fetchAll(const QString& base, const QStringList& targets)
{
    const auto bodies = std::make_shared<QHash<QString, QByteArray>>();
    QVector<Promise<void>> awaited;
    for (const QString& target : targets)
        awaited.append(
            ZHttpComm::getInstance()
                ->get(QUrl(base + target))
                .then([bodies, target](const QByteArray& body) { bodies->insert(target, body); })
                .fail([](const zErrorInfo& error) {
                    if (!saysMissing(error))
                        throw zErrorInfo(error);
                }));
    return QtPromise::all(awaited).then([bodies] { return *bodies; });
}

} // namespace

Promise<Content> ServedContent::fetch(const QString& address)
{
    const QString base = withSlash(address);
    return ZHttpComm::getInstance()
        ->get(QUrl(base + versionsFile()))
        .then([base](const QByteArray& versions) {
            Content content;
            content.versions = versions;
            QHash<QString, QString> tables; // by their addresses
            for (const QString& table : Content::tableNames())
                tables.insert(tableAddress(table, content), table);
            return fetchAll(base, tables.keys())
                .then([content, tables](const QHash<QString, QByteArray>& bodies) mutable {
                    for (auto body = bodies.begin(); body != bodies.end(); ++body)
                        content.tables.insert(tables.value(body.key()), *body);
                    return content;
                });
        });
}

Promise<QHash<QString, QByteArray>> ServedContent::fetchFiles(const QString& address,
                                                              const QStringList& paths)
{
    QHash<QString, QString> byTarget;
    for (const QString& path : paths)
        byTarget.insert(QString::fromLatin1(QUrl::toPercentEncoding(path, "/")), path);
    return fetchAll(withSlash(address), byTarget.keys())
        .then([byTarget](const QHash<QString, QByteArray>& bodies) {
            QHash<QString, QByteArray> files;
            for (auto body = bodies.begin(); body != bodies.end(); ++body)
                files.insert(byTarget.value(body.key()), *body);
            return files;
        });
}
