#pragma once

#include "TextTable.h"

#include <QJsonArray>

/** The flash animations of the client and their download. */
namespace Flashes {

struct Pass
{
    bool allPresent = false; ///< the library has said so
    int downloads = 0;       ///< how many it started
};

/** Has the library download what is missing, and waits until that is unpacked. */
Pass run();

/** How many of the table are on disk and unpacked, or missing. */
int present();
int missing();

TextTable asTable();
QJsonArray asJson();

} // namespace Flashes
