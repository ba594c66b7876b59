#pragma once

#include "host/Proxies.h"
#include "host/RequestQueue.h"

#include <QNetworkAccessManager>

/** What the requests of ZHttpComm share while the application runs. */
struct HttpNetwork
{
    HttpNetwork(const RequestQueue::Bounds& bounds, const RequestQueue::Bounds& multiplexed,
                QObject* context)
        : queue(bounds, multiplexed)
        , proxies(new Proxies(context))
    {
        manager.setProxyFactory(proxies);
    }

    QNetworkAccessManager manager;
    RequestQueue queue;
    Proxies* proxies; // the manager's
};
