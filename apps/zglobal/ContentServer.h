#pragma once

#include <QString>

#include <memory>

/**
 * A content server over a folder: every file below it, on 127.0.0.1, in threads of its own.
 *
 * A query is ignored and doubled slashes count as one, as with any web server that the content may
 * be published on. Links that lead out of the folder are not followed.
 */
class ContentServer
{
public:
    /** With port 0 the system picks one. Throws a Failure when the folder or the port cannot be
     *  had. With verbose every request is told on the error stream. */
    ContentServer(const QString& folder, int port, bool verbose = false);
    ~ContentServer();
    Q_DISABLE_COPY(ContentServer)

    /** Without a slash at the end. */
    QString baseUrl() const;

    /** How many requests have been answered. */
    int requests() const;

    /** Closes the port; from then on connections are refused. */
    void stop();

private:
    struct Running;
    std::unique_ptr<Running> m_running;
    QString m_baseUrl;
};
