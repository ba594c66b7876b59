#pragma once

#include "client/ZGlobalClient.h"

#include <QString>

#include <functional>

/** The tidying of the client's cache. */
namespace Tidying {

/** Runs it to its end, handing each of its log lines to tell as it comes. */
void run(ZGlobalClient& client, const std::function<void(const QString& line)>& tell);

} // namespace Tidying
