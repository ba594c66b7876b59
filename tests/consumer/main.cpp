#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"

#include <QCoreApplication>
#include <QtPromise>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    ZGlobalConfig::getInstance().setConfig(QStringLiteral("ServerType"), QStringLiteral("7"));
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    tables->setTableVersion(EDataTable::CS_GiftList, 57, false);
    int settled = 0;
    QtPromise::resolve(tables->getTableVersion(EDataTable::CS_GiftList))
        .then([&](int version) { settled = version; })
        .wait();
    const QString name = tables->getTableFileName(EDataTable::CS_GiftList);
    const bool unknown = ZGiftListMgr::getInstance()->isGiftInvalid(QStringLiteral("G1"));
    std::printf("%s %d\n", qPrintable(name), settled);
    return name.startsWith(QStringLiteral("7-")) && settled == 57 && unknown ? 0 : 1;
}
