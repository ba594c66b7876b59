#pragma once

#include <QHash>
#include <QQueue>
#include <QString>
#include <QUrl>

#include <array>
#include <functional>

/**
 * Which requests are under way and which wait, for each server by itself.
 *
 * What waits in the foreground goes before what waits in the background, and the background never
 * takes all places. Within either, the folders of the addresses take turns, so that one file of a
 * folder does not wait for all the thousands of another; files of a folder keep their order.
 */
class RequestQueue
{
public:
    enum Lane { Foreground, Background };
    using Start = std::function<void()>;
    /** The most requests under way to one server, in all and of the background. */
    using Bounds = std::array<int, 2>;

    /** multiplexed is for servers that carry many requests in one connection. */
    RequestQueue(const Bounds& plain, const Bounds& multiplexed)
        : m_plain(plain)
        , m_multiplexed(multiplexed)
    {
    }

    /** Calls start when it is the address's turn: at once, or from within ended(). */
    void add(const QUrl& url, Lane lane, const Start& start);
    /** To be called once for each request that was started. */
    void ended(const QUrl& url, Lane lane);
    /** Which bounds hold for the server of this address; until set, its scheme decides. */
    void setMultiplexed(const QUrl& url, bool isMultiplexed);
    bool isMultiplexed(const QUrl& url) const;
    /** The same, but not by the scheme. */
    bool isKnownMultiplexed(const QUrl& url) const;

private:
    struct Waiting
    {
        QHash<QString, QQueue<Start>> byFolder;
        QQueue<QString> turns; // each folder of byFolder once
    };
    struct Server
    {
        Bounds most {};
        std::array<int, 2> underWay {};
        std::array<Waiting, 2> waiting;
    };

    void startNext(const QString& name);
    const Bounds& boundsFor(const QUrl& url) const;
    static bool hasPlace(const Server& server, Lane lane);
    static Start takeNext(Waiting& waiting);

    Bounds m_plain;
    Bounds m_multiplexed;
    QHash<QString, bool> m_isMultiplexed;
    QHash<QString, Server> m_servers;
};
