#pragma once

#include "core/Clock.h"

#include <cstdlib>

/// Ends the process, which the fuzzer takes for a find.
inline void require(bool truth)
{
    if (!truth) {
        std::abort();
    }
}

class FixedClock : public core::Clock
{
public:
    QDateTime now() const override { return QDateTime(QDate(2026, 11, 21), QTime(9, 30, 15)); }
};
