#pragma once

#include <QElapsedTimer>

#include <algorithm>

namespace store {

/// How many rows are read at once, so that a slice of any reading lasts about eight milliseconds on any desk:
/// how long a row takes depends on its texts and on the machine.
class Pace
{
public:
    explicit Pace(qint64 firstRows = 1000) : m_rows(firstRows) {}

    /// The rows of the slice that begins now.
    qint64 begin()
    {
        m_timer.start();
        return m_rows;
    }
    /// The slice has ended; the next one fits better.
    void end()
    {
        constexpr qint64 sliceNs = 8'000'000;
        constexpr qint64 fewest = 20;
        constexpr qint64 most = 20'000;
        const qint64 fitting = m_rows * sliceNs / std::max<qint64>(m_timer.nsecsElapsed(), 1);
        m_rows = std::clamp(std::min(fitting, m_rows * 2), fewest, most);
    }

private:
    QElapsedTimer m_timer;
    qint64 m_rows;
};

} // namespace store
