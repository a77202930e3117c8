#include "UnitSocket.h"

#include "core/DatagramSize.h"
#include "core/Error.h"

#include <QEventLoop>
#include <QHostInfo>
#include <QNetworkDatagram>
#include <QTimer>
#include <QVariant>

#include <thread>

using namespace Qt::StringLiterals;

namespace sim {

namespace {

constexpr int sendBufferSize = 4 * 1024 * 1024;

// The program's endpoint speaks IPv4, so that address of a name comes first.
QHostAddress addressOf(const QString &host)
{
    const QHostInfo info = QHostInfo::fromName(host);
    const QList<QHostAddress> addresses = info.addresses();
    if (addresses.isEmpty()) {
        throw core::Error(info.error(), u"%1: %2"_s.arg(host, info.errorString()));
    }
    for (const QHostAddress &address : addresses) {
        if (address.protocol() == QAbstractSocket::IPv4Protocol) {
            return address;
        }
    }
    return addresses.constFirst();
}

} // namespace

UnitSocket::UnitSocket(const Place &place, Hearer hearer)
    : m_host(addressOf(place.host)), m_port(place.port), m_listens(place.listenPort.has_value()),
      m_hearer(std::move(hearer))
{
    bind(place);
    if (m_listens) {
        QObject::connect(&m_socket, &QUdpSocket::readyRead, &m_socket, [this] { hear(); });
    } else {
        connectToProgram();
    }
    m_socket.setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, QVariant(sendBufferSize));
}

void UnitSocket::bind(const Place &place)
{
    const bool anyAddress = place.from == QHostAddress(QHostAddress::AnyIPv4);
    const bool otherProtocol = m_host.protocol() != QAbstractSocket::IPv4Protocol;
    const QHostAddress own = anyAddress && otherProtocol ? QHostAddress(QHostAddress::Any) : place.from;
    if (!m_socket.bind(own, place.listenPort.value_or(0))) {
        throw core::Error(m_socket.error(), u"cannot bind %1 port %2: %3"_s.arg(own.toString())
                                                .arg(place.listenPort.value_or(0))
                                                .arg(m_socket.errorString()));
    }
}

// A connected socket learns that nobody listens. One that listens stays open to every sender instead, and to
// a program that is not running yet.
void UnitSocket::connectToProgram()
{
    m_socket.connectToHost(m_host, m_port);
    if (!m_socket.waitForConnected()) {
        throw core::Error(m_socket.error(), u"%1: %2"_s.arg(m_host.toString(), m_socket.errorString()));
    }
}

qint64 UnitSocket::sendOnce(const QByteArray &datagram)
{
    return m_listens ? m_socket.writeDatagram(datagram, m_host, m_port)
                     : m_socket.write(datagram.constData(), datagram.size());
}

// The system reports a refusal in place of the next sending, which then has to be made again.
void UnitSocket::send(const QByteArray &datagram)
{
    constexpr int mostRefusalsWaiting = 100;
    if (datagram.size() > core::largestDatagram) {
        throw core::Error(
            0,
            u"a datagram holds at most %1 bytes, not %2"_s.arg(core::largestDatagram).arg(datagram.size()));
    }
    for (int failures = 0; failures < mostRefusalsWaiting;) {
        const qint64 sent = sendOnce(datagram);
        if (sent == datagram.size()) {
            m_refused += failures;
            return;
        }
        const bool bufferFull = sent >= 0 || m_socket.error() == QAbstractSocket::TemporaryError;
        failures += bufferFull ? 0 : 1;
        std::this_thread::yield();
    }
    throw core::Error(m_socket.error(),
                      u"cannot send to %1: %2"_s.arg(m_host.toString(), m_socket.errorString()));
}

void UnitSocket::wait(std::chrono::nanoseconds time)
{
    using namespace std::chrono_literals;
    if (!m_listens) {
        std::this_thread::sleep_for(time);
        return;
    }
    hear();
    QEventLoop loop;
    if (time >= 0ns) {
        QTimer::singleShot(std::chrono::duration_cast<std::chrono::milliseconds>(time), Qt::PreciseTimer,
                           &loop, &QEventLoop::quit);
    }
    loop.exec();
}

void UnitSocket::hear()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram answer = m_socket.receiveDatagram();
        if (answer.isValid()) {
            m_hearer(answer.senderAddress().toString() + u':' + QString::number(answer.senderPort()),
                     answer.data());
        }
    }
}

qint64 UnitSocket::refused()
{
    char unread = 0;
    if (!m_listens && m_socket.readDatagram(&unread, 1) < 0 &&
        m_socket.error() == QAbstractSocket::ConnectionRefusedError) {
        ++m_refused;
    }
    return m_refused;
}

} // namespace sim
