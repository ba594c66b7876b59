#pragma once

/**
 * Makes one call of the system fail: the n-th open, write, rename (link included), unlink (rmdir
 * included), mkdir, sync or close that a process makes below a folder. Linux only.
 *
 * A test links the library and arms it. Any program can be run on it as well, preloaded
 * (LD_PRELOAD) and told by the environment:
 *
 *   ZGLOBAL_FAULT_CALL    open, write, rename, unlink, mkdir, sync or close
 *   ZGLOBAL_FAULT_AT      which of these calls, from 1; 0 only counts
 *   ZGLOBAL_FAULT_ERROR   the error's number; "kill" ends the process before the call
 *   ZGLOBAL_FAULT_ALWAYS  when set, every later one fails as well
 *   ZGLOBAL_FAULT_BELOW   the folder, absolute; the working folder of the start when not set
 *   ZGLOBAL_FAULT_REPORT  a file that gets one line "call count" for each kind when the process
 *                         exits by itself
 *
 * A close that fails has closed nevertheless; any other call that fails has done nothing. A sync
 * below the folder does not wait for the disk: what is tried here ends with a process, not with the
 * power.
 */
namespace Faults {

enum Call { Open, Write, Rename, Unlink, Mkdir, Sync, Close, callKinds };

/** Ends the process in place of an error. */
constexpr int kill = -1;

constexpr int forGood = 1000 * 1000;

struct Fault
{
    Call call = Open;
    int at = 0;
    int error = 0;
    int times = 1; ///< so many in a row
};

/** From now on, counted anew, below this absolute folder. */
void arm(const Fault& fault, const char* below);

/** Counts no more; answers how many calls of the armed kind there were. */
int disarm();

const char* name(Call call);

} // namespace Faults
