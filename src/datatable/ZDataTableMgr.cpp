#include "datatable/ZDataTableMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/TableCatalogue.h"
#include "datatable/VersionFile.h"
#include "host/ZGlobalConfig.h"

#include <QDir>

namespace {

constexpr int saveDelay = 1000; // milliseconds
constexpr int unprefixedServerType = 1002;

QString versionFile()
{
    return QStringLiteral("common.ini");
}

} // namespace

QSharedPointer<ZDataTableMgr> ZDataTableMgr::m_instance;

ZDataTableMgr* ZDataTableMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZDataTableMgr>(new ZDataTableMgr(nullptr));
    return m_instance.data();
}

ZDataTableMgr::ZDataTableMgr(QObject* parent)
    : QObject(parent)
{
    QDir().mkdir(CacheFolders::screens());
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(saveDelay);
    connect(&m_saveTimer, &QTimer::timeout, this, &ZDataTableMgr::writeLocalVersion);
}

ZDataTableMgr::~ZDataTableMgr() = default;

int ZDataTableMgr::getTableVersion(EDataTable::EDataTableType type) const
{
    return m_versions.value(type, 0);
}

bool ZDataTableMgr::setTableVersion(EDataTable::EDataTableType type, int version, bool save)
{
    if (type < 0 || version < 0)
        return false;
    if (m_versions.value(type, -1) == version)
        return true;
    m_versions.insert(type, version);
    if (save)
        m_saveTimer.start();
    return true;
}

void ZDataTableMgr::loadLocalVersion()
{
    const QVector<EDataTable::EDataTableType> types = TableCatalogue::types();
    QStringList names;
    for (const EDataTable::EDataTableType type : types)
        names.append(TableCatalogue::name(type));
    const QHash<QString, int> saved = VersionFile::read(versionFile(), names);
    for (int i = 0; i < types.size(); ++i) {
        const auto version = saved.constFind(names.at(i));
        if (version != saved.cend())
            m_versions.insert(types.at(i), version.value());
    }
}

void ZDataTableMgr::writeLocalVersion()
{
    VersionFile::Versions versions;
    for (auto entry = m_versions.cbegin(); entry != m_versions.cend(); ++entry) {
        const auto type = static_cast<EDataTable::EDataTableType>(entry.key());
        const QString name = TableCatalogue::name(type);
        if (!name.isEmpty())
            versions.append({name, entry.value()});
    }
    Q_EMIT sigVersionsSaved(VersionFile::write(versionFile(), versions).isEmpty());
}

void ZDataTableMgr::clearTables()
{
    m_versions.clear();
}

QString ZDataTableMgr::urlOf(const QString& table)
{
    return ZGlobalConfig::getInstance().getConfig(QStringLiteral("cmsServer"))
        + QStringLiteral("app/resources/") + table;
}

QString ZDataTableMgr::urlOf(EDataTable::EDataTableType type, int version)
{
    return urlOf(TableCatalogue::name(type)) + QLatin1Char('?') + QString::number(version);
}

QString ZDataTableMgr::fileNameOf(const QString& url)
{
    QString name = CacheNames::ofAddress(url);
    const QString serverType = ZGlobalConfig::getInstance().getConfig(QStringLiteral("ServerType"));
    if (serverType.toInt() == unprefixedServerType)
        return name;
    return serverType + QLatin1Char('-') + name;
}

QString ZDataTableMgr::getDataTableUrl(EDataTable::EDataTableType type)
{
    // The lookup that inserts is meant: whoever is named has a version from then on.
    return urlOf(type, m_versions[type]);
}

QString ZDataTableMgr::getTableFileName(EDataTable::EDataTableType type)
{
    return fileNameOf(getDataTableUrl(type));
}

QString ZDataTableMgr::getTablePath(EDataTable::EDataTableType type)
{
    return CacheFolders::tables() + getTableFileName(type);
}

QStringList ZDataTableMgr::getAllTableName()
{
    QStringList names;
    for (const EDataTable::EDataTableType type : TableCatalogue::types())
        names.append(getTableFileName(type));
    return names;
}
