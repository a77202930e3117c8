#include "reception/SocketError.h"

#include "core/Error.h"

namespace reception {

void failAs(const QAbstractSocket &socket)
{
    constexpr int addressInUse = 10048;
    const bool inUse = socket.error() == QAbstractSocket::AddressInUseError;
    throw core::Error(inUse ? addressInUse : int(socket.error()), socket.errorString());
}

} // namespace reception
