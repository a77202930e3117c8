#pragma once

#include <QDateTime>

namespace core {

/// The door to the time of day.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    /// Seconds since the epoch; cheaper than now(), which looks the time zone up each time.
    virtual qint64 second() const { return now().toSecsSinceEpoch(); }
};

} // namespace core
