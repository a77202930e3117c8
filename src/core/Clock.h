#pragma once

#include <QDateTime>

namespace core {

/// The door to the time of day.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

} // namespace core
