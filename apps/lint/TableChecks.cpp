#include "content/Table.h"
#include "lint/Checks.h"
#include "lint/Findings.h"
#include "lint/Wording.h"

#include <QStringList>

#include <algorithm>

namespace {

QString refusal(const Table& table)
{
    return QStringLiteral("; a client refuses it") + Table::startUpNote(table.reader());
}

/** How many rows are left out for a column that is not even there. */
int dropsWithout(const Table& table, const QString& column)
{
    return std::count_if(table.rows().begin(), table.rows().end(),
                         [&](const Row& row) { return row.leftOutFor == column; });
}

void checkColumns(const Table& table, Findings& findings)
{
    QStringList unknown;
    const QStringList names = table.header().keys();
    for (const QString& name : names) {
        if (table.column(name) == nullptr)
            unknown.append(name);
    }
    std::sort(unknown.begin(), unknown.end());
    for (const ColumnSchema& column : table.columns()) {
        if (names.contains(column.name))
            continue;
        const QString near = Wording::nearest(column.name, unknown);
        const Place place {table.name(), 0, column.name};
        const QString meant =
            near.isEmpty() ? QString() : QStringLiteral(", but there is \"%1\"").arg(near);
        if (column.required)
            findings.add(Rule::MissingColumn, place,
                         QStringLiteral("the table has no column \"%1\"").arg(column.name) + meant
                             + refusal(table));
        else if (const int dropped = dropsWithout(table, column.name))
            findings.add(
                Rule::MissingColumn, place,
                QStringLiteral("the table has no column \"%1\"").arg(column.name) + meant
                    + QStringLiteral("; a client drops %1 of its %2 rows for that")
                          .arg(QString::number(dropped), QString::number(table.rows().size())));
        else if (!near.isEmpty())
            findings.add(Rule::MisspeltColumn, {table.name(), 0, near},
                         QStringLiteral("a client looks for \"%1\", and never at \"%2\"")
                             .arg(column.name, near));
    }
}

QString dropNote(bool drops)
{
    return drops ? QStringLiteral(", and drops the row") : QString();
}

/** What is no row reads as one without cells. */
void checkElements(const Table& table, Findings& findings)
{
    const QStringList leftOut = table.reader() == nullptr
        ? QStringList()
        : table.reader()->reader.declaration().leftOutFor(table.header(),
                                                          QJsonArray {QJsonValue(QJsonArray())});
    const bool drops = !leftOut.value(0).isEmpty();
    for (int i = 0; i < table.elements().size(); ++i) {
        const QJsonValue element = table.elements().at(i);
        if (!element.isArray() && !element.isNull())
            findings.add(Rule::NotARow, {table.name(), i + 1, QString()},
                         QStringLiteral("%1 is no row; a client reads a row without cells")
                                 .arg(Wording::shown(element))
                             + dropNote(drops));
    }
}

void checkLength(const Table& table, const Row& row, Findings& findings)
{
    const int there = row.cells.size();
    const int wanted = table.header().size();
    const QString counts = QStringLiteral("the row has %1 cells for %2 columns; ")
                               .arg(QString::number(there), QString::number(wanted));
    if (there > wanted)
        findings.add(Rule::LongRow, {table.name(), row.number, QString()},
                     counts
                         + QStringLiteral("a client does not look at %1")
                               .arg(Wording::shown(row.cells.at(wanted))));
    if (there >= wanted)
        return;
    const QString column = table.header().key(there);
    const ColumnSchema* schema = table.column(column);
    const bool isRead = schema != nullptr && schema->becomes != nullptr;
    findings.add(Rule::ShortRow, {table.name(), row.number, column},
                 counts
                     + QStringLiteral("from \"%1\" on a client reads %2")
                           .arg(column, isRead ? schema->otherwise : QStringLiteral("nothing"))
                     + dropNote(table.header().value(row.leftOutFor, -1) >= there));
}

} // namespace

void Checks::checkTable(const Table& table, Findings& findings)
{
    const QString& error = table.error();
    if (!error.isEmpty()) {
        const bool isTwice = error.endsWith(QLatin1String("is named twice"));
        findings.add(isTwice ? Rule::ColumnTwice : Rule::NotATable, {table.name(), 0, QString()},
                     error + refusal(table));
        return;
    }
    checkColumns(table, findings);
    if (table.isRefused())
        return;
    checkElements(table, findings);
    // A table that is read without its columns may have rows of any length.
    if (table.reader() != nullptr && table.columns().isEmpty())
        return;
    for (const Row& row : table.rows())
        checkLength(table, row, findings);
}
