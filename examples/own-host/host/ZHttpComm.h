#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>
#include <QtPromise>

class ZHttpComm : public QObject
{
    Q_OBJECT

public:
    static ZHttpComm* getInstance();
    QtPromise::QPromise<QByteArray> get(const QUrl& url);

Q_SIGNALS: // for ZGlobalClient only
    void sigRequestStarted(int id, const QUrl& url);
    void sigRequestProgress(int id, const QUrl& url, qint64 received, qint64 total);
    void sigRequestFinished(int id, const QUrl& url, bool ok);

private:
    explicit ZHttpComm(QObject* parent);

    QNetworkAccessManager m_network;
    int m_lastId = 0;
};
