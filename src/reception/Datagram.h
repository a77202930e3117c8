#pragma once

#include <QByteArray>
#include <QHostAddress>

namespace reception {

/// One datagram as it came from the socket; at most 65,507 bytes.
struct Datagram
{
    QByteArray bytes;
    QHostAddress sender;
    quint16 senderPort = 0;
};

} // namespace reception
