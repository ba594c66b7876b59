#include "datatable/ZDataTableMgr.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

// Prints docs/tables.md: what every manager wants of its table, off the declarations that load it.

namespace {

QString code(const QString& text)
{
    return QStringLiteral("`%1`").arg(text);
}

QStringList notes(const ColumnSchema& column)
{
    QStringList notes;
    if (!column.remark.isEmpty())
        notes.append(column.remark);
    if (!column.referredTable.isEmpty())
        notes.append(
            QStringLiteral("names a `%1` of %2").arg(column.referredColumn, column.referredTable));
    if (!column.server.isEmpty())
        notes.append(QStringLiteral("a file on `%1`%2")
                         .arg(column.server,
                              column.address.isEmpty()
                                  ? QString()
                                  : QStringLiteral(", behind `%1`").arg(column.address)));
    return notes;
}

void printColumns(QTextStream& out, const QVector<ColumnSchema>& columns)
{
    out << "\n| column | | read as | otherwise | field | |\n|---|---|---|---|---|---|\n";
    for (const ColumnSchema& column : columns) {
        const QString need =
            column.required ? QStringLiteral("required") : QStringLiteral("optional");
        const QString field = column.field.isEmpty() ? QString() : code(column.field);
        out << "| " << code(column.name) << " | " << need << " | " << column.conversion << " | "
            << column.otherwise << " | " << field << " | "
            << notes(column).join(QStringLiteral("; ")) << " |\n";
    }
}

void printTable(QTextStream& out, const TableStatus& report)
{
    out << "\n## " << report.table << "\n\n";
    if (report.kind < 0)
        out << "Not in the catalogue";
    else
        out << "Kind " << report.kind;
    if (report.manager.isEmpty()) {
        out << ". No manager reads it; it is versioned, downloaded and kept like every table.\n";
        return;
    }
    const TableSchema& table = report.declaration->schema();
    out << ". Read by " << code(report.manager + QStringLiteral("::") + report.loader)
        << (report.loadedAtStart ? ", at start-up.\n\n" : ", when the program asks for it.\n\n");
    if (!table.key.isEmpty())
        out << "- Key: " << code(table.key) << "\n";
    out << "- Rows of one key: " << table.duplicates << "\n";
    if (!table.columns.isEmpty())
        printColumns(out, table.columns);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QString page;
    QTextStream out(&page);
    out << "# The tables and their columns\n\n"
           "Printed by `scripts/reference` from the declarations that load the tables; not edited "
           "by "
           "hand.\n\n"
           "*Otherwise* is what a cell of another type, or one beyond the row's end, becomes. An "
           "optional column that a\ntable lacks leaves the record's default. A table that lacks a "
           "required column is refused whole.\n";
    for (const TableStatus& report : ZDataTableMgr::getInstance()->getTableStatuses())
        printTable(out, report);
    std::fputs(page.toUtf8().constData(), stdout);
    return 0;
}
