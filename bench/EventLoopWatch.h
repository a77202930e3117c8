#pragma once

#include <QObject>

#include <atomic>
#include <thread>

namespace bench {

/// Measures how long the event loop of the thread that made it lets an event wait. The dispatcher's own
/// signals do not tell: they do not say whether timers and sockets ran before or behind them. So another
/// thread posts an event, waits for its delivery, and posts the next one a millisecond later.
class EventLoopWatch
{
public:
    EventLoopWatch();
    ~EventLoopWatch();
    Q_DISABLE_COPY_MOVE(EventLoopWatch)

    double longestWaitMs() const { return m_longestMs; }

private:
    void watch();

    QObject m_watched;
    double m_longestMs = 0;
    std::atomic<bool> m_delivered = false;
    std::atomic<bool> m_ended = false;
    std::thread m_thread;
};

} // namespace bench
