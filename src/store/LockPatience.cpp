#include "store/LockPatience.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace store {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds longestWait{500};

struct Patience
{
    Clock::duration left{longestWait};
    Clock::time_point since = Clock::now();
    bool none = false;

    // Slower than time passes: the work between two waits of one turn must not allow the second.
    void recover()
    {
        constexpr int slower = 4;
        const Clock::time_point now = Clock::now();
        left = std::min<Clock::duration>(longestWait, left + (now - since) / slower);
        since = now;
    }
    void use(milliseconds pause)
    {
        const Clock::time_point begin = Clock::now();
        sqlite3_sleep(static_cast<int>(pause.count()));
        since = Clock::now();
        left -= since - begin;
    }
};

/// As errno does, it belongs to the thread, since that is what stands still.
thread_local Patience patience;

/// Asked by the engine each time that it finds the file locked, the first time with 0; 0 says to give up.
int waitOnce(void *, int times)
{
    constexpr int longestPause = 25;
    if (times == 0) {
        patience.recover();
    }
    const auto left = std::chrono::duration_cast<milliseconds>(patience.left);
    if (patience.none || left <= milliseconds(0)) {
        return 0;
    }
    patience.use(std::min(left, milliseconds(std::min(1 + times * 2, longestPause))));
    return 1;
}

} // namespace

void waitForLocks(sqlite3 *engine)
{
    sqlite3_busy_handler(engine, waitOnce, nullptr);
}

NoWaiting::NoWaiting(bool applies) : m_before(std::exchange(patience.none, patience.none || applies)) {}

NoWaiting::~NoWaiting()
{
    patience.none = m_before;
}

} // namespace store
