#pragma once

#include <QString>

#include <functional>
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
    using Tell = std::function<void(const QString& line)>;

    ContentServer();
    ~ContentServer();
    Q_DISABLE_COPY(ContentServer)

    /**
     * Serves the folder; with port 0 the system picks one. False, and the cause told, when the
     * folder or the port cannot be had. A line for every request goes to tell, from the server's
     * threads. Once only.
     */
    bool start(const QString& folder, int port, QString* error, const Tell& tell = {});

    /** Without a slash at the end. */
    QString baseUrl() const;

    /** How many requests have come in. */
    int requests() const;

    /** Closes the port; from then on connections are refused. */
    void stop();

private:
    struct Running;
    std::unique_ptr<Running> m_running;
    QString m_baseUrl;
};
