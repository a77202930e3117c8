#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace bench {

/// What the datagrams of a sender are told apart by: a running number from 0 in the parameter block "RAWCID",
/// always of eight digits.
inline constexpr char idBlock[] = "{RAWCID:[";
inline constexpr int idDigits = 8;

/// Sends the calls of `count` different datagrams to a port of this machine: calls of known customers, every
/// fourth with a Chinese name. `rate` a second, each at its own time; 0 sends them as fast as it can. The
/// result is how many seconds it took.
double sendCalls(quint16 port, int count, int rate);

/// Ends whoever listens on the port.
void sendShutDown(quint16 port);

} // namespace bench
