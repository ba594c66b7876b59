#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/zErrorInfo.h"

#include <QCoreApplication>
#include <QDebug>

// managers SERVER: the same on the managers alone, step by step, in the current folder.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QString server = app.arguments().value(1);
    ZGlobalConfig& config = ZGlobalConfig::getInstance();
    config.setConfig("cmsServer", server + "/");
    config.setConfig("ImageResServer", server);
    config.setConfig("ServerType", "1002");

    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    tables->loadLocalVersion();
    tables->setTableVersion(EDataTable::CS_GiftList, 57, true); // as the service reports them
    tables->updateAllDataTable()
        .then([tables] { return tables->loadAllTables() ? 0 : 1; })
        .fail([](const zErrorInfo& error) {
            qWarning() << error.message();
            return 1;
        })
        .then([&app](int status) {
            qInfo() << ZGiftListMgr::getInstance()->getGiftNameById("G1014");
            app.exit(status);
        });
    return app.exec();
}
