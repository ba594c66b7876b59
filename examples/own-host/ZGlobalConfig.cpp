#include "host/ZGlobalConfig.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

ZGlobalConfig& ZGlobalConfig::getInstance()
{
    static ZGlobalConfig config;
    return config;
}

QString ZGlobalConfig::getConfig(const QString& key) const
{
    return m_values.value(key);
}

bool ZGlobalConfig::loadConfig(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = path + ": " + file.errorString();
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject()) {
        *error = path + ": not a JSON object";
        return false;
    }
    const QVariantMap values = document.object().toVariantMap();
    for (auto value = values.begin(); value != values.end(); ++value)
        m_values.insert(value.key(), value.value().toString());
    return true;
}

bool ZGlobalConfig::readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                                  QJsonArray& rows)
{
    const QJsonObject table = QJsonDocument::fromJson(bytes).object();
    if (!table.value("columns").isArray() || !table.value("rows").isArray())
        return false;
    header.clear();
    for (const QJsonValue& column : table.value("columns").toArray())
        header.insert(column.toString(), header.size());
    rows = table.value("rows").toArray();
    return true;
}

bool ZGlobalConfig::readTableFile(const QString& path, QHash<QString, int>& header,
                                  QJsonArray& rows)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && readTableFile(file.readAll(), header, rows);
}

// Called on threads of a pool.
bool ZGlobalConfig::unZipFile(const QString& path, bool overwrite)
{
    const QFileInfo archive(path);
    return QProcess::execute("unzip",
                             {"-q", overwrite ? "-o" : "-n", archive.absoluteFilePath(), "-d",
                              archive.absolutePath()})
        == 0;
}
