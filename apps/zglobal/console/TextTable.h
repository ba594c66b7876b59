#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/** Rows of text in aligned columns, for people. */
class TextTable
{
public:
    struct Column
    {
        QString heading;
        bool isNumber = false;   ///< aligned to the right, and never cut
        bool isOptional = false; ///< left out, the last first, where there is no room for all
    };

    /** Columns by their headings: ">" at the beginning makes one of numbers, "?" an optional one.
     *  Without headings there is no heading line and everything is aligned to the left. */
    explicit TextTable(const QStringList& headings = {});
    explicit TextTable(const QVector<Column>& columns);

    /** A control character in a cell is shown as its picture. */
    void add(const QStringList& cells);
    bool isEmpty() const { return m_rows.isEmpty(); }

    /**
     * A line for the headings and one for each row, none with spaces at its end.
     *
     * Where they have to fit a width, optional columns are left out first. Then under headings the
     * widest columns are cut, none to less than eight; without, the last column goes on below
     * itself.
     */
    QStringList lines(int width = 0) const;

    /** How many columns lines() leaves out at this width. */
    int leftOut(int width) const;

    /** The lines on standard output, as wide as the terminal there. */
    void print() const;

private:
    QVector<int> naturalWidths() const;
    QVector<int> shown(int width) const;
    QVector<int> fitted(const QVector<int>& shown, int width) const;
    QStringList linesOf(const QStringList& row, const QVector<int>& shown,
                        const QVector<int>& widths) const;

    QVector<Column> m_columns;
    QVector<QStringList> m_rows;
};
