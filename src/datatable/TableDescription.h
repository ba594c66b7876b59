#pragma once

#include <QJsonArray>
#include <QString>
#include <QVector>

#include <functional>

/** One column that a manager wants, in words; see TableColumns for the declaration behind it. */
struct ColumnDescription
{
    QString name;
    bool required = false;
    QString conversion; ///< how the cell is read; empty when it never is
    QString otherwise;  ///< what a cell of another type becomes
    QString field;      ///< the record's field that it fills; empty when none
    QString remark;     ///< what the manager makes of it beyond filling the field
};

/** What a manager makes of its table, and the records that it holds now. */
struct TableDescription
{
    QVector<ColumnDescription> columns;
    QString key;        ///< the column that keys the records; empty when nothing does
    QString duplicates; ///< what happens to two rows of one key
    QString nullRows = QStringLiteral("skipped");

    /** The number of records held at the moment of the call. */
    std::function<int()> recordCount = [] { return 0; };

    /** The records held at the moment of the call: objects whose members are the columns. */
    std::function<QJsonArray()> records = [] { return QJsonArray(); };
};
