#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

/** A table with a version is published anew. */
struct VersionChange
{
    QString table;
    std::optional<int> from; ///< none where the table had none
    int to = 0;
};

/** A line of a published tree's journal. */
struct JournalEntry
{
    int release = 0;
    QDateTime time;
    QString action;   ///< "publish", "rollback" or "adopt"
    int restored = 0; ///< the release whose content a rollback brought back
    QVector<VersionChange> tables;
    int addedFiles = 0;
    int changedFiles = 0;
    int removedFiles = 0;

    QJsonObject toJson() const;
    static JournalEntry fromJson(const QJsonObject& object);
};

/** A file of a release that is to be made. */
struct ReleaseFile
{
    QString kept;      ///< the file of the tree that it is, unchanged; else empty ...
    QString source;    ///< ... and it is a copy of this one ...
    QByteArray bytes;  ///< ... or, where that is empty too, holds these
    QDateTime changed; ///< what it says of its age, where it is not kept
};

/** All that a server serves at a time. */
struct Release
{
    JournalEntry entry;
    QMap<QString, ReleaseFile> files; ///< by their paths in the content folder
    /** Files that are no part of it but that clients of earlier releases may still ask for, with
     *  the last release that they were a part of. They are among the files. */
    QMap<QString, int> leftovers;
};
