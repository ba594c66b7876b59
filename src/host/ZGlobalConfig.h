#pragma once

#include "ZNetWorkExport.h"

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QString>

/**
 * The host's configuration values, and the two readers that go with them: table files and archives.
 *
 * Values are set by the host program or read from a JSON file. They belong to the GUI thread; the
 * static operations may be called from any thread.
 */
class ZNETWORK_EXPORT ZGlobalConfig
{
public:
    static ZGlobalConfig& getInstance();

    /** The value of a key, an empty text when the key is not set. */
    QString getConfig(const QString& key) const;

    void setConfig(const QString& key, const QString& value);

    static bool readTableFile(const QString& path, QHash<QString, int>& header, QJsonArray& rows);
    static bool readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                              QJsonArray& rows);

    static bool unZipFile(const QString& path, bool overwrite);

private:
    QHash<QString, QString> m_values;
};
