#pragma once

#include <QtTest>

/** How many milliseconds a test waits for what has to come: a busy machine is slow, and one that
 *  waits in vain is ended by CTest. */
constexpr int patience = 15 * 60 * 1000;

// Qt's own wait five seconds.
#undef QTRY_VERIFY
#undef QTRY_VERIFY2
#undef QTRY_COMPARE
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patience)
#define QTRY_VERIFY2(condition, words) QTRY_VERIFY2_WITH_TIMEOUT(condition, words, patience)
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, patience)
