#pragma once

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QString>

class ZGlobalConfig
{
public:
    static ZGlobalConfig& getInstance();
    QString getConfig(const QString& key) const;
    static bool readTableFile(const QString& path, QHash<QString, int>& header, QJsonArray& rows);
    static bool readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                              QJsonArray& rows);
    static bool unZipFile(const QString& path, bool overwrite);

    // For ZGlobalClient only.
    bool loadConfig(const QString& path, QString* error);

private:
    QHash<QString, QString> m_values;
};
