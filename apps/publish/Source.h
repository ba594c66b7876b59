#pragma once

#include "content/Content.h"
#include "lint/Findings.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/** What somebody wants published: tables, as files or sheets, and files of a content folder. */
struct Source
{
    QMap<QString, QByteArray> tables;       ///< by name
    QMap<QString, QString> files;           ///< paths in the content folder to files: the others
    std::optional<QByteArray> versions;     ///< the file of the versions, where there is one
    QHash<QString, QVector<int>> sheetRows; ///< by table, as SheetTable::rows; of sheets only
    QVector<Finding> faults;                ///< of the sheets
    QStringList notes;                      ///< what was read in a way that is not self-evident

    /**
     * Reads a table, a sheet or a folder of both, which may be a content folder or hold the folders
     * of one. Sheets end in ".csv" or ".tsv". The encoding is that of the sheets, empty when they
     * tell it themselves. Answers why that cannot be done, or an empty text.
     */
    QString read(const QString& path, const Content& published, const QString& encoding);

    /** Takes all of a content folder as it is, whatever nobody would publish there today. */
    void take(const Content& content);

private:
    QString readVersions(const QString& path);
    QString readTable(const QString& path, const Content& published, const QString& encoding);
    QString readSheetFile(const QString& path, const QString& table, const Content& published,
                          const QString& encoding);
};
