#pragma once

#include "Table.h"

#include <QObject>
#include <QThread>

#include <atomic>
#include <functional>
#include <optional>
#include <thread>

namespace bench {

/// Milliseconds for which this thread, or the first one of a process, has waited for a processor that others
/// had.
double queuedMs(qint64 process = 0);
/// Milliseconds that the work takes but for those.
double msOf(const std::function<void()> &work);
/// Milliseconds of computing time that it takes, on all threads: a busy machine does not lengthen them.
double cpuMsOf(const std::function<void()> &work);
/// Seconds of computing time that this process has used so far.
double cpuSeconds();
/// Megabytes of memory that a process holds; 0 for this one.
double heldMb(qint64 process = 0);
/// The same of this one without what it could give back at once; that takes as long as it is large.
double residentMb();

/// Runs the event loop until the condition holds; throws std::runtime_error after five minutes.
void waitUntil(const std::function<bool()> &condition);

/// Measures how long an event loop lets an event wait. The dispatcher's own signals do not tell: they do not
/// say whether timers and sockets ran before or behind them. So another thread posts an event, waits for its
/// delivery, and posts the next one a millisecond later. What the loop's thread waited for a processor that
/// others had is left out.
class EventLoopWatch
{
public:
    /// Watches the loop of the object's thread.
    explicit EventLoopWatch(QObject &watched);
    ~EventLoopWatch();
    Q_DISABLE_COPY_MOVE(EventLoopWatch)

    double longestMs() const { return m_longestMs; }

private:
    void watch();
    void delivered(double waitedMs);

    QObject &m_watched;
    std::optional<double> m_queuedMs; ///< of the watched thread, at the delivery before
    std::atomic<double> m_longestMs = 0;
    std::atomic<bool> m_delivered = false;
    std::atomic<bool> m_ended = false;
    std::thread m_thread;
};

/// The longest wait in the event loop of the thread that made it and, as its floor, in a loop beside it that
/// has nothing else to do.
class Waits
{
public:
    Waits();
    ~Waits();
    Q_DISABLE_COPY_MOVE(Waits)

    Sample longestMs() const { return {m_here.longestMs(), m_there.longestMs()}; }

private:
    QObject m_own;
    QObject m_idle;
    QThread m_empty;
    EventLoopWatch m_here{m_own};
    EventLoopWatch m_there{m_idle};
};

} // namespace bench
