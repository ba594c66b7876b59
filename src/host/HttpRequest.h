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

/** One GET request of ZHttpComm, from the address to the body or the cause of its failure. */
class HttpRequest : public QObject
{
    Q_OBJECT

public:
    /** Starts at once; sigDone comes exactly once, and never from within the constructor. */
    HttpRequest(QNetworkAccessManager& network, const QUrl& url, const HttpLimits& limits);
    ~HttpRequest() override;

Q_SIGNALS:
    void sigProgress(qint64 received, qint64 total);
    /** error is empty and body whole, or error tells the cause and code the status, if any. */
    void sigDone(const QByteArray& body, const QString& error, int code);

private:
    void start(QNetworkAccessManager& network);
    void startTimers();
    void onMetaData();
    void onReadyRead();
    void onFinished();
    void checkPace();
    void take(const QByteArray& block);
    void stop(const QString& cause);
    void done(const QString& cause, int code = 0);
    int status() const;
    QString transportError() const;
    QString bodyError() const;

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
    bool m_done = false;
};
