#include "inspector/host/TrafficMeter.h"

#include "host/ZHttpComm.h"

TrafficMeter::TrafficMeter(QObject* parent)
    : QObject(parent)
    , m_seconds(1)
{
    m_clock.start();
    ZHttpComm* http = ZHttpComm::getInstance();
    connect(http, &ZHttpComm::sigRequestStarted, this, [this](int id) {
        m_received.insert(id, 0);
        add({0, 1, 0});
    });
    connect(http, &ZHttpComm::sigRequestProgress, this,
            [this](int id, const QUrl& /*url*/, qint64 received) {
                qint64& known = m_received[id];
                const qint64 more = received - known; // of a new try it begins at 0 again
                known = received;
                add({more < 0 ? received : more, 0, 0});
            });
    connect(http, &ZHttpComm::sigRequestFinished, this,
            [this](int id, const QUrl& /*url*/, bool ok) {
                m_received.remove(id);
                if (!ok)
                    add({0, 0, 1});
            });
}

QVector<TrafficMeter::Second> TrafficMeter::seconds() const
{
    moveOn();
    return m_seconds;
}

void TrafficMeter::add(const Second& more)
{
    moveOn();
    for (Second* second : {&m_seconds.last(), &m_total}) {
        second->bytes += more.bytes;
        second->requests += more.requests;
        second->failures += more.failures;
    }
    Q_EMIT sigChanged();
}

void TrafficMeter::moveOn() const
{
    const qint64 now = m_clock.elapsed() / 1000;
    const qint64 passed = qMin<qint64>(now - m_last, secondsKept);
    for (qint64 i = 0; i < passed; ++i)
        m_seconds.append(Second());
    if (m_seconds.size() > secondsKept)
        m_seconds.remove(0, m_seconds.size() - secondsKept);
    m_last = now;
}
