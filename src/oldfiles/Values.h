#pragma once

#include "oldfiles/Bytes.h"

#include <QString>

/// The kinds of values that are kept as text, since nothing else would hold them exactly.
namespace oldfiles {

/// "YYYY-MM-DD HH:MM:SS"; the bare number of days where that is no date.
QString dateText(double days);
/// Eight bytes: ten-thousandths.
QString currencyText(qint64 tenThousandths);
/// Seventeen bytes: a sign and 128 bits.
QString decimalText(const Bytes &value, int scale);
/// Sixteen bytes, as {AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE}.
QString guidText(const Bytes &value);

} // namespace oldfiles
