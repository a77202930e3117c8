#pragma once

#include "DatagramSeries.h"

#include <chrono>
#include <functional>

namespace sim {

/// Where the datagrams go, and how the time between them is spent.
struct Stage
{
    std::function<void(const QByteArray &datagram)> send;
    std::function<void(std::chrono::nanoseconds)> wait; ///< may come back a little late
    std::function<void(const QString &line)> say;
};

struct PlayReport
{
    qint64 sent = 0;
    qint64 afterFirstBurst = 0; ///< how many of them were sent later than the start
    double seconds = 0;         ///< from the first datagram to the last
    double worstLateness = 0;   ///< seconds that one was sent behind its time
};

/// Sends the whole series. Each datagram has an absolute time, so a late one does not delay those after it,
/// and the last millisecond before it is spent looking at the clock.
PlayReport play(const DatagramSeries &series, const Stage &stage);

/// The report in one sentence without a full stop.
QString describe(const PlayReport &report);

} // namespace sim
