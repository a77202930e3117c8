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
// call, "fail N" makes that one call fail, "full N" all that need room from there on, and "count FILE" only
// counts them.

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

struct Counter
{
    ~Counter()
    {
        const char *fault = std::getenv("FAULT");
        if (fault != nullptr && std::strncmp(fault, "count ", 6) == 0) {
            std::FILE *file = std::fopen(fault + 6, "w");
            std::fprintf(file, "%ld", calls.load());
            std::fclose(file);
        }
    }
};
const Counter counter;

} // namespace

extern "C" {

int rename(const char *from, const char *to)
{
    return fails(false) ? -1 : real<int (*)(const char *, const char *)>("rename")(from, to);
}
int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags)
{
    using Function = int (*)(int, const char *, int, const char *, unsigned);
    return fails(false) ? -1 : real<Function>("renameat2")(fromFolder, from, toFolder, to, flags);
}
int unlink(const char *path)
{
    return fails(false) ? -1 : real<int (*)(const char *)>("unlink")(path);
}
int rmdir(const char *path)
{
    return fails(false) ? -1 : real<int (*)(const char *)>("rmdir")(path);
}
int mkdir(const char *path, mode_t mode)
{
    return fails(true) ? -1 : real<int (*)(const char *, mode_t)>("mkdir")(path, mode);
}
int fdatasync(int file)
{
    return fails(true) ? -1 : real<int (*)(int)>("fdatasync")(file);
}
int fsync(int file)
{
    return fails(true) ? -1 : real<int (*)(int)>("fsync")(file);
}
ssize_t pwrite64(int file, const void *bytes, size_t size, off64_t at)
{
    return fails(true)
               ? -1
               : real<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64")(file, bytes, size, at);
}

} // extern "C"
