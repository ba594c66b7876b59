#include "datatable/ResourceServer.h"

#include "host/ZGlobalConfig.h"

QString ResourceServer::imageRes()
{
    return ZGlobalConfig::getInstance().getConfig(QStringLiteral("ImageResServer"));
}

QString ResourceServer::zzRes()
{
    return ZGlobalConfig::getInstance().getConfig(QStringLiteral("ZZResServer"));
}

QString ResourceServer::versionedImage(const char* folder, const QString& name,
                                       const QString& version)
{
    return imageRes() + QLatin1String(folder) + name + QLatin1Char('?') + version;
}

QString ResourceServer::versionedImage(const char* folder, const QString& name, int version)
{
    return versionedImage(folder, name, QString::number(version));
}
