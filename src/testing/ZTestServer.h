#pragma once

#include "ZGlobalTestingExport.h"

#include <QByteArray>
#include <QStringList>
#include <QUrl>

#include <memory>

/**
 * A content server in the test's own process: HTTP on 127.0.0.1, on a port that the system picks,
 * with what the test puts there and nothing else.
 *
 * It answers while the event loop of its thread runs, as it does when a test waits for one of the
 * library's promises. Paths begin with a slash and have no query; what is not served is answered
 * with 404. Every answer closes its connection. Of the object nothing stays behind: port and
 * connections go with it, and it writes no file.
 *
 * One thread only, whichever made it; there may be several at once. A test that gets no port is
 * ended with a message (qFatal).
 */
class ZGLOBALTESTING_EXPORT ZTestServer
{
public:
    struct Answer
    {
        int status = 200;
        QByteArray body = {};
        QByteArray header = {}; ///< one header line more, without its line end
        qint64 declared = -1;   ///< the Content-Length told, when not the body's; or noLength
        int sent = -1;          ///< how many bytes of the body go out before the connection ends
        int delay = 0;          ///< milliseconds before the answer
        int pause = 0;          ///< milliseconds after each byte of the body
    };
    static constexpr qint64 noLength = -2;

    ZTestServer();
    ~ZTestServer();
    Q_DISABLE_COPY(ZTestServer)

    /** Without a slash at the end; for ZGlobalClient::configurationFor(). */
    QString baseUrl() const;
    QUrl url(const QString& target) const;

    /**
     * Serves the bytes of a table, as ZTestTable makes them, and tells the version in
     * "app/versions.json". A client that has this version already does not ask for it again.
     */
    void publish(const QString& table, int version, const QByteArray& bytes);

    /** What a path answers from now on. */
    void serve(const QString& path, const QByteArray& body);
    void answer(const QString& path, const Answer& answer);
    void fail(const QString& path, int status);
    void redirect(const QString& path, const QString& location);
    /** Tells the body's length but ends the connection after the given bytes of it. */
    void cutOff(const QString& path, const QByteArray& body, int after);

    /** Requests for the path are taken, but answered only on release, as served then. */
    void hold(const QString& path);
    void release(const QString& path);
    /** How many requests are being held. */
    int held() const;

    /** From now on connections are refused. */
    void close();

    /** How many requests came for the path, whatever their query. */
    int requests(const QString& path) const;
    /** Path and query of every request so far, in order. */
    QStringList targets() const;

private:
    class Listener;

    std::unique_ptr<Listener> m_listener;
};
