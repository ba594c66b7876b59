//! [includes]
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "client/ZGlobalClient.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZImageCacheUtil.h"
#include "host/zErrorInfo.h"
#include "models/ZGiftModel.h"
#include "presentation/ZBannerMgr.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QSortFilterProxyModel>
#include <QThread>
//! [includes]

// guide SERVER: what docs/guide.md shows, stretch by stretch, as one program.

//! [ask]
void showGifts()
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    for (const ZGiftInfo& gift : gifts->getGiftList()) {
        if (gifts->checkGiftValid(gift.giftId, now, true, true))
            qInfo() << gift.giftName << gift.price << gifts->getGiftImagePathById(gift.giftId);
    }
}

QString masked(const QString& line) // "代充金豆找我" becomes "*找我"
{
    return ZSensitiveWordsInfoListMgr::getInstance()->sensitiveWordsCheck(line);
}

bool opensEmbedded(const QString& page)
{
    return ZBannerMgr::getInstance()->bannerIsByCef(page);
}
//! [ask]

//! [open]
bool openClient(ZGlobalClient& client, const QString& server)
{
    QJsonObject configuration = ZGlobalClient::configurationFor(server);
    configuration.insert("userId", "10086"); // and what else the client knows
    QString error;
    if (client.open("guide-data", configuration, &error))
        return true;
    qWarning() << error;
    return false;
}
//! [open]

//! [listen]
void listen(QObject* view)
{
    const ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    QObject::connect(tables, &ZDataTableMgr::sigTableLoaded, view, [](const QString& table) {
        if (table == "CS_GiftList")
            showGifts(); // what was drawn before is out of date
    });
    QObject::connect(tables, &ZDataTableMgr::sigTableFailed, view, [](const TableFailure& it) {
        qWarning() << it.table << it.cause << it.httpStatus;
    });
}
//! [listen]

//! [start]
QtPromise::QPromise<void> start(ZGlobalClient& client)
{
    if (!client.load()) // what the last time left on the disk
        qInfo() << "the first start in this folder: nothing to show before the update";
    return client.update()
        .then([](const ZUpdateResult& result) {
            for (const ZClientFailure& failure : result.failures)
                qWarning() << failure.what << failure.why;
        })
        .fail([](const zErrorInfo& error) { // no connection: go on with what there is
            qWarning() << error.message();
        })
        .then([&client] {
            if (!client.load())
                throw zErrorInfo("gifts or welcome words are missing: try again later");
        });
}
//! [start]

//! [picture]
QtPromise::QPromise<QString> giftPicture(const QString& id)
{
    const QString path = ZGiftListMgr::getInstance()->getGiftImagePathById(id);
    const QString address = ZGiftListMgr::getInstance()->getGiftImageUrlById(id);
    return ZImageCacheUtil::preloadList({address}).then([path] { return path; });
}
//! [picture]

//! [thread]
QString maskedInAnyThread(const QString& line)
{
    QString answer;
    const auto ask = [&] { answer = masked(line); };
    if (QThread::currentThread() == qApp->thread())
        ask();
    else
        QMetaObject::invokeMethod(qApp, ask, Qt::BlockingQueuedConnection);
    return answer;
}
//! [thread]

//! [views]
QAbstractItemModel* giftsToSend(QObject* view)
{
    auto* gifts = new ZGiftModel(view);
    auto* shown = new QSortFilterProxyModel(view);
    shown->setSourceModel(gifts);
    shown->setFilterRole(gifts->sendableRole());
    shown->setFilterFixedString("true");
    shown->setSortRole(ZRecordModel::ValueRole);
    shown->sort(gifts->columnOf("price"));
    return shown; // and follows every load by itself
}
//! [views]

//! [report]
bool writeReport(const ZGlobalClient& client)
{
    const TableStatus gifts = ZDataTableMgr::getInstance()->getTableStatus(EDataTable::CS_GiftList);
    const TableFailure& last = gifts.lastFailure;
    if (last.step != TableFailure::None)
        qWarning() << last.time << last.address << last.httpStatus << last.cause;
    QFile file("report.json");
    return file.open(QIODevice::WriteOnly)
        && file.write(QJsonDocument(client.report()).toJson()) > 0;
}
//! [report]

QtPromise::QPromise<void> tryTheRest(const ZGlobalClient& client)
{
    if (!opensEmbedded("https://m.example.com/activity/annual?from=banner&room=1"))
        throw zErrorInfo("the banner's page is not known");
    if (giftsToSend(qApp)->rowCount() == 0)
        throw zErrorInfo("no gift may be sent");
    if (!writeReport(client))
        throw zErrorInfo("report.json could not be written");
    QThread* worker = QThread::create([] { qInfo() << maskedInAnyThread("代充金豆找我"); });
    QObject::connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    const auto masked = QtPromise::connect(worker, &QThread::finished);
    worker->start();
    return masked.then([] { return giftPicture("G1014"); }).then([](const QString& path) {
        if (!QFile::exists(path))
            throw zErrorInfo(path + " is not there");
    });
}

//! [main]
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    ZGlobalClient client;
    if (!openClient(client, app.arguments().value(1)))
        return 1;
    listen(&app);
    start(client)
        .then([&client] { return tryTheRest(client); })
        .then([] { qApp->quit(); })
        .fail([](const zErrorInfo& error) {
            qWarning() << error.message();
            qApp->exit(1);
        });
    return app.exec();
}
//! [main]
