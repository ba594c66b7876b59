#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/** The tidying of the client's cache. */
namespace Tidying {

/** Runs it to its end, handing each of its log lines to tell as it comes; false when it does not
 *  end in time. */
bool run(const std::function<void(const QString& line)>& tell);

} // namespace Tidying
