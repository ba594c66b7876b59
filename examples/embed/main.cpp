#include "client/ZGlobalClient.h"
#include "gift/ZGiftListMgr.h"
#include "host/zErrorInfo.h"

#include <QCoreApplication>
#include <QDebug>

// embed SERVER: brings the tables below ./client up to date, loads them and names a gift.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    ZGlobalClient client;
    if (!client.open("client", ZGlobalClient::configurationFor(app.arguments().value(1))))
        return 1;
    client.update()
        .then([&](const ZUpdateResult&) {
            app.exit(client.load() ? 0 : 1); // client.failures() names the tables and the causes
            qInfo() << ZGiftListMgr::getInstance()->getGiftNameById("G1014");
        })
        .fail([&](const zErrorInfo& error) {
            qWarning() << error.message();
            app.exit(1);
        });
    return app.exec();
}
