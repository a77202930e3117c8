#pragma once

#include "core/Clock.h"

namespace core {

/// The system's local time.
class QtClock : public Clock
{
public:
    QDateTime now() const override;
    qint64 second() const override;
};

} // namespace core
