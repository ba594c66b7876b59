#include "datatable/ResourceServer.h"

#include "host/ZGlobalConfig.h"

QString ResourceServer::images()
{
    return ZGlobalConfig::getInstance().getConfig(QStringLiteral("ImageResServer"));
}

QString ResourceServer::others()
{
    return ZGlobalConfig::getInstance().getConfig(QStringLiteral("ZZResServer"));
}
