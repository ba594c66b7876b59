#include "client/GoodVersions.h"

#include "datatable/TableCatalogue.h"
#include "file/WholeFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString fileName()
{
    return QStringLiteral("zglobal-versions.json");
}

QMap<int, int> versionsOf(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    QMap<int, int> versions;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        const int version = object.value(TableCatalogue::name(type)).toInt(-1);
        if (version >= 0)
            versions.insert(type, version);
    }
    return versions;
}

QJsonObject objectOf(const QMap<int, int>& versions)
{
    QJsonObject object;
    for (auto version = versions.begin(); version != versions.end(); ++version)
        object.insert(TableCatalogue::name(static_cast<EDataTable::EDataTableType>(version.key())),
                      version.value());
    return object;
}

/** A refusal has a cause since there is somebody to tell it to; before it was the version alone. */
QMap<int, GoodVersions::Refusal> refusalsOf(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    QMap<int, GoodVersions::Refusal> refusals;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        const QJsonValue one = object.value(TableCatalogue::name(type));
        const int version =
            one.isObject() ? one[QLatin1String("version")].toInt(-1) : one.toInt(-1);
        if (version >= 0)
            refusals.insert(type, {version, one[QLatin1String("cause")].toString()});
    }
    return refusals;
}

QJsonObject objectOf(const QMap<int, GoodVersions::Refusal>& refusals)
{
    QJsonObject object;
    for (auto one = refusals.begin(); one != refusals.end(); ++one)
        object.insert(TableCatalogue::name(static_cast<EDataTable::EDataTableType>(one.key())),
                      QJsonObject {{QStringLiteral("version"), one->version},
                                   {QStringLiteral("cause"), one->cause}});
    return object;
}

} // namespace

void GoodVersions::read(const QString& server)
{
    *this = GoodVersions();
    m_server = server;
    QFile file(fileName());
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonObject known = QJsonDocument::fromJson(file.readAll()).object();
    if (known.value(QLatin1String("server")).toString() != server)
        return;
    m_good = versionsOf(known.value(QLatin1String("loaded")));
    m_bad = refusalsOf(known.value(QLatin1String("refused")));
}

bool GoodVersions::isBad(EDataTable::EDataTableType type, int version) const
{
    return version >= 0 && m_bad.value(type).version == version;
}

void GoodVersions::noteGood(EDataTable::EDataTableType type, int version)
{
    m_changed = m_changed || good(type) != version || isBad(type, version);
    m_good.insert(type, version);
    if (isBad(type, version))
        m_bad.remove(type);
}

void GoodVersions::noteBad(EDataTable::EDataTableType type, int version, const QString& cause)
{
    m_changed = m_changed || !isBad(type, version);
    m_bad.insert(type, {version, cause});
}

QString GoodVersions::save()
{
    if (!m_changed)
        return {};
    const QJsonObject known {{QStringLiteral("server"), m_server},
                             {QStringLiteral("loaded"), objectOf(m_good)},
                             {QStringLiteral("refused"), objectOf(m_bad)}};
    QString fault = WholeFile::write(fileName(), QJsonDocument(known).toJson());
    m_changed = !fault.isEmpty();
    return fault;
}
