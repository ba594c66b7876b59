#pragma once

#include "ZGlobalExport.h"

#include <QJsonValue>
#include <QString>
#include <QStringList>

/**
 * How the cells of a table become the fields of a record.
 *
 * Every conversion says what it is called and what it makes of a cell of another type; none fails.
 * A cell beyond the end of its row counts as a cell of another type. fits() tells whether a cell is
 * of the kind that the conversion is meant for: an integer out of range or with a fraction, a text
 * that is no number or date where one is wanted, are not.
 */
namespace Cells {

/**
 * Seconds since the epoch of a date text "yyyy-MM-dd HH:mm:ss", read as local time; what an invalid
 * QDateTime answers when the text is no such date, or a time that a change of clocks skips.
 *
 * The same as QDateTime::fromString, without its cost for the texts that tables hold, but for the
 * hour that a change of clocks repeats: there Qt's own answer depends on what it was asked before.
 */
ZGLOBAL_EXPORT qint64 secondsOfDate(const QString& date);

/** While one lives, its thread reads dates in one time zone, without looking for another each time.
 */
class OneTimeZone
{
public:
    ZGLOBAL_EXPORT OneTimeZone();
    ZGLOBAL_EXPORT ~OneTimeZone();
    Q_DISABLE_COPY(OneTimeZone)
};

/** Whether the text is a date of that form. */
ZGLOBAL_EXPORT bool isDate(const QString& date);

inline bool isInteger(const QJsonValue& cell)
{
    return cell.isDouble() && cell.toInt(0) == cell.toInt(1); // the default tells what is none
}
inline bool isIntegerText(const QJsonValue& cell)
{
    bool isNumber = false;
    cell.toString().toInt(&isNumber);
    return isNumber;
}

struct Text
{
    using Value = QString;
    static constexpr const char* name = "text";
    static constexpr const char* otherwise = "empty";
    static Value read(const QJsonValue& cell) { return cell.toString(); }
    static bool fits(const QJsonValue& cell) { return cell.isString(); }
};

struct Integer
{
    using Value = int;
    static constexpr const char* name = "integer";
    static constexpr const char* otherwise = "0";
    static Value read(const QJsonValue& cell) { return cell.toInt(); }
    static bool fits(const QJsonValue& cell) { return isInteger(cell); }
};

struct Flag
{
    using Value = bool;
    static constexpr const char* name = "flag";
    static constexpr const char* otherwise = "false";
    static Value read(const QJsonValue& cell) { return cell.toBool(); }
    static bool fits(const QJsonValue& cell) { return cell.isBool(); }
};

struct Number
{
    using Value = double;
    static constexpr const char* name = "number";
    static constexpr const char* otherwise = "0";
    static Value read(const QJsonValue& cell) { return cell.toDouble(); }
    static bool fits(const QJsonValue& cell) { return cell.isDouble(); }
};

struct TruncatedNumber
{
    using Value = qint64;
    static constexpr const char* name = "number, truncated to an integer";
    static constexpr const char* otherwise = "0";
    ZGLOBAL_EXPORT static Value read(const QJsonValue& cell);
    ZGLOBAL_EXPORT static bool fits(const QJsonValue& cell);
};

struct Date
{
    using Value = qint64;
    static constexpr const char* name = "date as seconds";
    static constexpr const char* otherwise = "seconds of an invalid date";
    static Value read(const QJsonValue& cell) { return secondsOfDate(cell.toString()); }
    static bool fits(const QJsonValue& cell) { return isDate(cell.toString()); }
};

struct DateAsText
{
    using Value = QString;
    static constexpr const char* name = "date as seconds written as text";
    static constexpr const char* otherwise = "seconds of an invalid date";
    static Value read(const QJsonValue& cell) { return QString::number(Date::read(cell)); }
    static bool fits(const QJsonValue& cell) { return Date::fits(cell); }
};

struct IntegerAsText
{
    using Value = QString;
    static constexpr const char* name = "integer written as text";
    static constexpr const char* otherwise = "\"0\"";
    static Value read(const QJsonValue& cell) { return QString::number(cell.toInt()); }
    static bool fits(const QJsonValue& cell) { return isInteger(cell); }
};

struct TextAsInteger
{
    using Value = int;
    static constexpr const char* name = "text parsed as integer";
    static constexpr const char* otherwise = "0";
    ZGLOBAL_EXPORT static Value read(const QJsonValue& cell);
    static bool fits(const QJsonValue& cell) { return isIntegerText(cell); }
};

struct TextAsFlag
{
    using Value = bool;
    static constexpr const char* name = "text parsed as integer, true when not 0";
    static constexpr const char* otherwise = "false";
    static Value read(const QJsonValue& cell) { return TextAsInteger::read(cell) != 0; }
    static bool fits(const QJsonValue& cell) { return isIntegerText(cell); }
};

struct TextList
{
    using Value = QStringList;
    static constexpr const char* name = "text split at every comma";
    static constexpr const char* otherwise = "one empty text";
    static Value read(const QJsonValue& cell) { return cell.toString().split(QLatin1Char(',')); }
    static bool fits(const QJsonValue& cell) { return cell.isString(); }
};

} // namespace Cells
