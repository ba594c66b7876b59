#pragma once

/** Thrown where the program waits, once it has been told to end. */
struct Interrupted
{
    int status; ///< the program's exit status
};

/**
 * The end on Ctrl-C and SIGTERM: whatever the program waits for is given up, and what it made for
 * itself goes on the way out. A second signal ends it at once.
 */
namespace Interrupt {

/** From now on; needs the application. */
void watch();

/** From now on such a signal ends the program where it stands: for what reads, or thinks, for long
 *  without turning the event loop, and has nothing to leave behind, no temporary folder neither. */
void release();

/** Throws Interrupted when the program has been told to end. */
void check();

/** Turns the event loop until it is told to; returns then. */
void wait();

} // namespace Interrupt
