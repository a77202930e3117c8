#pragma once

#include <QByteArray>
#include <QHostAddress>

namespace reception {

/// One datagram as it came from the socket.
struct Datagram
{
    QByteArray bytes;
    QHostAddress sender;
    quint16 senderPort = 0;
};

} // namespace reception
