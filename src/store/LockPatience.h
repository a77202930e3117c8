#pragma once

#include <QtGlobal>

struct sqlite3;

namespace store {

/// Makes a connection wait for another program's lock, at most half a second. All connections of a thread
/// share one patience, which grows again while none waits: however many statements a click runs, one behind
/// the other and on however many files, the window stands still for half a second, and not for half a second
/// each.
void waitForLocks(sqlite3 *engine);

/// As long as it lives, its thread does not wait: for what nobody has asked for just now.
class NoWaiting
{
public:
    /// Where it does not apply, its thread waits as it did before.
    explicit NoWaiting(bool applies = true);
    ~NoWaiting();
    Q_DISABLE_COPY_MOVE(NoWaiting)

private:
    bool m_before;
};

} // namespace store
