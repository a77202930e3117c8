#include "reception/Endpoint.h"

#include "core/platform.h"
#include "reception/Records.h"
#include "reception/SocketError.h"

#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace reception {

namespace {

constexpr int receiveBufferBytes = 4 << 20;     // holds what arrives while a repaint keeps the thread
constexpr qsizetype maxWaitingBytes = 64 << 20; // beyond it datagrams wait in the socket
constexpr int maxReceivedAtOnce = 1024;         // a few milliseconds
constexpr qint64 turnBudgetMs = 8;              // then the event loop gets its turn to paint
constexpr int gatheringMs = 8;                  // nobody sees them
constexpr int handledAtOnce = 128;              // a large receive buffer holds what comes meanwhile
constexpr int handledAtOnceIfSmall = 16;        // well under a millisecond

// A settings file may hold anything.
quint16 portOf(qint32 setting)
{
    return setting > 0 && setting <= 0xFFFF ? quint16(setting) : Endpoint::standardPort;
}

// Before a unit was heard.
bool isNobody(const QHostAddress &host)
{
    return host.isNull() || host == QHostAddress::AnyIPv4;
}

qsizetype costOf(const Datagram &datagram)
{
    return datagram.bytes.size() + qsizetype(sizeof(Datagram));
}

// What tells the kinds apart is ASCII, in every code page.
bool isCall(const Datagram &datagram)
{
    constexpr qsizetype tellingBytes = 50;
    return kindOf(QString::fromLatin1(datagram.bytes.first(std::min(tellingBytes, datagram.bytes.size())))) ==
           DatagramKind::CallerId;
}

QString localAddress()
{
    const QList<QHostAddress> addresses = QNetworkInterface::allAddresses();
    for (const QHostAddress &address : addresses) {
        if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback()) {
            return address.toString();
        }
    }
    return QHostAddress(QHostAddress::LocalHost).toString();
}

} // namespace

Endpoint::Endpoint(const Context &context, quint16 port, Handler handler)
    : m_context(context), m_port(port), m_handler(std::move(handler))
{
    Winsock1.setObjectName(u"Winsock1"_s);
    Winsock1.setProxy(QNetworkProxy::NoProxy); // asking the system for one would delay the start
    connect(&Winsock1, &QUdpSocket::readyRead, this, &Endpoint::receive);
    m_gathering.setSingleShot(true);
    m_gathering.setTimerType(Qt::PreciseTimer);
    connect(&m_gathering, &QTimer::timeout, this, &Endpoint::handleWaiting);
    m_context.prompts.setClosedHandler([this] { handleLater(); });
}

Endpoint::~Endpoint()
{
    m_context.prompts.setClosedHandler({});
}

// Closing a socket drops what still waits in it.
QString Endpoint::iniUDP()
{
    receiveAll();
    handleLater();
    const bool opened = m_context.log.trap("iniUDP"_L1, [&] {
        Winsock1.close();
        chooseRemote();
        m_context.log.WriteRunLog(u"IP State "_s + QString::number(Winsock1.state()));
        const int bufferBytes = bind();
        m_gathers = bufferBytes >= receiveBufferBytes; // a small one could overflow meanwhile
        m_context.log.WriteRunLog(u"remote port "_s + QString::number(m_remotePort));
        m_context.log.WriteRunLog(u"RemoteIp "_s + m_remoteHost.toString());
        m_context.log.WriteRunLog(u"local IP "_s + localAddress());
        m_context.log.WriteRunLog(u"loca port "_s + QString::number(Winsock1.localPort()));
        m_context.log.WriteRunLog(u"receive buffer "_s + QString::number(bufferBytes));
    });
    const bool inUse = !opened && Winsock1.error() == QAbstractSocket::AddressInUseError;
    return inUse ? m_context.texts.Lms(u"TheIpAddressInUse"_s) : QString();
}

void Endpoint::chooseRemote()
{
    core::SettingsRecord &record = m_context.settings.record;
    if (record.LocalPort == 0) {
        record.LocalPort = standardPort;
    }
    if (!isNobody(m_remoteHost)) {
        return;
    }
    m_remoteHost = QHostAddress(record.LastSenderIp.text());
    m_remotePort = portOf(record.LastSenderPort);
    if (isNobody(m_remoteHost)) {
        m_remoteHost = QHostAddress::AnyIPv4;
        m_remotePort = portOf(record.LocalPort) - 1;
    }
}

