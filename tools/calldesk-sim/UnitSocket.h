#pragma once

#include "RecordWriter.h"

#include <QUdpSocket>

#include <chrono>
#include <functional>
#include <optional>

namespace sim {

/// The socket of the caller-ID unit that is played: sends to the program, and hears what it sends back.
class UnitSocket
{
public:
    struct Place
    {
        QString host;
        quint16 port = 0;
        QHostAddress from; ///< own address
        std::optional<quint16> listenPort;
    };
    /// An answer's sender as "address:port", and its bytes.
    using Hearer = std::function<void(const QString &sender, const QByteArray &bytes)>;

    /// Throws core::Error when the host is not known or the own address or port not to be had.
    UnitSocket(const Place &place, Hearer hearer);

    /// Waits while the system's send buffer is full. Throws core::Error when the datagram cannot be sent at
    /// all.
    void send(const QByteArray &datagram);

    /// Lets the time pass; what comes meanwhile is heard when the socket listens. Negative: for ever.
    void wait(std::chrono::nanoseconds time);

    /// How many datagrams found nobody at the port, as far as the system has told by now.
    qint64 refused();

    quint16 localPort() const { return m_socket.localPort(); }

private:
    void bind(const Place &place);
    void connectToProgram();
    qint64 sendOnce(const QByteArray &datagram);
    void hear();

    QUdpSocket m_socket;
    QHostAddress m_host;
    quint16 m_port;
    bool m_listens;
    Hearer m_hearer;
    qint64 m_refused = 0;
};

} // namespace sim
