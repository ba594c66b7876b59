#include "client/ZGlobalClient.h"
#include "gift/ZGiftListMgr.h"
#include "testing/ZTestFolder.h"
#include "testing/ZTestServer.h"
#include "testing/ZTestTable.h"

#include <QCoreApplication>
#include <QDebug>

// A test of a client's own, against a gift table of its own making.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const ZTestFolder folder;
    ZTestServer server;
    const QJsonObject rose {{"giftId", "G1"}, {"giftName", "rose"}, {"valid", true}};
    server.publish("CS_GiftList", 57,
                   ZTestTable::bytes(ZGiftListMgr::declaration().columnNames(), {rose}));
    server.publish("GroupWelComeWord", 1, // without it and the gifts there is no start-up
                   ZTestTable::bytes({"word"}, {QJsonArray {"hello"}}));

    ZGlobalClient client;
    client.open(".", ZGlobalClient::configurationFor(server.baseUrl()));
    client.update().wait(); // names what is not published as failures
    const bool loaded = client.load();
    const QString name = ZGiftListMgr::getInstance()->getGiftNameById("G1");
    qInfo() << "the gift is called" << name;
    return loaded && name == "rose" ? 0 : 1;
}
