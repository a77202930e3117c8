#include "core/QtClock.h"

namespace core {

QDateTime QtClock::now() const
{
    return QDateTime::currentDateTime();
}

qint64 QtClock::second() const
{
    return QDateTime::currentSecsSinceEpoch();
}

} // namespace core
