#pragma once

#include "console/TextTable.h"

#include <QJsonArray>

/** The flash animations of the client, and which of them are there. */
namespace Flashes {

TextTable asTable();
QJsonArray asJson();

} // namespace Flashes
