#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "client/ZGlobalClient.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/zErrorInfo.h"
#include "presentation/ZBannerMgr.h"

#include <QCoreApplication>
#include <QDateTime>

#include <cstdio>

void print(const QString& line)
{
    std::puts(qUtf8Printable(line));
}

void showShop()
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    for (const ZGiftInfo& gift : gifts->getGiftList()) {
        const QString picture = gifts->getGiftImagePathById(gift.giftId);
        if (gifts->checkGiftTimeValid(gift.giftId, now))
            print(gift.giftName + ", " + QString::number(gift.price) + ", " + picture);
    }
    print(ZSensitiveWordsInfoListMgr::getInstance()->sensitiveWordsCheck("代充金豆找我"));
    const QString page = "https://m.example.com/activity/annual?from=banner&room=1";
    print(page + (ZBannerMgr::getInstance()->bannerIsByCef(page) ? ": embedded" : ": browser"));
}

// giftshop SERVER: brings ./shop up to date, or takes what is there, and shows what is on sale.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    int failures = 0;
    const auto failed = [&failures](const QString& cause) {
        print(QString("failure %1: %2").arg(QString::number(++failures), cause));
    };
    const ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    QObject::connect(tables, &ZDataTableMgr::sigTableUpdated, &app,
                     [](const QString& table) { print("new: " + table); });
    QObject::connect(tables, &ZDataTableMgr::sigTableFailed, &app,
                     [&](const TableFailure& table) { failed(table.table + ", " + table.cause); });
    ZGlobalClient client;
    QString error;
    if (!client.open("shop", ZGlobalClient::configurationFor(app.arguments().value(1)), &error)) {
        failed(error);
        return 1;
    }
    client.update()
        .then([](const ZUpdateResult&) {})
        .fail([&](const zErrorInfo& error) { failed(error.message()); })
        .then([&] {
            if (client.load())
                showShop();
            app.exit(failures == 0 ? 0 : 1);
        });
    return app.exec();
}
