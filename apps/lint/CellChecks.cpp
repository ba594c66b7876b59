#include "content/Table.h"
#include "lint/Checks.h"
#include "lint/Findings.h"
#include "lint/Wording.h"

#include <QDateTime>

#include <cmath>

namespace {

enum class Wanted { Number, Flag, Date, NumberText, Text };

/** What a column's cells have to be, asked of the very code that takes them. */
Wanted wantedOf(const ColumnSchema& column)
{
    const auto takes = [&column](const QJsonValue& cell) { return column.fits(cell); };
    if (takes(1))
        return Wanted::Number;
    if (takes(true))
        return Wanted::Flag;
    if (takes(QStringLiteral("x")))
        return Wanted::Text;
    return takes(QStringLiteral("1")) ? Wanted::NumberText : Wanted::Date;
}

QString wordFor(Wanted wanted)
{
    switch (wanted) {
    case Wanted::Number:
        return QStringLiteral("number");
    case Wanted::Flag:
        return QStringLiteral("true or false");
    case Wanted::Date:
        return QStringLiteral("date \"yyyy-MM-dd HH:mm:ss\"");
    case Wanted::NumberText:
        return QStringLiteral("integer in quotes");
    case Wanted::Text:
        break;
    }
    return QStringLiteral("text");
}

Rule ruleFor(Wanted wanted, const QJsonValue& cell)
{
    if (wanted == Wanted::Number && cell.isDouble())
        return std::trunc(cell.toDouble()) == cell.toDouble() ? Rule::OutOfRange : Rule::Fraction;
    if (wanted == Wanted::Date && cell.isString())
        return Rule::BadDate;
    if (wanted == Wanted::NumberText && cell.isString())
        return Rule::UnreadableNumber;
    return Rule::WrongType;
}

QString dateOf(const QJsonValue& seconds)
{
    // Some dates are kept as text.
    const qint64 number = seconds.toVariant().toLongLong();
    return QDateTime::fromSecsSinceEpoch(number).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString readAs(Wanted wanted, const QJsonValue& value)
{
    return wanted == Wanted::Date ? dateOf(value) : Wording::shown(value);
}

/** An optional date may be left empty: there is none. */
bool isLeftOpen(const ColumnSchema& column, Wanted wanted, const QJsonValue& cell)
{
    return wanted == Wanted::Date && !column.required && cell.isString()
        && cell.toString().isEmpty();
}

void checkType(const Table& table, const Row& row, const ColumnSchema& column, Findings& findings)
{
    const QJsonValue cell = table.cell(row, column.name);
    if (column.fits == nullptr || cell.isUndefined() || column.fits(cell))
        return;
    const Wanted wanted = wantedOf(column);
    if (isLeftOpen(column, wanted, cell))
        return;
    const Rule rule = ruleFor(wanted, cell);
    QString message = QStringLiteral("%1 is no %2; a client reads %3")
                          .arg(Wording::shown(cell),
                               rule == Rule::OutOfRange || rule == Rule::Fraction
                                   ? QStringLiteral("integer that a client can hold")
                                   : wordFor(wanted),
                               readAs(wanted, column.becomes(cell)));
    if (row.leftOutFor == column.name)
        message += QStringLiteral(", and drops the row");
    findings.add(rule, {table.name(), row.number, column.name}, message);
}

/** Whether blanks round the cell keep it from being found. */
bool isNaming(const Table& table, const ColumnSchema& column)
{
    return column.name == table.schema().key || !column.referredTable.isEmpty()
        || (!column.files.isEmpty() && column.use != TextUse::Schedule)
        || column.use == TextUse::Name;
}

/** Whether the cell is there for other cells, or for a server, and not for people to read. */
bool isForPrograms(const Table& table, const ColumnSchema& column)
{
    return column.use == TextUse::Any && isNaming(table, column);
}

/** Characters that are not assigned do not count: the newest pictures are among them here. */
bool isInvisible(uint character, bool isForPeople)
{
    constexpr uint nonJoiner = 0x200C;
    constexpr uint joiner = 0x200D; // makes one picture of several, as tags do
    constexpr uint firstTag = 0xE0020;
    constexpr uint replacement = 0xFFFD;
    switch (QChar::category(character)) {
    case QChar::Other_Control:
        return character != '\n' && character != '\t';
    case QChar::Other_Format:
        return !isForPeople
            || (character != nonJoiner && character != joiner && character < firstTag);
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return character == replacement;
    }
}

void checkText(const Table& table, const Place& place, const ColumnSchema* column,
               const QString& text, Findings& findings)
{
    const bool isForPeople = column == nullptr || !isForPrograms(table, *column);
    for (const uint character : text.toUcs4()) {
        if (!isInvisible(character, isForPeople))
            continue;
        findings.add(Rule::InvisibleCharacter, place,
                     QStringLiteral("%1 holds U+%2, which no font shows; a client keeps it")
                         .arg(Wording::shown(text))
                         .arg(character, 4, 16, QLatin1Char('0')));
        break;
    }
    if (column != nullptr && isNaming(table, *column)
        && column->becomes(text) != column->becomes(text.trimmed()))
        findings.add(Rule::OuterBlanks, place,
                     QStringLiteral("%1 begins or ends with a blank, which a client takes as a "
                                    "part of it")
                         .arg(Wording::shown(text)));
}

void checkPeriod(const Table& table, const Row& row, const ColumnSchema& column, Findings& findings)
{
    const ColumnSchema* start = table.column(column.startColumn);
    const QJsonValue end = table.cell(row, column.name);
    if (start == nullptr || !start->fits(table.cell(row, start->name))
        || !(column.fits(end) || isLeftOpen(column, wantedOf(column), end)))
        return;
    const qint64 from = table.value(row, start->name).toVariant().toLongLong();
    const qint64 to = table.value(row, column.name).toVariant().toLongLong();
    if (to < from)
        findings.add(Rule::ReversedPeriod, {table.name(), row.number, column.name},
                     QStringLiteral("%1 is before \"%2\", which is %3; a client takes it for never")
                         .arg(Wording::shown(end), start->name,
                              Wording::shown(table.cell(row, start->name))));
}

/** A table that is read without its columns: every text counts, nothing else does. */
void checkPhrases(const Table& table, Findings& findings)
{
    for (const Row& row : table.rows()) {
        for (int i = 0; i < row.cells.size(); ++i) {
            const QJsonValue cell = row.cells.at(i);
            const Place place {table.name(), row.number, table.header().key(i)};
            if (cell.isString())
                checkText(table, place, nullptr, cell.toString(), findings);
            else
                findings.add(Rule::WrongType, place,
                             QStringLiteral("%1 is no text; a client passes it over")
                                 .arg(Wording::shown(cell)));
        }
    }
}

} // namespace

void Checks::checkCells(const Table& table, Findings& findings)
{
    if (table.reader() != nullptr && table.columns().isEmpty())
        checkPhrases(table, findings);
    for (const Row& row : table.rows()) {
        for (const ColumnSchema& column : table.columns()) {
            // Of a row that nobody will see only the cell matters that keeps it from being seen.
            if (!row.leftOutFor.isEmpty() && row.leftOutFor != column.name)
                continue;
            checkType(table, row, column, findings);
            const QJsonValue cell = table.cell(row, column.name);
            if (column.fits != nullptr && cell.isString())
                checkText(table, {table.name(), row.number, column.name}, &column, cell.toString(),
                          findings);
            if (!column.startColumn.isEmpty())
                checkPeriod(table, row, column, findings);
        }
    }
}
