#pragma once

#include <csignal>
#include <sys/resource.h>

namespace support {

/// While it is there, no file of this process grows beyond so many bytes: as on a full disk, what fits is
/// written and the rest refused.
struct FullDisk
{
    explicit FullDisk(rlim_t bytes)
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit now = {bytes, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &now);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before); }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

    rlimit before = {};
};

} // namespace support
