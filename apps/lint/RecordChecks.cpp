#include "content/FileUse.h"
#include "content/Table.h"
#include "lint/Checks.h"
#include "lint/Findings.h"
#include "lint/Schedules.h"
#include "lint/Wording.h"

#include <QHash>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <limits>

namespace {

/** A cell that is as its column wants it, of a row that becomes a record. */
struct Cell
{
    const Table& table;
    const Row& row;
    const ColumnSchema& column;
    QJsonValue stands;
    Findings& findings;

    void add(Rule rule, const QString& message) const
    {
        findings.add(rule, {table.name(), row.number, column.name}, message);
    }
    QString shown() const { return Wording::shown(stands); }
    QString text() const { return table.text(row, column.name); }
    qint64 number() const { return table.value(row, column.name).toVariant().toLongLong(); }

    /** Of another column; nothing where that cell is not as it has to be. */
    std::optional<qint64> numberOf(const QString& name) const
    {
        const ColumnSchema* other = table.column(name);
        if (other == nullptr || !other->fits(table.cell(row, name)))
            return std::nullopt;
        return table.value(row, name).toVariant().toLongLong();
    }
};

void checkIds(const Table& table, Findings& findings)
{
    const QString& key = table.schema().key;
    const bool isList = table.columns().size() == 1; // nothing to look up by what is all there is
    if (key.isEmpty() || !table.header().contains(key))
        return;
    QHash<QString, int> seen;
    for (const Row& row : table.rows()) {
        const QJsonValue cell = table.cell(row, key);
        if (!row.leftOutFor.isEmpty() || !table.column(key)->fits(cell))
            continue;
        const QString id = table.text(row, key);
        const Place place {table.name(), row.number, key};
        if (id.isEmpty() && isList)
            continue;
        if (id.isEmpty())
            findings.add(Rule::EmptyId, place,
                         QStringLiteral("the %1 is empty; a client keeps the record under no name")
                             .arg(key));
        else if (seen.contains(id))
            findings.add(Rule::DuplicateId, place,
                         QStringLiteral("%1 is that of row %2 too: %3")
                             .arg(Wording::shown(cell), QString::number(seen.value(id)),
                                  table.schema().duplicates));
        seen.insert(id, row.number);
    }
}

/** Whether the cell says plainly that the row is not for this client. */
bool isMeant(const ColumnSchema& column, const QJsonValue& cell)
{
    if (cell.isBool())
        return true;
    const QString text = cell.toString();
    if (column.wanted.isEmpty() || text.isEmpty())
        return false;
    return Wording::nearest(column.wanted, text.split(QLatin1Char(','))).isEmpty();
}

void checkDropped(const Table& table, const Row& row, Findings& findings)
{
    const ColumnSchema* column = table.column(row.leftOutFor);
    const QJsonValue cell = table.cell(row, row.leftOutFor);
    if (column == nullptr || !column->fits(cell) || isMeant(*column, cell))
        return;
    findings.add(Rule::DroppedRow, {table.name(), row.number, column->name},
                 QStringLiteral("a client drops the row for %1: %2")
                     .arg(Wording::shown(cell), column->remark));
}

void checkNumber(const Cell& cell)
{
    if (!cell.column.least)
        return;
    const double number = cell.table.value(cell.row, cell.column.name).toVariant().toDouble();
    if (number >= *cell.column.least && number <= *cell.column.most)
        return;
    const QString most = *cell.column.most == std::numeric_limits<int>::max()
        ? QStringLiteral("or more")
        : QStringLiteral("to %1").arg(*cell.column.most);
    cell.add(Rule::UnknownValue,
             QStringLiteral("%1 is not %2 %3; a client has no use for it")
                 .arg(cell.shown(), QString::number(*cell.column.least), most));
}

void checkWithin(const Cell& cell)
{
    const auto& columns = cell.table.columns();
    const auto end = std::find_if(columns.begin(), columns.end(), [&](const ColumnSchema& one) {
        return one.startColumn == cell.column.name;
    });
    if (cell.column.withinStart.isEmpty() || end == columns.end())
        return;
    const auto ends = cell.numberOf(end->name);
    const auto outerStart = cell.numberOf(cell.column.withinStart);
    const auto outerEnd = cell.numberOf(cell.column.withinEnd);
    if (!ends || !outerStart || !outerEnd || *outerEnd < *outerStart || *ends < cell.number())
        return;
    if (*ends < *outerStart || cell.number() > *outerEnd)
        cell.add(Rule::UselessPeriod,
                 QStringLiteral("the period from %1 to \"%2\" has nothing in common with that from "
                                "\"%3\" to \"%4\"; a client never shows it")
                     .arg(cell.shown(), end->name, cell.column.withinStart, cell.column.withinEnd));
}

void checkWords(const Cell& cell)
{
    static const QRegularExpression placeholder(
        QStringLiteral("%[1-9]|\\{\\w*\\}|\\b(TODO|TBD|XXX)\\b"));
    const auto found = placeholder.match(cell.text());
    if (found.hasMatch())
        cell.add(Rule::Placeholder,
                 QStringLiteral("%1 holds \"%2\", which a client shows as it stands")
                     .arg(cell.shown(), found.captured()));
}

void checkColour(const Cell& cell)
{
    static const QRegularExpression colour(
        QStringLiteral("^#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$"));
    if (!colour.match(cell.text()).hasMatch())
        cell.add(Rule::BadColour,
                 QStringLiteral("%1 is no colour such as \"#FF8000\"; a client keeps the text, and "
                                "nothing can be painted in it")
                     .arg(cell.shown()));
}

void checkAddress(const Cell& cell)
{
    const QUrl address(cell.text().trimmed());
    const QString scheme = address.scheme();
    const QStringList webSchemes {QStringLiteral("http"), QStringLiteral("https")};
    const bool isWeb = webSchemes.contains(scheme);
    if (!address.isValid() || scheme.isEmpty() || (isWeb && address.host().isEmpty())
        || (!isWeb && !Wording::nearest(scheme, webSchemes).isEmpty()))
        cell.add(
            Rule::BadAddress,
            QStringLiteral("%1 is no web address; a client hands it on as it stands, and likely no "
                           "page opens")
                .arg(cell.shown()));
}

void checkObject(const Cell& cell)
{
    if (!QJsonDocument::fromJson(cell.text().toUtf8()).isObject())
        cell.add(Rule::BadObject,
                 QStringLiteral("%1 is no JSON object; a client reads nothing out of it")
                     .arg(cell.shown()));
}

/** What opens in the embedded browser is told by the paths of such pages. */
void checkPage(const Cell& cell)
{
    if (cell.column.pageColumn.isEmpty() || cell.number() <= 0)
        return;
    const QString page = cell.table.text(cell.row, cell.column.pageColumn).trimmed();
    const QString path = QRegularExpression(cell.column.pagePattern).match(page).captured(1);
    const QString begins =
        QStringLiteral("the page %1 is to open embedded, ").arg(Wording::shown(page));
    if (path.isEmpty())
        cell.add(Rule::UselessPage,
                 begins + QStringLiteral("but has no path; a client opens it outside"));
    else if (path == QLatin1String("/"))
        cell.add(Rule::UselessPage,
                 begins
                     + QStringLiteral("and its path is part of nearly all addresses; a client "
                                      "opens them embedded, too"));
}

void checkFileNames(const Cell& cell)
{
    if (!cell.table.counts(cell.row, cell.column))
        return;
    for (const QString& name : FileUse::namesIn(cell.column, cell.text())) {
        const QString fault = FileUse::nameFault(cell.column, name);
        if (!fault.isEmpty())
            cell.add(Rule::BadFileName, Wording::shown(name) + QLatin1Char(' ') + fault);
    }
}

void checkCell(const Cell& cell)
{
    checkNumber(cell);
    checkWithin(cell);
    checkPage(cell);
    if (cell.text().trimmed().isEmpty())
        return;
    checkFileNames(cell);
    switch (cell.column.use) {
    case TextUse::Any:
        break;
    case TextUse::Name:
    case TextUse::Words:
        checkWords(cell);
        break;
    case TextUse::Colour:
        checkColour(cell);
        break;
    case TextUse::Address:
        checkAddress(cell);
        break;
    case TextUse::Object:
        checkObject(cell);
        break;
    case TextUse::Schedule:
        Schedules::check(cell.text(), {cell.table.name(), cell.row.number, cell.column.name},
                         cell.findings);
        break;
    }
}

} // namespace

void Checks::checkRecords(const Table& table, Findings& findings)
{
    checkIds(table, findings);
    for (const Row& row : table.rows()) {
        if (!row.leftOutFor.isEmpty()) {
            checkDropped(table, row, findings);
            continue;
        }
        for (const ColumnSchema& column : table.columns()) {
            const QJsonValue cell = table.cell(row, column.name);
            if (column.fits != nullptr && column.fits(cell))
                checkCell({table, row, column, cell, findings});
        }
    }
}
