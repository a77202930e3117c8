#include "messages/MessageSender.h"

#include "messages/SmsRecord.h"

using namespace Qt::StringLiterals;

namespace messages {

MessageSender::Outcome MessageSender::SendSMS(const QString &sendTo, const QString &text)
{
    return m_log.trap("SendSMS"_L1, Outcome(), [&] {
        const QString sendable = sendableText(text, m_codePage);
        const bool sent = m_server.SendServer(smsRecord(sendTo, sendable, m_codePage));
        const qsizetype lineEnds = sendable.count(u'\r');
        return Outcome{.sent = sent,
                       .cut = sendable.size() - lineEnds < text.size() - text.count(u'\r'),
                       .altered = !m_codePage.holds(sendable),
                       .misdirected = !m_codePage.holds(sendTo)};
    });
}

} // namespace messages
