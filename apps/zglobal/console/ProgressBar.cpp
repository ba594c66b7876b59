#include "console/ProgressBar.h"

#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"

namespace {

constexpr int barWidth = 30;
// Not the whole line: a terminal that wraps would keep what is drawn over.
constexpr int lineWidth = 79;

QString bar(int done, int all)
{
    const int filled = barWidth * done / all;
    return QString(filled, QLatin1Char('#')) + QString(barWidth - filled, QLatin1Char('-'));
}

} // namespace

ProgressBar::~ProgressBar()
{
    if (m_drawn)
        Terminal::draw(u"\r\x1b[K"_s);
}

void ProgressBar::show(int finished, int started, qint64 received, const QUrl& url)
{
    if (!Terminal::isErrorTerminal() || started == 0)
        return;
    m_drawn = true;
    const QString counts = u"%1/%2 files, %3"_s.arg(
        QString::number(finished), QString::number(started), Readable::size(received));
    const QString line =
        u"[%1] %2  %3"_s.arg(bar(finished, started), Terminal::padded(counts, 22), url.fileName());
    Terminal::draw(u"\r\x1b[K"_s + Terminal::cut(line, lineWidth));
}
