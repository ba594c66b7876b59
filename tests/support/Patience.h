#pragma once

/** How many milliseconds a test waits for what has to come: a busy machine is slow, and one that
 *  waits in vain is ended by CTest. */
constexpr int patience = 15 * 60 * 1000;
