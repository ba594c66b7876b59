#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

/** One GET request of ZHttpComm, from the address to the body or the cause of its failure. */
class HttpRequest : public QObject
{
    Q_OBJECT

public:
    /** Starts at once; sigDone comes exactly once, and never from within the constructor. */
    HttpRequest(QNetworkAccessManager& network, const QUrl& url, int timeout, qint64 maxBodySize);
    ~HttpRequest() override;

    /** Another request of the same server received something while this one may be waiting. */
    void onNeighbourProgress(const QUrl& url);

Q_SIGNALS:
    void sigProgress(qint64 received, qint64 total);
    /** error is empty and body whole, or error tells the cause and code the status, if any. */
    void sigDone(const QByteArray& body, const QString& error, int code);

private:
    void start(QNetworkAccessManager& network);
    void onMetaData();
    void onReadyRead();
    void onFinished();
    void stop(const QString& cause);
    void done(const QString& cause, int code = 0);
    QString transportError() const;
    bool endsEarly() const;

    QUrl m_url;
    qint64 m_maxBodySize;
    QNetworkReply* m_reply = nullptr;
    QByteArray m_body;
    QTimer m_silence;
    bool m_done = false;
};
