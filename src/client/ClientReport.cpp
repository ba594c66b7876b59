#include "client/ClientReport.h"

#include "ZGlobalVersion.h"
#include "client/ClientFiles.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QLocale>
#include <QRegularExpression>
#include <QSysInfo>
#include <QUrl>

#include <array>

namespace {

struct ConfigKey
{
    enum Kind { Plain, Address, Secret };
    const char* name;
    Kind kind;
};

constexpr std::array<ConfigKey, 9> configKeys {{{"cmsServer", ConfigKey::Address},
                                                {"ServerType", ConfigKey::Plain},
                                                {"ImageResServer", ConfigKey::Address},
                                                {"ZZResServer", ConfigKey::Address},
                                                {"H5Server", ConfigKey::Address},
                                                {"H5WebServer", ConfigKey::Address},
                                                {"userId", ConfigKey::Secret},
                                                {"sessionId", ConfigKey::Secret},
                                                {"funlevelDir", ConfigKey::Plain}}};

QString valueOf(const ConfigKey& key)
{
    return ZGlobalConfig::getInstance().getConfig(QLatin1String(key.name));
}

QString shownAddress(const QString& address)
{
    const QUrl url(address);
    if (!url.isValid() || url.host().isEmpty())
        return QStringLiteral("(no address)");
    return url.toString(QUrl::RemoveQuery | QUrl::RemoveUserInfo | QUrl::RemoveFragment);
}

/** Addresses without what may be secret in them, and no name of the person in a path. */
QString cleaned(QString text)
{
    // First as they were set, where nobody can tell the end of an address that is badly written.
    for (const ConfigKey& key : configKeys) {
        if (key.kind == ConfigKey::Address && !valueOf(key).isEmpty())
            text.replace(valueOf(key), shownAddress(valueOf(key)));
    }
    static const QRegularExpression address(
        QStringLiteral("[A-Za-z][A-Za-z0-9+.-]*://[^\\s\"<>]*"));
    QString clean;
    int end = 0;
    for (auto found = address.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        clean += text.mid(end, match.capturedStart() - end) + shownAddress(match.captured());
        end = match.capturedEnd();
    }
    clean += text.mid(end);
    const QString home = QDir::homePath() + QLatin1Char('/');
    return home.size() < 3 ? clean : clean.replace(home, QStringLiteral("~/"));
}

/** Whatever has come into a report by any way. */
QJsonValue cleaned(const QJsonValue& value)
{
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (QJsonValueRef element : array)
            element = cleaned(QJsonValue(element));
        return array;
    }
    if (!value.isObject())
        return value.isString() ? cleaned(value.toString()) : value;
    QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        member.value() = cleaned(QJsonValue(member.value()));
    return object;
}

QJsonObject configuration()
{
    QJsonObject values;
    for (const ConfigKey& key : configKeys) {
        QString value = valueOf(key);
        if (value.isEmpty())
            continue;
        if (key.kind == ConfigKey::Address)
            value = shownAddress(value);
        else if (key.kind == ConfigKey::Secret)
            value = QStringLiteral("(set)");
        values.insert(QLatin1String(key.name), value);
    }
    return values;
}

QJsonObject platform()
{
    return {{QStringLiteral("system"), QSysInfo::prettyProductName()},
            {QStringLiteral("kernel"),
             QString(QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion())},
            {QStringLiteral("processor"), QSysInfo::currentCpuArchitecture()},
            {QStringLiteral("locale"), QLocale::system().name()}};
}

QJsonObject library()
{
    return {{QStringLiteral("version"), QStringLiteral(ZGLOBAL_VERSION_STR)},
            {QStringLiteral("abi"), QSysInfo::buildAbi()},
            {QStringLiteral("qt"), QString::fromLatin1(qVersion())}};
}

QString textOf(const QDateTime& time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QJsonObject objectOf(const TableFailure& failure)
{
    constexpr std::array<const char*, 5> steps {"none", "download", "content", "store", "load"};
    return {{QStringLiteral("step"), QLatin1String(steps.at(failure.step))},
            {QStringLiteral("version"), failure.version},
            {QStringLiteral("address"), failure.address},
            {QStringLiteral("httpStatus"), failure.httpStatus},
            {QStringLiteral("cause"), failure.cause},
            {QStringLiteral("time"), textOf(failure.time)}};
}

QJsonObject objectOf(const TableStatus& status)
{
    constexpr std::array<const char*, 3> states {"not loaded", "loaded", "failed"};
    const QFileInfo file(status.kind < 0 ? ClientFiles::unversionedPath(status.table)
                                         : status.path);
    QJsonObject table {{QStringLiteral("table"), status.table},
                       {QStringLiteral("kind"), status.kind},
                       {QStringLiteral("version"), status.version},
                       {QStringLiteral("file"), file.filePath()},
                       {QStringLiteral("state"), QLatin1String(states.at(status.state))}};
    if (file.isFile()) {
        table.insert(QStringLiteral("bytes"), file.size());
        table.insert(QStringLiteral("modified"), textOf(file.lastModified()));
    }
    if (status.declaration != nullptr) {
        table.insert(QStringLiteral("manager"), status.manager);
        table.insert(QStringLiteral("records"), status.declaration->recordCount());
    }
    if (!status.error.isEmpty())
        table.insert(QStringLiteral("error"), status.error);
    if (status.lastFailure.step != TableFailure::None)
        table.insert(QStringLiteral("lastFailure"), objectOf(status.lastFailure));
    return table;
}

} // namespace

QJsonObject ClientReport::of(const QVector<ZClientFailure>& failures)
{
    QJsonArray tables;
    const QVector<TableStatus> statuses = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& status : statuses)
        tables.append(objectOf(status));
    QJsonArray failed;
    for (const ZClientFailure& failure : failures)
        failed.append(QJsonObject {{QStringLiteral("what"), failure.what},
                                   {QStringLiteral("why"), failure.why}});
    const QJsonObject report {{QStringLiteral("time"), textOf(QDateTime::currentDateTimeUtc())},
                              {QStringLiteral("library"), library()},
                              {QStringLiteral("platform"), platform()},
                              {QStringLiteral("folder"), QDir::currentPath()},
                              {QStringLiteral("configuration"), configuration()},
                              {QStringLiteral("tables"), tables},
                              {QStringLiteral("failures"), failed}};
    return cleaned(QJsonValue(report)).toObject();
}
