#pragma once

#include "core/CodePage.h"
#include "core/DatagramSize.h"
#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/Server.h"
#include "core/Settings.h"
#include "core/TextLookup.h"
#include "reception/Datagram.h"
#include "reception/Senders.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUdpSocket>

#include <deque>
#include <functional>

namespace reception {

/// The UDP socket on which caller-ID units and servers speak to the program, and through which it answers the
/// last of them. Hands datagrams on in arrival order, one at a time; while a message box is open they wait.
class Endpoint : public QObject, public core::Server
{
    Q_OBJECT

public:
    using Handler = std::function<void(const Datagram &)>;

    static constexpr quint16 standardPort = 1972;

    struct Context
    {
        core::Settings &settings;
        core::RunLog &log;
        core::Prompts &prompts;
        const core::TextLookup &texts;
        const core::CodePage &codePage;
        Senders &senders;
    };

    /// `port` is bound whatever the settings say; everything in the context must outlive the endpoint.
    Endpoint(const Context &context, quint16 port, Handler handler);
    ~Endpoint() override;

    /// Opens the socket, anew when it was open. What the operator is to be told: that the port is in use, or
    /// nothing.
    QString iniUDP();
    bool SendServer(const QString &text) override;
    /// While held, datagrams wait as they do behind a message box.
    void hold(bool held);
    /// Closes for good; waiting datagrams are dropped.
    void close();

    bool isBound() const { return Winsock1.state() == QAbstractSocket::BoundState; }

Q_SIGNALS:
    /// A call waits behind an open box, or no longer does.
    void callWaits(bool waits);

private:
    void chooseRemote();
    int bind(); // the receive buffer's bytes
    void receive();
    void receiveAll();
    bool receiveOne();
    void tellWaiting(bool waits);
    bool hasRoom() const;
    bool mayHandle() const { return !m_waiting.empty() && !m_held && !m_context.prompts.isOpen(); }
    void handleWaiting();
    void handleLater();

    Context m_context;
    quint16 m_port;
    Handler m_handler;
    QUdpSocket Winsock1;
    QHostAddress m_remoteHost;
    quint16 m_remotePort = 0;
    QByteArray m_buffer = QByteArray(core::largestDatagram, Qt::Uninitialized);
    std::deque<Datagram> m_waiting;
    qsizetype m_waitingBytes = 0;
    QTimer m_gathering;
    QElapsedTimer m_sinceTurn;
    bool m_gathers = false; ///< the receive buffer is large enough for it
    bool m_held = false;
    bool m_callWaits = false; ///< as was told
    bool m_handling = false;
    bool m_scheduled = false;
};

} // namespace reception
