#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

/** What a fuzzer calls for everything that has to hold. */
inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, size_t size);

/** The body of a fuzzer, with the input as a QByteArray named bytes. */
#define ZGLOBAL_FUZZER                                                                             \
    static void tryBytes(const QByteArray& bytes);                                                 \
    int LLVMFuzzerTestOneInput(const unsigned char* bytes, size_t size)                            \
    {                                                                                              \
        tryBytes(QByteArray(reinterpret_cast<const char*>(bytes), int(size)));                     \
        return 0;                                                                                  \
    }                                                                                              \
    static void tryBytes(const QByteArray& bytes)
