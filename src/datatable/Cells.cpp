#include "datatable/Cells.h"

#include "datatable/LocalClock.h"

#include <QDateTime>

#include <cmath>
#include <limits>
#include <optional>

namespace {

constexpr int dateLength = 19; // yyyy-MM-dd HH:mm:ss
constexpr int plainDigits = std::numeric_limits<int>::digits10;

/** The number that the ASCII digits of [first, first + count) write, or -1. */
int digits(const QChar* first, int count)
{
    int number = 0;
    for (int i = 0; i < count; ++i) {
        const ushort digit = first[i].unicode();
        if (digit < u'0' || digit > u'9')
            return -1;
        number = number * 10 + (digit - u'0');
    }
    return number;
}

LocalClock& clockOfThread()
{
    static thread_local LocalClock clock;
    return clock;
}

/** The seconds of a text in exactly the documented form; nothing for any other. */
std::optional<qint64> plainDate(const QString& text)
{
    if (text.size() != dateLength)
        return std::nullopt;
    const QChar* at = text.constData();
    if (at[4] != u'-' || at[7] != u'-' || at[10] != u' ' || at[13] != u':' || at[16] != u':')
        return std::nullopt;
    const int year = digits(at, 4);
    if (year < 0) // the one field that QDate would take
        return std::nullopt;
    const QDate date(year, digits(at + 5, 2), digits(at + 8, 2));
    const QTime time(digits(at + 11, 2), digits(at + 14, 2), digits(at + 17, 2));
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return clockOfThread().secondsOf(date, time);
}

QDateTime parsedByQt(const QString& date)
{
    return QDateTime::fromString(date, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

} // namespace

Cells::OneTimeZone::OneTimeZone()
{
    clockOfThread().hold();
}

Cells::OneTimeZone::~OneTimeZone()
{
    clockOfThread().release();
}

qint64 Cells::secondsOfDate(const QString& date)
{
    if (date.isEmpty())
        return clockOfThread().secondsOfNoDate();
    if (const std::optional<qint64> seconds = plainDate(date))
        return *seconds;
    // Whatever is not plainly a date is left to Qt. Qt 6 answers for a time that a change of clocks
    // skips, though it is no valid one.
    const QDateTime parsed = parsedByQt(date);
    return parsed.isValid() ? parsed.toSecsSinceEpoch() : clockOfThread().secondsOfNoDate();
}

bool Cells::isDate(const QString& date)
{
    return plainDate(date).has_value() || parsedByQt(date).isValid();
}

Cells::TruncatedNumber::Value Cells::TruncatedNumber::read(const QJsonValue& cell)
{
    const double number = cell.toDouble();
    // Beyond the range of the integer the conversion would be undefined.
    constexpr double limit = 9223372036854775808.0;
    if (std::isnan(number))
        return 0;
    if (number >= limit)
        return std::numeric_limits<qint64>::max();
    if (number < -limit)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(number);
}

bool Cells::TruncatedNumber::fits(const QJsonValue& cell)
{
    return cell.isDouble() && static_cast<double>(read(cell)) == cell.toDouble();
}

int Cells::TextAsInteger::read(const QJsonValue& cell)
{
    const QString text = cell.toString();
    // Mostly a few digits, for which QString's own way, through a locale, is a long one.
    const int plain =
        text.size() <= plainDigits ? digits(text.constData(), static_cast<int>(text.size())) : -1;
    return plain >= 0 ? plain : text.toInt();
}
