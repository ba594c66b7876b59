#pragma once

#include "lint/Findings.h"
#include "publish/Csv.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

class Table;

/** A table made of a sheet. */
struct SheetTable
{
    QByteArray bytes;        ///< of the table file
    QVector<int> rows;       ///< for each row of the table, that of the sheet
    QVector<Finding> faults; ///< cells that cannot be read; nothing silences them
    QStringList notes;       ///< what was decided where nothing is declared
};

/**
 * What a column's cells become is told by its declaration; of one that is not declared by the cells
 * that are published, or else by the look of all its cells. A date from which the spreadsheet has
 * dropped the end keeps the end that is published with the same key. A date that is the end of a
 * period has to have a time. The published table is null where there is none.
 */
SheetTable readSheet(const QString& name, const QVector<Csv::Record>& records,
                     const Table* published);
