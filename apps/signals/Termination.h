#pragma once

#include <functional>

/** Ctrl-C and SIGTERM, for programs that turn an event loop. A second signal ends one at once. */
namespace Termination {

/** From now on; needs the application. Once such a signal has come, told() is called in the event
 *  loop, over and over: there may be loops within loops to be left, and some to come. */
void watch(const std::function<void()>& told);

/** From now on such a signal ends the program where it stands. */
void release();

/** The signal that has come; 0 while none has. */
int caught();

} // namespace Termination
