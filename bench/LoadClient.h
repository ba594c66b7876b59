#pragma once

#include <QByteArray>
#include <QObject>
#include <QQueue>
#include <QVector>

#include <array>
#include <functional>

class QTcpSocket;

/** What all simulated clients do. */
struct LoadPlan
{
    int port;                         ///< of 127.0.0.1
    QVector<QByteArray> targets = {}; ///< paths and queries; all others when the first is there
    bool asksForGzip;
    /** The milliseconds before try number retry (1 is the first after a failure), -1 for none. */
    std::function<int(int retry)> pauseBefore;
};

/** What became of the requests of all clients. */
struct LoadCount
{
    qint64 answered = 0;              ///< with 200
    qint64 received = 0;              ///< bytes, heads and refusals too
    qint64 bodies = 0;                ///< bytes of what was answered with 200
    std::array<qint64, 8> refused {}; ///< by the number of the try
    int failedClients = 0;
};

/**
 * A client that brings itself up to date as the library does: the versions, then all tables over
 * six connections that stay, in their order; what is refused goes to the end of the queue after a
 * pause.
 */
class LoadClient : public QObject
{
public:
    LoadClient(const LoadPlan& plan, LoadCount& count, const std::function<void()>& onDone);

    void start();

private:
    struct Request
    {
        QByteArray target;
        int tried = 0;
    };
    struct Connection
    {
        QTcpSocket* socket = nullptr;
        bool isBusy = false;
        Request request;
        QByteArray received;
        int wanted = 0; // bytes of the whole answer, 0 while that is unknown
    };

    void add(const Request& request);
    void startWaiting();
    void send(Connection& connection);
    void onReadyRead(Connection& connection);
    void onLost(Connection& connection);
    void onAnswer(Connection& connection);
    void onRefused(Request request);
    void onEnded();

    const LoadPlan& m_plan;
    LoadCount& m_count;
    std::function<void()> m_onDone;
    std::array<Connection, 6> m_connections;
    QQueue<Request> m_waiting;
    int m_missing = 0;
    bool m_hasFirst = false;
    bool m_hasFailed = false;
};
