#include "messages/ReceivedMessages.h"

#include "core/TextFiles.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace messages {

std::optional<QString> ReceivedMessages::ShowSmallMessage(const QString &record)
{
    constexpr qsizetype headLength = 200;
    constexpr qsizetype delimiterLength = 3; // "{{{" before the text and "}}}" behind it
    return m_log.trap("ShowSmallMessage"_L1, std::optional<QString>(), [&]() -> std::optional<QString> {
        if (record.size() <= headLength) {
            return std::nullopt;
        }
        const qsizetype length = record.size() - headLength - 2 * delimiterLength;
        if (length < 0) {
            throw core::Error(5, u"the message record is too short for its delimiters"_s);
        }
        const QString text = record.mid(headLength + delimiterLength, length);
        const QString entry = u'<' + m_log.timeStamp() + u">  \r\n"_s + text + u"\r\n"_s;
        const QString month = m_paths.SmsFolder + u"/SMS"_s + m_clock.now().toString(u"yyyy-MM") + u".txt"_s;
        core::SaveTextFile(m_log, m_paths.SmsFile, entry);
        core::SaveTextFile(m_log, month, entry);
        return entry;
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
