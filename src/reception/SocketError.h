#pragma once

#include <QAbstractSocket>

namespace reception {

/// Throws what a socket reports as a core::Error. A port in use has the number that the program's users know
/// from their run logs.
[[noreturn]] void failAs(const QAbstractSocket &socket);

} // namespace reception
