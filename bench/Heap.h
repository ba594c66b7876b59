#pragma once

#include <cstdlib> // tells whose library it is
#include <optional>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

/** The bytes that the whole process holds of the heap, malloc's own included; nothing where the
 *  system's library does not tell. */
inline std::optional<double> heapInUse()
{
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 33)
    const auto heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
#else
    return std::nullopt;
#endif
}

/** Gives back to the system what the heap keeps for later, where its library can. */
inline void returnUnusedHeap()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}
