#pragma once

#include "core/Clock.h"

namespace core {

/// The system's local time.
class QtClock : public Clock
{
public:
    QDateTime now() const override;
};

} // namespace core
