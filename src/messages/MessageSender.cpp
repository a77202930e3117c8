#include "messages/MessageSender.h"

#include "messages/SmsRecord.h"

using namespace Qt::StringLiterals;

namespace messages {

MessageSender::Outcome MessageSender::SendSMS(const QString &SendTo, const QString &Text)
{
    return m_log.trap("SendSMS"_L1, Outcome(), [&] {
        const QString text = sendableText(Text, m_codePage);
        const bool sent = m_server.SendServer(smsRecord(SendTo, text, m_codePage));
        const qsizetype lineEnds = text.count(u'\r');
        return Outcome{.sent = sent,
                       .cut = text.size() - lineEnds < Text.size() - Text.count(u'\r'),
                       .altered = !m_codePage.holds(text),
                       .misdirected = !m_codePage.holds(SendTo)};
    });
}

} // namespace messages
