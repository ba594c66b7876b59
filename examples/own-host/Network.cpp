#include "host/ZHttpComm.h"
#include "host/ZImageCacheUtil.h"
#include "host/zErrorInfo.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QNetworkReply>
#include <QSaveFile>

ZHttpComm::ZHttpComm(QObject* parent)
    : QObject(parent)
{
}

ZHttpComm* ZHttpComm::getInstance()
{
    static auto* http = new ZHttpComm(QCoreApplication::instance());
    return http;
}

QtPromise::QPromise<QByteArray> ZHttpComm::get(const QUrl& url)
{
    const int id = ++m_lastId;
    Q_EMIT sigRequestStarted(id, url);
    QNetworkReply* reply = m_network.get(QNetworkRequest(url));
    connect(reply, &QNetworkReply::downloadProgress, this,
            [this, id, url](qint64 done, qint64 all) {
                Q_EMIT sigRequestProgress(id, url, done, all);
            });
    return QtPromise::QPromise<QByteArray>(
        [=](const QtPromise::QPromiseResolve<QByteArray>& resolve,
            const QtPromise::QPromiseReject<QByteArray>& reject) {
            connect(reply, &QNetworkReply::finished, this, [=] {
                reply->deleteLater();
                const bool ok = reply->error() == QNetworkReply::NoError;
                Q_EMIT sigRequestFinished(id, url, ok);
                if (ok)
                    resolve(reply->readAll());
                else
                    reject(zErrorInfo(reply->errorString(), 0));
            });
        });
}

QtPromise::QPromise<void> ZImageCacheUtil::preloadList(const QStringList& urls)
{
    QVector<QtPromise::QPromise<void>> fetches;
    for (const QString& url : urls) {
        const QByteArray digest = QCryptographicHash::hash(url.toUtf8(), QCryptographicHash::Md5);
        const QString path = "res/images/" + digest.toHex().toUpper();
        if (QFile::exists(path))
            continue;
        fetches.append(
            ZHttpComm::getInstance()->get(QUrl(url)).then([path](const QByteArray& body) {
                QSaveFile file(path);
                if (!QDir().mkpath("res/images") || !file.open(QIODevice::WriteOnly)
                    || file.write(body) != body.size() || !file.commit())
                    throw zErrorInfo(path + ": " + file.errorString(), 0);
            }));
    }
    return QtPromise::all(fetches).then([] {});
}
