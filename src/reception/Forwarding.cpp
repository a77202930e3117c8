#include "reception/Forwarding.h"

#include "reception/SocketError.h"

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
            failAs(Winsock2);
        }
    });
}

void Forwarding::SendTDRData(const core::CustomerInfo &record)
{
    if (record.doNotSend != 0) {
        return;
    }
    m_context.log.trap("SendTDRData"_L1, [&] {
        const QHostAddress host = m_context.senders.receiver(m_context.settings.record.LastSenderIp.text());
        const QByteArray image = record.toBytes(m_context.codePage);
        if (Winsock2.writeDatagram(image, host, remotePort) != image.size()) {
            failAs(Winsock2);
        }
        logLoss(record);
    });
}

void Forwarding::logLoss(const core::CustomerInfo &record)
{
    QStringList columns;
    for (const core::CustomerInfo::Field &field : record.fields) {
        if (!m_context.codePage.holds(field.text)) {
            columns.append(field.column);
        }
    }
    if (!columns.isEmpty()) {
        m_context.log.WriteRunLog(u"SendTDRData: sent with question marks, as code page "_s +
                                  QString::number(m_context.codePage.number()) + u" lacks characters of "_s +
                                  columns.join(u", "_s));
    }
}

} // namespace reception
