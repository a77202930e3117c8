#include "reception/Forwarding.h"

#include <QNetworkProxy>

using namespace Qt::StringLiterals;

namespace reception {

Forwarding::Forwarding(const Context &context) : m_context(context)
{
    Winsock2.setObjectName(u"Winsock2"_s);
    Winsock2.setProxy(QNetworkProxy::NoProxy);
}

void Forwarding::Ini_TDR_UDP()
{
    m_context.log.trap("Ini_TDR_UDP"_L1, [&] {
        Winsock2.close();
        if (!Winsock2.bind(QHostAddress::AnyIPv4, localPort, QAbstractSocket::DontShareAddress)) {
            throw core::Error(int(Winsock2.error()), Winsock2.errorString());
        }
    });
}

void Forwarding::SendTDRData(const core::CustomerInfo &record)
{
    if (record.doNotSend != 0) {
        return;
    }
    m_context.log.trap("SendTDRData"_L1, [&] {
        const QByteArray image = record.toBytes(m_context.codePage);
        if (Winsock2.writeDatagram(image, remoteHost(), remotePort) != image.size()) {
            throw core::Error(int(Winsock2.error()), Winsock2.errorString());
        }
    });
}

// A settings file may hold anything; the socket would take what is no address for this machine.
QHostAddress Forwarding::remoteHost() const
{
    const QString lastSender = m_context.settings.record.LastSenderIp.text();
    const QHostAddress host(lastSender.isEmpty() ? u"0.0.0.0"_s : lastSender);
    if (host.isNull()) {
        throw core::Error(0, u"no address: "_s + lastSender);
    }
    return host;
}

} // namespace reception
