#include "Traffic.h"

#include "Literals.h"
#include "Terminal.h"
#include "Words.h"
#include "host/ZHttpComm.h"

#include <numeric>

namespace {

constexpr int barWidth = 30;

QString bar(int done, int all)
{
    const int filled = barWidth * done / all;
    return QString(filled, QLatin1Char('#')) + QString(barWidth - filled, QLatin1Char('-'));
}

} // namespace

Traffic::Traffic()
{
    const ZHttpComm* http = ZHttpComm::getInstance();
    connect(http, &ZHttpComm::sigRequestStarted, this, [this] { ++m_started; });
    connect(http, &ZHttpComm::sigRequestProgress, this,
            [this](int id, const QUrl& url, qint64 received) {
                m_received.insert(id, received);
                draw(url);
            });
    connect(http, &ZHttpComm::sigRequestFinished, this, &Traffic::onFinished);
}

Traffic::~Traffic()
{
    if (m_started > 0 && Terminal::isErrorTerminal())
        Terminal::draw(u"\r\x1b[K"_s);
}

qint64 Traffic::bytes() const
{
    return std::accumulate(m_received.cbegin(), m_received.cend(), qint64(0));
}

void Traffic::onFinished(int /*id*/, const QUrl& url, bool ok)
{
    ++m_finished;
    if (!ok)
        ++m_failed;
    draw(url);
}

void Traffic::draw(const QUrl& url)
{
    if (!Terminal::isErrorTerminal() || m_started == 0)
        return;
    const QString counts = u"%1/%2 files, %3"_s.arg(
        QString::number(m_finished), QString::number(m_started), Words::size(bytes()));
    // Not the whole line: a terminal that wraps would keep what is drawn over.
    constexpr int width = 79;
    const QString line = u"[%1] %2  %3"_s.arg(bar(m_finished, m_started),
                                              Terminal::padded(counts, 22), url.fileName());
    Terminal::draw(u"\r\x1b[K"_s + Terminal::cut(line, width));
}
