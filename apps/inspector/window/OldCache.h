#pragma once

/** What a client leaves behind that has been in use for months. */
namespace OldCache {

/** Puts superseded tables and animations, archives and broken downloads among what the library
 *  keeps in the folder, each with a time of its own. */
void leave();

} // namespace OldCache
