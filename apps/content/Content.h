#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

/** What is to be published: tables, their versions, and the folder with all the rest. */
struct Content
{
    QMap<QString, QByteArray> tables;   ///< by name
    std::optional<QByteArray> versions; ///< the file of the versions, where it is at hand
    QString folder;                     ///< empty when only tables are at hand

    /**
     * Reads a content folder, a folder of tables, or files: a table is called like its file, an
     * extension apart. In a content folder the extension counts, as it does for clients. Answers
     * why that cannot be done, or an empty text.
     */
    QString read(const QString& path);

    /** The versions by the tables' names, as their file has them; nothing, and why, where it is at
     *  hand and holds none. */
    std::optional<QJsonObject> versionNumbers(QString* error = nullptr) const;

    /** The files in the folder, relative to it and sorted, as servers see them: links are followed.
     *  Hidden ones are none of them, nor compressed ones beside those that they are made of. */
    QStringList files() const;

    /** Whether any client may ask for a table of that name. */
    static bool isTable(const QString& name);
    static QStringList tableNames();
};
