#pragma once

#include <QtGlobal>

/**
 * What the programs of figures share. A benchmark is called subject/side/size: its side is "ours"
 * or what ours is compared with in the same run. Figures that are no times are counters.
 */
namespace Measured {

/** Runs what is registered as the command line says; what main() returns. */
int run(int argc, char** argv);

/** Ends the program unless both sides give the same answer, before either is timed. */
template <class Answer>
void same(const char* subject, const Answer& ours, const Answer& theirs)
{
    if (!(ours == theirs))
        qFatal("%s: the two sides disagree", subject);
}

} // namespace Measured
