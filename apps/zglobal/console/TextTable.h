#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/** Rows of text in aligned columns, for people. */
class TextTable
{
public:
    /** Headings that begin with ">" are of columns with numbers, aligned to the right. Without
     *  headings there is no heading line and everything is aligned to the left. */
    explicit TextTable(const QStringList& headings = {});

    void add(const QStringList& cells);
    bool isEmpty() const { return m_rows.isEmpty(); }

    /** A line for the headings and one for each row, none with spaces at its end. */
    QStringList lines() const;

    /** The lines on standard output. */
    void print() const;

private:
    QStringList m_headings;
    QVector<bool> m_toRight;
    QVector<QStringList> m_rows;
};
