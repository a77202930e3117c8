#include "core/QtClock.h"

namespace core {

QDateTime QtClock::now() const
{
    return QDateTime::currentDateTime();
}

} // namespace core
