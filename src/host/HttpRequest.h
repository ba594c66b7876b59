#pragma once

#include "host/GzipBody.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

/** What one request may take; 0 means no limit, but for the body's size. */
struct HttpLimits
{
    int silence;     ///< milliseconds
    int leastRate;   ///< bytes a second, over stretches as long as the silence
    int totalTime;   ///< milliseconds
    qint64 bodySize; ///< bytes, after decompression
};

/** How a try ended. */
struct HttpOutcome
{
    QByteArray body;             ///< whole, when error is empty
    QString error;               ///< the address and the cause
    int status = 0;              ///< the HTTP status where that is the cause
    bool mayPass = false;        ///< the failure is of a kind that another try may not meet
    qint64 retryAfter = 0;       ///< milliseconds that the server wants to be left alone
    bool recalled = false;       ///< it did not fail, it was called back
    bool wasSilent = false;      ///< nothing came for too long
    bool lostConnection = false; ///< the server has ended its HTTP/2 connection
};

/** One try of a GET request, from the address to the body or the cause of its failure. */
class HttpRequest : public QObject
{
    Q_OBJECT

public:
    /** Starts at once; sigDone comes exactly once, and never from within the constructor. */
    HttpRequest(const std::shared_ptr<QNetworkAccessManager>& manager, const QUrl& url,
                const HttpLimits& limits);
    ~HttpRequest() override;

    const QUrl& url() const { return m_url; }
    const std::shared_ptr<QNetworkAccessManager>& manager() const { return m_manager; }

    /** Ends the request now, unless its answer has begun. */
    void recall();
    /** Ends the request now. */
    void cancel() { done(cancelled()); }

    /** The outcome of what somebody called off; its error names no address yet. */
    static HttpOutcome cancelled();
    /** A cause with the address in front, as errors have it: without query and user information. */
    static QString named(const QUrl& url, const QString& cause);

Q_SIGNALS:
    void sigProgress(qint64 received, qint64 total);
    /** The head of an answer is there, from the server of this address after all redirects. */
    void sigAnswered(const QUrl& url, bool isMultiplexed);
    void sigDone(const HttpOutcome& outcome);

private:
    void start();
    void startTimers();
    void onMetaData();
    void onReadyRead();
    void onFinished();
    void checkPace();
    void take(const QByteArray& block);
    void done(const HttpOutcome& outcome);
    int status() const;
    HttpOutcome statusFailure() const;
    HttpOutcome transportFailure() const;
    HttpOutcome bodyFailure() const;

    std::shared_ptr<QNetworkAccessManager> m_manager;
    QUrl m_url;
    HttpLimits m_limits;
    QNetworkReply* m_reply = nullptr;
    QByteArray m_body;
    std::unique_ptr<GzipBody> m_gzip;
    qint64 m_received = 0; // on the line
    qint64 m_receivedAtPace = 0;
    QString m_distrust;
    QTimer m_silence;
    QTimer m_pace;
    QTimer m_total;
    bool m_answered = false;
    bool m_done = false;
};
