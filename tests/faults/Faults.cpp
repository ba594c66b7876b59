#include "faults/Faults.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr const char* names[] = {"open", "write", "rename", "unlink", "mkdir", "sync", "close"};

// Changed only while nothing else of the process works below the folder.
Faults::Fault fault;
char below[PATH_MAX] = "";
std::atomic<bool> counting {false};
std::atomic<int> counts[Faults::callKinds];

bool isBelow(const char* path)
{
    const size_t length = strlen(below);
    return strncmp(path, below, length) == 0 && (path[length] == '/' || path[length] == '\0');
}

bool fileIsBelow(int file)
{
    char link[64];
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    char path[PATH_MAX];
    const ssize_t length = readlink(link, path, sizeof path - 1);
    path[length < 0 ? 0 : length] = '\0';
    return isBelow(path);
}

bool pathIsBelow(int folder, const char* path)
{
    if (path[0] == '/')
        return isBelow(path);
    if (folder != AT_FDCWD)
        return fileIsBelow(folder);
    char current[PATH_MAX];
    return getcwd(current, sizeof current) != nullptr && isBelow(current);
}

/** Counts a call below the folder; true when it has to fail, with errno set. */
bool fails(Faults::Call call)
{
    const int count = ++counts[call];
    if (call != fault.call || fault.at == 0 || count < fault.at || count - fault.at >= fault.times)
        return false;
    if (fault.error == Faults::kill)
        raise(SIGKILL);
    errno = fault.error;
    return true;
}

bool fails(Faults::Call call, int folder, const char* path)
{
    return counting && path != nullptr && pathIsBelow(folder, path) && fails(call);
}

bool fails(Faults::Call call, int file)
{
    return counting && fileIsBelow(file) && fails(call);
}

const char* setting(const char* name)
{
    const char* value = getenv(name);
    return value == nullptr ? "" : value;
}

struct FromEnvironment
{
    FromEnvironment()
    {
        const char* call = setting("ZGLOBAL_FAULT_CALL");
        if (*call == '\0' && *setting("ZGLOBAL_FAULT_REPORT") == '\0')
            return;
        Faults::Fault told;
        for (int i = 0; i < Faults::callKinds; ++i) {
            if (strcmp(call, names[i]) == 0)
                told.call = static_cast<Faults::Call>(i);
        }
        told.at = atoi(setting("ZGLOBAL_FAULT_AT"));
        const char* error = setting("ZGLOBAL_FAULT_ERROR");
        told.error = strcmp(error, "kill") == 0 ? Faults::kill : atoi(error);
        told.times = *setting("ZGLOBAL_FAULT_ALWAYS") != '\0' ? Faults::forGood : 1;
        char current[PATH_MAX] = "";
        const char* folder = setting("ZGLOBAL_FAULT_BELOW");
        Faults::arm(told, *folder != '\0' ? folder : getcwd(current, sizeof current));
    }

    ~FromEnvironment()
    {
        const char* report = setting("ZGLOBAL_FAULT_REPORT");
        counting = false;
        FILE* file = *report == '\0' ? nullptr : fopen(report, "w");
        if (file == nullptr)
            return;
        for (int i = 0; i < Faults::callKinds; ++i)
            fprintf(file, "%s %d\n", names[i], counts[i].load());
        fclose(file);
    }
} fromEnvironment;

} // namespace

void Faults::arm(const Fault& wanted, const char* folder)
{
    counting = false;
    fault = wanted;
    snprintf(below, sizeof below, "%s", folder);
    for (std::atomic<int>& count : counts)
        count = 0;
    counting = true;
}

int Faults::disarm()
{
    counting = false;
    return counts[fault.call];
}

const char* Faults::name(Call call)
{
    return names[call];
}

using namespace Faults;

