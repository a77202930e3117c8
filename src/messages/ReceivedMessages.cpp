#include "messages/ReceivedMessages.h"

#include "core/TextFiles.h"
#include "messages/SmsRecord.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace messages {

std::optional<ReceivedMessages::Message> ReceivedMessages::ShowSmallMessage(const QString &record)
{
    return m_log.trap("ShowSmallMessage"_L1, std::optional<Message>(), [&]() -> std::optional<Message> {
        const std::optional<QString> text = smsText(record);
        if (!text) {
            return std::nullopt;
        }
        const QString entry = u'<' + m_log.timeStamp() + u">  \r\n"_s + *text + u"\r\n"_s;
        const QString month = m_paths.SmsFolder + u"/SMS"_s + m_clock.now().toString(u"yyyy-MM") + u".txt"_s;
        core::SaveTextFile(m_log, m_paths.SmsFile, entry);
        core::SaveTextFile(m_log, month, entry);
        return Message{*text, entry};
    });
}

bool ReceivedMessages::erase()
{
    return m_log.trap("ReceivedMessages::erase"_L1, [&] {
        if (QFile::exists(m_paths.SmsFile) && !QFile::remove(m_paths.SmsFile)) {
            throw core::Error(0, u"the file cannot be deleted: "_s + m_paths.SmsFile);
        }
    });
}

} // namespace messages
