#include "content/Table.h"
#include "lint/ContentChecks.h"
#include "lint/Findings.h"
#include "lint/Wording.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace {

const Table* tableOf(const QVector<Table>& tables, const QString& name)
{
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&name](const Table& table) { return table.name() == name; });
    return found == tables.end() || found->isRefused() ? nullptr : &*found;
}

QSet<QString> idsIn(const Table& table, const QString& column)
{
    QSet<QString> ids;
    for (const Row& row : table.rows()) {
        if (row.leftOutFor.isEmpty())
            ids.insert(table.text(row, column));
    }
    return ids;
}

bool isNamed(const QSet<QString>& ids, const QString& text, ReferenceForm form)
{
    if (form == ReferenceForm::One)
        return ids.contains(text);
    return std::any_of(ids.begin(), ids.end(), [&text](const QString& id) {
        return id.startsWith(text, Qt::CaseInsensitive);
    });
}

/** The texts by which a table names records, with the first row that does. */
QHash<QString, int> namesIn(const Table& table, const ColumnSchema& column)
{
    QHash<QString, int> names;
    for (const Row& row : table.rows()) {
        const QString text = table.text(row, column.name);
        if (row.leftOutFor.isEmpty() && !text.isEmpty() && table.counts(row, column)
            && column.fits(table.cell(row, column.name)) && !names.contains(text))
            names.insert(text, row.number);
    }
    return names;
}

void checkColumn(const Table& table, const ColumnSchema& column, const Table& referred,
                 Findings& findings)
{
    const QSet<QString> ids = idsIn(referred, column.referredColumn);
    const QHash<QString, int> names = namesIn(table, column);
    for (auto name = names.begin(); name != names.end(); ++name) {
        if (isNamed(ids, name.key(), column.referenceForm))
            continue;
        const QString near = Wording::nearest(name.key(), ids);
        findings.add(Rule::DanglingReference, {table.name(), *name, column.name},
                     QStringLiteral("no record of %1 has the %2 %3%4; a client shows nothing in "
                                    "its place")
                         .arg(referred.name(), column.referredColumn, Wording::shown(name.key()),
                              near.isEmpty()
                                  ? QString()
                                  : QStringLiteral(", but one has %1").arg(Wording::shown(near))));
    }
}

void checkUnused(const Table& table, const QString& column, const QSet<QString>& named,
                 Findings& findings)
{
    for (const Row& row : table.rows()) {
        const QString id = table.text(row, column);
        if (row.leftOutFor.isEmpty() && !id.isEmpty() && !named.contains(id))
            findings.add(Rule::UnusedRecord, {table.name(), row.number, column},
                         QStringLiteral("nothing names the record %1; no client shows it")
                             .arg(Wording::shown(table.cell(row, column))));
    }
}

} // namespace

void ContentChecks::checkReferences(const QVector<Table>& tables, Findings& findings)
{
    QHash<QString, QSet<QString>> named; // by table
    for (const Table& table : tables) {
        if (table.isRefused())
            continue;
        for (const ColumnSchema& column : table.columns()) {
            const Table* referred = tableOf(tables, column.referredTable);
            if (referred == nullptr)
                continue;
            checkColumn(table, column, *referred, findings);
            const QStringList names = namesIn(table, column).keys();
            named[referred->name()] += QSet<QString>(names.begin(), names.end());
        }
    }
    for (const Table& table : tables) {
        for (const ColumnSchema& column : table.columns()) {
            if (column.isThereToBeNamed && !table.isRefused() && named.contains(table.name()))
                checkUnused(table, column.name, named.value(table.name()), findings);
        }
    }
}
