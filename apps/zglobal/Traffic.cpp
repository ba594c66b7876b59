#include "Traffic.h"

#include "Literals.h"
#include "Terminal.h"
#include "Wait.h"
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
    connect(http, &ZHttpComm::sigRequestStarted, this, [this](int id) {
        ++m_started;
        m_open.insert(id);
    });
    connect(http, &ZHttpComm::sigRequestProgress, this,
            [this](int id, const QUrl& url, qint64 received) {
                if (!m_open.contains(id))
                    return;
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

bool Traffic::waitUntilQuiet(int milliseconds) const
{
    // What an answer leads to comes a turn of the event loop later, further requests included.
    constexpr int quietLooks = 3;
    int quiet = 0;
    return waitUntil(
        [&] {
            quiet = m_open.isEmpty() ? quiet + 1 : 0;
            return quiet >= quietLooks;
        },
        milliseconds);
}

void Traffic::onFinished(int id, const QUrl& url)
{
    if (m_open.remove(id))
        draw(url);
}

void Traffic::draw(const QUrl& url)
{
    if (!Terminal::isErrorTerminal() || m_started == 0)
        return;
    const int finished = m_started - m_open.size();
    const QString counts = u"%1/%2 files, %3"_s.arg(
        QString::number(finished), QString::number(m_started), Words::size(bytes()));
    // Not the whole line: a terminal that wraps would keep what is drawn over.
    constexpr int width = 79;
    const QString line = u"[%1] %2  %3"_s.arg(bar(finished, m_started),
                                              Terminal::padded(counts, 22), url.fileName());
    Terminal::draw(u"\r\x1b[K"_s + Terminal::cut(line, width));
}
