#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/** Rows of a sheet as text, as spreadsheets write and read them. */
namespace Csv {

struct Record
{
    int row = 0; ///< from 1, as the spreadsheet counts
    QStringList cells;
};

/**
 * The rows that are not empty. They are separated by what a first line such as "sep=;" says, else
 * by the comma, semicolon or tab that the first row has most of. Quotes hold separators, line ends
 * and, doubled, themselves. Answers why the text is no sheet, or an empty text.
 */
QString parse(const QString& text, QVector<Record>& records);

/** The rows as text, behind the mark by which spreadsheets know UTF-8. */
QString written(const QVector<QStringList>& rows, QChar separator);

} // namespace Csv
