#include "datatable/ZDataTableMgr.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>
#include <limits>

// Prints docs/tables.md: what every manager wants of its table, off the declarations that load it.

namespace {

QString code(const QString& text)
{
    return QStringLiteral("`%1`").arg(text);
}

QString sayFile(const FileSchema& file)
{
    const QString kind = file.isArchive ? QStringLiteral("an archive") : QStringLiteral("a file");
    QString text = QStringLiteral("%1 on %2").arg(kind, code(file.server));
    if (!file.address.isEmpty())
        text += QStringLiteral(", behind ") + code(file.address);
    if (file.name != QLatin1String("{}"))
        text += QStringLiteral(", called ") + code(file.name);
    if (!file.version.isEmpty())
        text += QStringLiteral(", in the version of ") + code(file.version);
    if (!file.description.isEmpty())
        text += QStringLiteral(", with %1 in it").arg(code(file.description));
    return text;
}

QString sayReference(const ColumnSchema& column)
{
    const QString named = column.referenceForm == ReferenceForm::Beginning
        ? QStringLiteral("begins, whatever the letter case, a")
        : QStringLiteral("names a");
    return QStringLiteral("%1 %2 of %3")
        .arg(named, code(column.referredColumn), column.referredTable);
}

QString sayNumbers(const ColumnSchema& column)
{
    const QString least = QString::number(*column.least);
    if (*column.most == std::numeric_limits<int>::max())
        return least + QStringLiteral(" or more");
    return least + QStringLiteral(" to ") + QString::number(*column.most);
}

QString sayUse(TextUse use)
{
    switch (use) {
    case TextUse::Any:
        break;
    case TextUse::Name:
        return QStringLiteral("a name");
    case TextUse::Words:
        return QStringLiteral("words for people");
    case TextUse::Colour:
        return QStringLiteral("a colour");
    case TextUse::Address:
        return QStringLiteral("a web address");
    case TextUse::Schedule:
        return QStringLiteral("a schedule");
    case TextUse::Object:
        return QStringLiteral("a JSON object");
    }
    return {};
}

QString notes(const ColumnSchema& column)
{
    QStringList notes {sayUse(column.use), column.remark};
    if (column.least)
        notes.append(sayNumbers(column));
    if (!column.startColumn.isEmpty())
        notes.append(QStringLiteral("the end of what begins at ") + code(column.startColumn));
    if (!column.withinStart.isEmpty())
        notes.append(QStringLiteral("has effect from %1 to %2")
                         .arg(code(column.withinStart), code(column.withinEnd)));
    if (!column.referredTable.isEmpty())
        notes.append(sayReference(column));
    if (column.isThereToBeNamed)
        notes.append(QStringLiteral("there for other tables to name"));
    for (const FileSchema& file : column.files)
        notes.append(sayFile(file));
    if (!column.onlyWhere.isEmpty())
        notes.append(QStringLiteral("only where %1 is %2 to %3")
                         .arg(code(column.onlyWhere), QString::number(column.onlyFrom),
                              QString::number(column.onlyTo)));
    notes.removeAll(QString());
    return notes.join(QStringLiteral("; "));
}

void printColumns(QTextStream& out, const QVector<ColumnSchema>& columns)
{
    out << "\n| column | | read as | otherwise | field | |\n|---|---|---|---|---|---|\n";
    for (const ColumnSchema& column : columns) {
        const QString need =
            column.required ? QStringLiteral("required") : QStringLiteral("optional");
        const QString field = column.field.isEmpty() ? QString() : code(column.field);
        out << "| " << code(column.name) << " | " << need << " | " << column.conversion << " | "
            << column.otherwise << " | " << field << " | " << notes(column) << " |\n";
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
