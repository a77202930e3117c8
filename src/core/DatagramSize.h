#pragma once

#include <QtGlobal>

namespace core {

/// Bytes that one UDP datagram holds over IPv4 at the most, whoever sends it.
inline constexpr qsizetype largestDatagram = 65507;

} // namespace core
