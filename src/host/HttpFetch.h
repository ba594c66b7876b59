#pragma once

#include "host/HttpRequest.h"
#include "host/RequestQueue.h"
#include "host/RetryPolicy.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QUrl>

class HttpNetwork;

/** What ZHttpComm was asked for, with the settings of that moment. */
struct HttpOrder
{
    QUrl url;
    RequestQueue::Lane lane;
    HttpLimits limits;
    RetryPolicy retries;
};

/** One order of ZHttpComm, with its turns in the queue and all its tries. */
class HttpFetch : public QObject
{
    Q_OBJECT

public:
    HttpFetch(const HttpOrder& order, HttpNetwork& network);

    /** To be called once; sigDone then comes exactly once, and never from within. */
    void start();

    /** Ends it, whether it waits or is under way. */
    void cancel();

Q_SIGNALS:
    void sigProgress(qint64 received, qint64 total);
    void sigRetried(int retry, int pause, const QString& cause);
    void sigDone(const HttpOutcome& outcome);

private:
    void onTurn();
    void request();
    void endNow();
    void onTried(HttpRequest* request, const HttpOutcome& outcome);
    void tellCancelled();
    int pauseAfter(const HttpOutcome& outcome);

    HttpOrder m_order;
    HttpNetwork& m_network;
    QElapsedTimer m_sinceTurn;
    QTimer m_pause;
    QTimer m_end;                     // of what was cancelled
    HttpRequest* m_request = nullptr; // the try that is under way
    bool m_hasTurn = false;
    bool m_isCancelled = false;
    int m_tried = 0;
};