// The calls themselves, in front of the system's: parameters and arguments in brackets, then what
// is counted and where.
#define ZGLOBAL_REAL(name)                                                                         \
    static const auto real = reinterpret_cast<decltype(&::name)>(dlsym(RTLD_NEXT, #name))
#define ZGLOBAL_CALL(result, name, parameters, arguments, ...)                                     \
    result name parameters                                                                         \
    {                                                                                              \
        ZGLOBAL_REAL(name);                                                                        \
        return fails(__VA_ARGS__) ? -1 : real arguments;                                           \
    }
#define ZGLOBAL_OPEN(name, parameters, arguments, folder)                                          \
    int name parameters                                                                            \
    {                                                                                              \
        va_list more;                                                                              \
        va_start(more, flags);                                                                     \
        const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;       \
        va_end(more);                                                                              \
        ZGLOBAL_REAL(name);                                                                        \
        return fails(Open, folder, path) ? -1 : real arguments;                                    \
    }
#define ZGLOBAL_SYNC(name, ...)                                                                    \
    int name(int file) __VA_ARGS__                                                                 \
    {                                                                                              \
        ZGLOBAL_REAL(name);                                                                        \
        if (!counting || !fileIsBelow(file))                                                       \
            return real(file);                                                                     \
        return fails(Sync) ? -1 : 0;                                                               \
    }

extern "C" {
// What programs that are built with checks of the system's headers call.
int __open_2(const char* path, int flags);
int __open64_2(const char* path, int flags);
int __openat_2(int at, const char* path, int flags);

// clang-format off
ZGLOBAL_OPEN(open, (const char* path, int flags, ...), (path, flags, mode), AT_FDCWD)
ZGLOBAL_OPEN(open64, (const char* path, int flags, ...), (path, flags, mode), AT_FDCWD)
ZGLOBAL_OPEN(openat, (int at, const char* path, int flags, ...), (at, path, flags, mode), at)
ZGLOBAL_OPEN(openat64, (int at, const char* path, int flags, ...), (at, path, flags, mode), at)
ZGLOBAL_CALL(int, __open_2, (const char* path, int flags), (path, flags), Open, AT_FDCWD, path)
ZGLOBAL_CALL(int, __open64_2, (const char* path, int flags), (path, flags), Open, AT_FDCWD, path)
ZGLOBAL_CALL(int, __openat_2, (int at, const char* path, int flags), (at, path, flags), Open, at, path)

ZGLOBAL_CALL(ssize_t, write, (int file, const void* from, size_t size), (file, from, size), Write, file)
ZGLOBAL_CALL(ssize_t, writev, (int file, const iovec* from, int count), (file, from, count), Write, file)

ZGLOBAL_CALL(int, rename, (const char* a, const char* b) noexcept, (a, b), Rename, AT_FDCWD, b)
ZGLOBAL_CALL(int, renameat2, (int from, const char* a, int to, const char* b, unsigned flags) noexcept, (from, a, to, b, flags), Rename, to, b)
ZGLOBAL_CALL(int, link, (const char* a, const char* b) noexcept, (a, b), Rename, AT_FDCWD, b)
ZGLOBAL_CALL(int, linkat, (int from, const char* a, int to, const char* b, int flags) noexcept, (from, a, to, b, flags), Rename, to, b)

ZGLOBAL_CALL(int, unlink, (const char* path) noexcept, (path), Unlink, AT_FDCWD, path)
ZGLOBAL_CALL(int, unlinkat, (int at, const char* path, int flags) noexcept, (at, path, flags), Unlink, at, path)
ZGLOBAL_CALL(int, remove, (const char* path) noexcept, (path), Unlink, AT_FDCWD, path)
ZGLOBAL_CALL(int, rmdir, (const char* path) noexcept, (path), Unlink, AT_FDCWD, path)

ZGLOBAL_CALL(int, mkdir, (const char* path, mode_t mode) noexcept, (path, mode), Mkdir, AT_FDCWD, path)
// clang-format on

ZGLOBAL_SYNC(fsync, )
ZGLOBAL_SYNC(fdatasync, )
ZGLOBAL_SYNC(syncfs, noexcept)

int close(int file)
{
    ZGLOBAL_REAL(close);
    const bool failing = fails(Close, file);
    const int error = errno;
    const int status = real(file);
    if (failing)
        errno = error;
    return failing ? -1 : status;
}
}
