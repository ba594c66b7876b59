#pragma once

#include <QString>

/** The servers of resources, as the host's configuration names them at the moment. */
namespace ResourceServer {

/** "ImageResServer"; what follows it begins with a slash unless a manager says otherwise. */
QString imageRes();

/** "ZZResServer", which ends in a slash. */
QString zzRes();

/** Where a file lies on "ImageResServer": folder, name, "?" and version behind the server. */
QString versionedImage(const char* folder, const QString& name, const QString& version);
QString versionedImage(const char* folder, const QString& name, int version);

} // namespace ResourceServer