int Endpoint::bind()
{
    if (Winsock1.bind(QHostAddress::AnyIPv4, m_port, QAbstractSocket::DontShareAddress)) {
        return core::platform::growReceiveBuffer(Winsock1.socketDescriptor(), receiveBufferBytes);
    }
    failAs(Winsock1);
}

bool Endpoint::SendServer(const QString &text)
{
    return m_context.log.trap("SendServer"_L1, [&] {
        m_remoteHost = m_context.senders.receiver(m_context.settings.record.LastSenderIp.text());
        const QByteArray bytes = m_context.codePage.encode(text);
        if (Winsock1.writeDatagram(bytes, m_remoteHost, m_remotePort) != bytes.size()) {
            failAs(Winsock1);
        }
    });
}

void Endpoint::hold(bool held)
{
    m_held = held;
    handleLater();
}

void Endpoint::close()
{
    Winsock1.close();
    m_gathering.stop();
    m_waiting.clear();
    m_waitingBytes = 0;
    tellWaiting(false);
    m_context.senders.logCounted();
}

// The socket's own buffer is the only place where a datagram can be lost, so it is emptied again after every
// few that are handled. A flood must not keep the thread at it, however. Nor is it emptied more often than
// needed: to learn that it is empty costs as much as a datagram.
void Endpoint::receiveAll()
{
    int received = 0;
    while (received < maxReceivedAtOnce && receiveOne()) {
        ++received;
    }
}

bool Endpoint::receiveOne()
{
    if (!hasRoom()) {
        return false;
    }
    Datagram datagram;
    const qint64 size =
        Winsock1.readDatagram(m_buffer.data(), m_buffer.size(), &datagram.sender, &datagram.senderPort);
    if (size < 0) {
        return false;
    }
    if (!m_context.senders.admit(datagram.sender)) {
        return true;
    }
    datagram.bytes = m_buffer.first(size);
    if (m_context.prompts.isOpen() && isCall(datagram)) {
        tellWaiting(true);
    }
    m_waitingBytes += costOf(datagram);
    m_waiting.push_back(std::move(datagram));
    return true;
}

void Endpoint::tellWaiting(bool waits)
{
    if (std::exchange(m_callWaits, waits) != waits) {
        Q_EMIT callWaits(waits);
    }
}

bool Endpoint::hasRoom() const
{
    return isBound() && m_waitingBytes < maxWaitingBytes;
}

// Waking up for a datagram costs more than handling it. So only the first one after a pause is handled at
// once; while they keep coming, they gather in the socket for a moment. Handling starts outside the socket's
// signal, or the socket would stay mute while a handler has a message box open. It also stays mute until
// somebody reads from it, so one reading is tried even where a handler has emptied it just before.
void Endpoint::receive()
{
    constexpr qint64 pauseMs = 20;
    if (!m_gathers || !m_sinceTurn.isValid() || m_sinceTurn.elapsed() > pauseMs) {
        receiveOne();
        handleLater();
    } else if (!m_gathering.isActive()) {
        m_gathering.start(gatheringMs);
    }
}

void Endpoint::handleWaiting()
{
    m_scheduled = false;
    receiveAll();
    if (m_handling) {
        return;
    }
    const QScopedValueRollback handling(m_handling, true);
    tellWaiting(m_callWaits && m_context.prompts.isOpen());
    const int atOnce = m_gathers ? handledAtOnce : handledAtOnceIfSmall;
    QElapsedTimer turn;
    turn.start();
    for (int handled = 1; mayHandle() && turn.elapsed() < turnBudgetMs; ++handled) {
        const Datagram datagram = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_waitingBytes -= costOf(datagram);
        m_remoteHost = datagram.sender;
        m_remotePort = datagram.senderPort;
        m_handler(datagram);
        if (handled % atOnce == 0) {
            receiveAll();
        }
    }
    m_sinceTurn.start();
    if (mayHandle()) {
        handleLater();
    }
}

void Endpoint::handleLater()
{
    if (std::exchange(m_scheduled, true)) {
        return;
    }
    QMetaObject::invokeMethod(this, &Endpoint::handleWaiting, Qt::QueuedConnection);
}

} // namespace reception
