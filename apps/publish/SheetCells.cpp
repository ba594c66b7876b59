#include "publish/SheetCells.h"

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>

namespace {

using SheetCells::Cell;

const QLatin1String dateForm("yyyy-MM-dd HH:mm:ss");
constexpr int mostDigits = 15; // of those that a number keeps

QRegularExpression whole(const char* pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromUtf8(pattern)));
}

Cell faulty(const QString& fault)
{
    return {QJsonValue(), fault, 0};
}

/** What is seen in a sheet in place of a value. */
QString spreadsheetFault(const QString& text)
{
    static const QRegularExpression failed(
        whole("#(REF!|N/A|NAME\\?|VALUE!|DIV/0!|NUM!|NULL!|#+)"));
    static const QRegularExpression shortened(whole("[0-9](\\.[0-9]+)?E\\+[0-9]+"));
    if (failed.match(text).hasMatch())
        return QStringLiteral("is what a spreadsheet shows in place of a value");
    if (shortened.match(text).hasMatch())
        return QStringLiteral("is how a spreadsheet shortens a long number; give the column the "
                              "format \"text\" and enter it again");
    return {};
}

Cell dateOf(const QString& text)
{
    static const QRegularExpression form(
        whole("([0-9]{4})(?:[-/.]|年)([0-9]{1,2})(?:[-/.]|月)([0-9]{1,2})日?"
              "(?:[ T]*([0-9]{1,2}):([0-9]{2})(?::([0-9]{2})(?:[.,]0+)?)?)?"));
    if (text.isEmpty())
        return {QJsonValue(text), QString(), 0}; // some columns may have none
    const QRegularExpressionMatch found = form.match(text);
    const auto part = [&found](int index) { return found.captured(index).toInt(); };
    const QDateTime date(QDate(part(1), part(2), part(3)), QTime(part(4), part(5), part(6)),
                         Qt::UTC);
    if (!found.hasMatch() || !date.date().isValid() || !QTime::isValid(part(4), part(5), part(6)))
        return faulty(QStringLiteral("is no date that can be read in one way only; write it like "
                                     "2026-01-05 16:30:00"));
    const int sharpness[] {10, 16, 19};
    const int parts = found.captured(4).isEmpty() ? 0 : found.captured(6).isEmpty() ? 1 : 2;
    return {QJsonValue(date.toString(dateForm)), QString(), sharpness[parts]};
}

Cell numberOf(CellKind kind, const QString& text)
{
    static const QRegularExpression plain(whole("-?[0-9]+(\\.[0-9]+)?"));
    static const QRegularExpression grouped(whole("-?[0-9]{1,3}(,[0-9]{3})+"));
    QString digits = text;
    if (kind == CellKind::Integer && grouped.match(text).hasMatch())
        digits.remove(QLatin1Char(','));
    if (text.isEmpty())
        return faulty(QStringLiteral("is empty, and %1 is read there").arg(SheetCells::name(kind)));
    if (!plain.match(digits).hasMatch())
        return faulty(
            QStringLiteral("is not %1, written like %2")
                .arg(SheetCells::name(kind),
                     kind == CellKind::Integer ? QStringLiteral("1314") : QStringLiteral("8.88")));
    if (digits.size() > mostDigits)
        return faulty(QStringLiteral("has more digits than a number keeps"));
    return {QJsonValue(digits.toDouble()), QString(), 0};
}

Cell flagOf(const QString& text)
{
    const QString word = text.toUpper();
    const bool isTrue = word == QLatin1String("TRUE") || word == QLatin1String("1");
    if (isTrue || word == QLatin1String("FALSE") || word == QLatin1String("0"))
        return {QJsonValue(isTrue), QString(), 0};
    return faulty(QStringLiteral("is neither TRUE nor FALSE"));
}

} // namespace

CellKind SheetCells::kindOf(const ColumnSchema& column)
{
    if (column.fits(QJsonValue(true)))
        return CellKind::Flag;
    if (column.fits(QJsonValue(1)))
        return column.fits(QJsonValue(0.5)) ? CellKind::Number : CellKind::Integer;
    const bool isDate = column.fits(QJsonValue(QStringLiteral("2026-01-05 16:30:00")))
        && !column.fits(QJsonValue(QStringLiteral("x")));
    return isDate ? CellKind::Date : CellKind::Text;
}

CellKind SheetCells::kindOf(const QVector<QJsonValue>& cells)
{
    const auto are = [&cells](QJsonValue::Type type) {
        return !cells.isEmpty()
            && std::all_of(cells.begin(), cells.end(),
                           [type](const QJsonValue& cell) { return cell.type() == type; });
    };
    return are(QJsonValue::Bool)  ? CellKind::Flag
        : are(QJsonValue::Double) ? CellKind::Number
                                  : CellKind::Text;
}

CellKind SheetCells::kindOf(const QStringList& texts)
{
    // A leading zero is not that of a number.
    static const QRegularExpression number(whole("-?(0|[1-9][0-9]{0,8})(\\.[0-9]{1,6})?"));
    const auto isFlag = [](const QString& text) {
        const QString word = text.toUpper();
        return word == QLatin1String("TRUE") || word == QLatin1String("FALSE");
    };
    const auto isNumber = [](const QString& text) { return number.match(text).hasMatch(); };
    if (std::all_of(texts.begin(), texts.end(), isFlag))
        return CellKind::Flag;
    return std::all_of(texts.begin(), texts.end(), isNumber) ? CellKind::Number : CellKind::Text;
}

QString SheetCells::name(CellKind kind)
{
    switch (kind) {
    case CellKind::Text:
        return QStringLiteral("text");
    case CellKind::Date:
        return QStringLiteral("a date");
    case CellKind::Integer:
        return QStringLiteral("an integer");
    case CellKind::Number:
        return QStringLiteral("a number");
    case CellKind::Flag:
        return QStringLiteral("TRUE or FALSE");
    }
    return {};
}

Cell SheetCells::read(CellKind kind, const QString& text)
{
    const QString trimmed = text.trimmed();
    const QString fault = spreadsheetFault(trimmed);
    if (!fault.isEmpty())
        return faulty(fault);
    switch (kind) {
    case CellKind::Text:
        break;
    case CellKind::Date:
        return dateOf(trimmed);
    case CellKind::Integer:
    case CellKind::Number:
        return numberOf(kind, trimmed);
    case CellKind::Flag:
        return flagOf(trimmed);
    }
    return {QJsonValue(text), QString(), 0};
}
