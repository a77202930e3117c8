#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// What the program does to files goes through here. FAULT says what happens: "kill N" ends it before its Nth
// call, "fail N" makes that one call fail, "full N" all that need room from there on, and "count FILE" tells
// in the file how many there were.

namespace {

std::atomic<long> calls = 0;

/// Whether this call fails, with errno set.
bool fails(bool needsRoom)
{
    const char *fault = std::getenv("FAULT");
    if (fault == nullptr) {
        return false;
    }
    const long call = ++calls;
    if (std::strncmp(fault, "count ", 6) == 0) {
        std::FILE *file = std::fopen(fault + 6, "w");
        std::fprintf(file, "%ld", call);
        std::fclose(file);
        return false;
    }
    const long chosen = std::atol(fault + 5);
    if (std::strncmp(fault, "kill", 4) == 0 && call == chosen) {
        ::kill(::getpid(), SIGKILL);
    }
    const bool full = std::strncmp(fault, "full", 4) == 0;
    const bool now = full ? needsRoom && call >= chosen : call == chosen;
    errno = full ? ENOSPC : EIO;
    return now;
}

template <typename Function>
Function real(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

/// A call of the system's that may fail; `arguments` are the names of its parameters.
#define FAULTY(Result, name, needsRoom, parameters, arguments)                      \
    Result name parameters                                                          \
    {                                                                               \
        return fails(needsRoom) ? -1 : real<Result(*) parameters>(#name) arguments; \
    }

extern "C" {

FAULTY(int, rename, false, (const char *from, const char *to), (from, to))
FAULTY(int, renameat2, false,
       (int fromFolder, const char *from, int toFolder, const char *to, unsigned flags),
       (fromFolder, from, toFolder, to, flags))
FAULTY(int, unlink, false, (const char *path), (path))
FAULTY(int, rmdir, false, (const char *path), (path))
FAULTY(int, mkdir, true, (const char *path, mode_t mode), (path, mode))
FAULTY(int, fdatasync, true, (int file), (file))
FAULTY(int, fsync, true, (int file), (file))
FAULTY(ssize_t, pwrite64, true, (int file, const void *bytes, size_t size, off64_t at),
       (file, bytes, size, at))

} // extern "C"
