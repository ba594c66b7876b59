#pragma once

#include "Nginx.h"

#include <QTemporaryDir>

#include <memory>

/** An edge with an empty cache before an origin with the published tables and their compressed
 *  copies, as the examples configure them, for as many connections as this machine lets them have.
 */
class EdgeAndOrigin
{
public:
    /** With a number, the edge answers so many requests a second, a tenth more at once, and refuses
     *  the others with 503. Throws std::runtime_error when a server does not run. */
    explicit EdgeAndOrigin(int mostPerSecond = 0);

    int port() const { return m_edgePort; }

    /** Ends both; a log line for every request that has reached the origin. */
    QStringList endAndTellRequests();

private:
    void startOrigin();
    void startEdge(int mostPerSecond);

    QTemporaryDir m_folder;
    int m_originPort;
    int m_edgePort;
    std::unique_ptr<Nginx> m_origin;
    std::unique_ptr<Nginx> m_edge;
};
