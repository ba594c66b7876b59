#pragma once

#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>

#include <algorithm>

/** What became of something between two states of the content. */
enum class Change { None, Added, Removed, Changed };

/** A cell that is not what it was. */
struct FieldChange
{
    QString column;
    QJsonValue before; ///< as the file has it; undefined where there is no cell
    QJsonValue after;
    QString remark; ///< what a client makes of it where that is not plain, as in "a client reads 0"
};

/** A record that is not what it was, or was not or is not there. */
struct RecordChange
{
    Change kind = Change::Changed;
    QString key;        ///< the cell that tells it from others; empty where none does
    QString name;       ///< what people call it; may be empty
    int rowBefore = 0;  ///< from 1; 0 where it was not there
    int rowAfter = 0;   ///< from 1; 0 where it is not there
    QString leftOutFor; ///< the column for which clients leave it out; empty when they do not
    QVector<FieldChange> fields; ///< of a record that came or went all its cells
    QStringList filesBefore;     ///< that it names, below the content folder
    QStringList filesAfter;

    /** What people know it by: key and name, or its row where it has neither. */
    QString label() const
    {
        if (key.isEmpty() && name.isEmpty())
            return QStringLiteral("row %1").arg(rowAfter > 0 ? rowAfter : rowBefore);
        return key == name ? key : (key + QLatin1Char(' ') + name).trimmed();
    }
};

/** A file beside the tables that is not what it was. */
struct FileChange
{
    Change kind = Change::Changed;
    QString path;          ///< below the content folder
    qint64 sizeBefore = 0; ///< bytes
    qint64 sizeAfter = 0;
    QStringList records; ///< which name it
};

/** A table between two states of the content, with the files that its records name. */
struct TableChange
{
    QString table;              ///< empty for the files that no table names
    Change kind = Change::None; ///< by its bytes
    QJsonValue versionBefore {
        QJsonValue::Undefined}; ///< as versions.json has it; undefined where it says nothing
    QJsonValue versionAfter {QJsonValue::Undefined};
    QString errorBefore; ///< why a side is no table; then nothing is known of its records
    QString errorAfter;
    QStringList columnsAdded;
    QStringList columnsRemoved;
    QVector<RecordChange> records; ///< in the order of the new table
    QStringList remarks;           ///< what else differs, as in "the order of the rows"
    QVector<FileChange> files;

    bool hasError() const { return !errorBefore.isEmpty() || !errorAfter.isEmpty(); }

    /** Whether there is anything to tell. */
    bool isDifferent() const
    {
        return kind != Change::None || versionBefore != versionAfter || !files.isEmpty()
            || hasError();
    }

    int count(Change of) const
    {
        return static_cast<int>(
            std::count_if(records.begin(), records.end(),
                          [of](const RecordChange& record) { return record.kind == of; }));
    }
};
