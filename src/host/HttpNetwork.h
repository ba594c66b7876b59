#pragma once

#include "host/Proxies.h"
#include "host/RequestQueue.h"

#include <QNetworkAccessManager>

/** What the requests of ZHttpComm share while the application runs. */
struct HttpNetwork
{
    HttpNetwork(const RequestQueue::Bounds& plain, const RequestQueue::Bounds& multiplexed)
        : queue(plain, multiplexed)
        , proxies(new Proxies)
    {
        manager.setProxyFactory(proxies);
    }

    QNetworkAccessManager manager;
    RequestQueue queue;
    Proxies* proxies; // the manager's
};
