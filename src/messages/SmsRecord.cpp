#include "messages/SmsRecord.h"

#include "core/DatagramSize.h"
#include "core/Error.h"
#include "core/TextUtilities.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace messages {

namespace {

constexpr qsizetype commandWidth = 50;
constexpr qsizetype destinationWidth = 50;
constexpr qsizetype reservedWidth = 100;
constexpr qsizetype headWidth = commandWidth + destinationWidth + reservedWidth;
constexpr auto opening = "{{{"_L1;
constexpr auto closing = "}}}"_L1;
constexpr qsizetype delimiters = opening.size() + closing.size();

// The longest beginning of `text` in whole characters that takes at most `width` bytes.
QStringView fitting(QStringView text, qsizetype width, const core::CodePage &codePage)
{
    qsizetype end = 0;
    while (end < text.size()) {
        const core::CodePoint character = core::codePointAt(text, end);
        width -= codePage.encode(text.sliced(end, character.units)).size();
        if (width < 0) {
            break;
        }
        end += character.units;
    }
    return text.first(end);
}

QString fixedWidth(QStringView text, qsizetype width, const core::CodePage &codePage)
{
    const QStringView kept = fitting(text, width, codePage);
    return kept.toString() + QString(width - codePage.encode(kept).size(), u' ');
}

// How many characters the three fields take. Where the sender has padded the destination by bytes, of a
// double-byte code page or of UTF-8, the delimiter comes earlier.
qsizetype headLength(QStringView record)
{
    const QStringView fields = record.first(std::min(commandWidth + destinationWidth, record.size()));
    const qsizetype shortest = headWidth + fields.size() - fields.toUtf8().size();
    const qsizetype found = record.indexOf(opening, std::max<qsizetype>(shortest, 0));
    return found >= 0 && found < headWidth ? found : headWidth;
}

} // namespace

QString smsRecord(const QString &sendTo, const QString &text, const core::CodePage &codePage)
{
    return fixedWidth(u"SENDSMALLMESSAGE", commandWidth, codePage) +
           fixedWidth(sendTo, destinationWidth, codePage) + QString(reservedWidth, u' ') + opening + text +
           closing;
}

QString sendableText(const QString &text, const core::CodePage &codePage)
{
    constexpr qsizetype room = core::largestDatagram - headWidth - delimiters;
    QString lines = text.left(2 * room); // no character of two units takes less than a byte
    lines.replace("\r\n"_L1, "\n"_L1).replace("\n"_L1, "\r\n"_L1);
    return codePage.encode(lines).size() <= room ? lines : fitting(lines, room, codePage).toString();
}

std::optional<QString> smsText(const QString &record)
{
    const qsizetype head = headLength(record);
    if (record.size() <= head) {
        return std::nullopt;
    }
    const qsizetype length = record.size() - head - delimiters;
    if (length < 0) {
        throw core::Error(5, u"the message record is too short for its delimiters"_s);
    }
    return core::withTonesOnLetters(record.mid(head + opening.size(), length));
}

} // namespace messages
