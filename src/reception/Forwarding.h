#pragma once

#include "core/CodePage.h"
#include "core/CustomerInfo.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "reception/Senders.h"

#include <QUdpSocket>

namespace reception {

/// The second UDP socket: tells the unit or server that last sent a datagram about a saved customer.
class Forwarding
{
public:
    static constexpr quint16 localPort = 1991;
    static constexpr quint16 remotePort = 1990;

    struct Context
    {
        const core::Settings &settings;
        core::RunLog &log;
        const core::CodePage &codePage;
        Senders &senders;
    };
    /// Everything in the context must outlive the object.
    explicit Forwarding(const Context &context);

    /// Binds the socket; where that fails, with an entry in the run log, records leave from another port.
    void Ini_TDR_UDP();
    /// Sends the record as one datagram, unless it is marked as not to be sent. The run log tells of fields
    /// that the code page cannot hold.
    void SendTDRData(const core::CustomerInfo &record);

private:
    void logLoss(const core::CustomerInfo &record);

    Context m_context;
    QUdpSocket Winsock2;
};

} // namespace reception
