#pragma once

#include <QByteArray>
#include <QDateTime>

namespace reception {

/// A caller-ID record as a unit sends it, of a call at `time`; for trying the program without a unit.
QByteArray sampleCallRecord(const QDateTime &time);

} // namespace reception
