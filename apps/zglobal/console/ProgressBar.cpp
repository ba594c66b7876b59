#include "console/ProgressBar.h"

#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"

#include <algorithm>

namespace {

constexpr int barWidth = 20;
constexpr int interval = 50; // milliseconds
constexpr int second = 1000; // milliseconds

QString bar(qint64 done, qint64 all)
{
    const auto filled = static_cast<int>(std::min<qint64>(barWidth, barWidth * done / all));
    return QString(filled, QLatin1Char('#')) + QString(barWidth - filled, QLatin1Char('-'));
}

} // namespace

ProgressBar::ProgressBar()
{
    m_clock.start();
}

ProgressBar::~ProgressBar()
{
    if (m_shown >= 0)
        Terminal::draw(u"\r\x1b[K"_s);
}

void ProgressBar::show(int finished, int started, qint64 received, const QUrl& url, qint64 expected)
{
    const qint64 now = m_clock.elapsed();
    const bool isSoon = m_shown >= 0 && now - m_shown < interval;
    if (isSoon || started == 0 || Terminal::isQuiet() || !Terminal::isErrorTerminal())
        return;
    m_shown = now;
    const bool sized = expected > 0;
    QString bytes = Readable::size(received);
    if (sized)
        bytes += u" of %1"_s.arg(Readable::size(expected));
    const QString counts = u"%1/%2 files, %3%4"_s.arg(
        QString::number(finished), QString::number(started), bytes, timeLeft(received, expected));
    const QString line =
        u"[%1] %2  %3"_s.arg(sized ? bar(received, expected) : bar(finished, started), counts,
                             Terminal::legible(url.fileName()));
    // Not the whole line: a terminal that wraps would keep what is drawn over.
    Terminal::draw(u"\r\x1b[K"_s + Terminal::cut(line, Terminal::errorWidth() - 1));
}

QString ProgressBar::timeLeft(qint64 received, qint64 expected) const
{
    const qint64 elapsed = m_clock.elapsed();
    if (elapsed < second || received <= 0 || expected <= received)
        return {};
    const qint64 left = elapsed * (expected - received) / received / second;
    return u", %1 left"_s.arg(Readable::duration(left + 1));
}
