#pragma once

#include <QString>

namespace core {

/// The caller-ID unit or server, as far as windows speak to it.
class Server
{
public:
    virtual ~Server() = default;
    /// Sends a command text to the last sender of a datagram.
    virtual void SendServer(const QString &text) = 0;
};

} // namespace core
