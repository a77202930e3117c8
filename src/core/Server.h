#pragma once

#include <QString>

namespace core {

/// The caller-ID unit or server, as far as windows speak to it.
class Server
{
public:
    virtual ~Server() = default;
    /// Sends a command text to the last sender of a datagram. False, with an entry in the run log, where it
    /// did not leave this computer; whether it arrives is not known.
    virtual bool SendServer(const QString &text) = 0;
};

} // namespace core
