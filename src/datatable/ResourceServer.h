#pragma once

#include <QString>

/** Where the addresses of resources begin, as the host's configuration says at the moment. */
namespace ResourceServer {

/** "ImageResServer"; what follows it begins with a slash unless a manager says otherwise. */
QString images();

/** "ZZResServer", which ends in a slash. */
QString others();

} // namespace ResourceServer
