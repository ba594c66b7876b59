#pragma once

#include "ZGlobalExport.h"

#include <QJsonValue>
#include <QString>
#include <QStringList>

/**
 * How the cells of a table become the fields of a record.
 *
 * Every conversion says what it is called and what it makes of a cell of another type; none fails.
 * A cell beyond the end of its row counts as a cell of another type.
 */
namespace Cells {

/**
 * Seconds since the epoch of a date text "yyyy-MM-dd HH:mm:ss", read as local time; what an invalid
 * QDateTime answers when the text is no such date. The same as QDateTime::fromString for every
 * text, without its cost for the texts that tables hold.
 */
ZGLOBAL_EXPORT qint64 secondsOfDate(const QString& date);

struct Text
{
    using Value = QString;
    static constexpr const char* name = "text";
    static constexpr const char* otherwise = "empty";
    static Value read(const QJsonValue& cell) { return cell.toString(); }
};

struct Integer
{
    using Value = int;
    static constexpr const char* name = "integer";
    static constexpr const char* otherwise = "0";
    static Value read(const QJsonValue& cell) { return cell.toInt(); }
};

struct Flag
{
    using Value = bool;
    static constexpr const char* name = "flag";
    static constexpr const char* otherwise = "false";
    static Value read(const QJsonValue& cell) { return cell.toBool(); }
};

struct Number
{
    using Value = double;
    static constexpr const char* name = "number";
    static constexpr const char* otherwise = "0";
    static Value read(const QJsonValue& cell) { return cell.toDouble(); }
};

struct TruncatedNumber
{
    using Value = qint64;
    static constexpr const char* name = "number, truncated to an integer";
    static constexpr const char* otherwise = "0";
    ZGLOBAL_EXPORT static Value read(const QJsonValue& cell);
};

struct Date
{
    using Value = qint64;
    static constexpr const char* name = "date as seconds";
    static constexpr const char* otherwise = "seconds of an invalid date";
    static Value read(const QJsonValue& cell) { return secondsOfDate(cell.toString()); }
};

struct DateAsText
{
    using Value = QString;
    static constexpr const char* name = "date as seconds written as text";
    static constexpr const char* otherwise = "seconds of an invalid date";
    static Value read(const QJsonValue& cell) { return QString::number(Date::read(cell)); }
};

struct IntegerAsText
{
    using Value = QString;
    static constexpr const char* name = "integer written as text";
    static constexpr const char* otherwise = "\"0\"";
    static Value read(const QJsonValue& cell) { return QString::number(cell.toInt()); }
};

struct TextAsInteger
{
    using Value = int;
    static constexpr const char* name = "text parsed as integer";
    static constexpr const char* otherwise = "0";
    static Value read(const QJsonValue& cell) { return cell.toString().toInt(); }
};

struct TextAsFlag
{
    using Value = bool;
    static constexpr const char* name = "text parsed as integer, true when not 0";
    static constexpr const char* otherwise = "false";
    static Value read(const QJsonValue& cell) { return TextAsInteger::read(cell) != 0; }
};

struct TextList
{
    using Value = QStringList;
    static constexpr const char* name = "text split at every comma";
    static constexpr const char* otherwise = "one empty text";
    static Value read(const QJsonValue& cell) { return cell.toString().split(QLatin1Char(',')); }
};

} // namespace Cells
