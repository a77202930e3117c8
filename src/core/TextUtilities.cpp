#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace core {

QString DigitsOnly(QStringView text)
{
    QString digits;
    for (const QChar character : text) {
        if (isDigit(character)) {
            digits += character;
        }
    }
    return digits;
}

QString TrimNulls(QStringView text)
{
    QString kept = text.toString();
    kept.remove(QChar(u'\0'));
    return kept.trimmed();
}

QVariant NullToEmpty(const QVariant &value)
{
    return value.isNull() ? QVariant(QString()) : value;
}

QVariant NullToZero(const QVariant &value)
{
    return value.isNull() ? QVariant(0) : value;
}

qint32 leadingNumber(QStringView text)
{
    const QStringView rest = text.trimmed();
    qsizetype length = rest.startsWith(u'-') || rest.startsWith(u'+') ? 1 : 0;
    while (length < rest.size() && isDigit(rest.at(length))) {
        ++length;
    }
    return rest.first(length).toInt();
}

namespace {

bool isBidiControl(char16_t code)
{
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) || code == 0x200E ||
           code == 0x200F || code == 0x061C;
}

} // namespace

QString shownText(QStringView text, qsizetype maxLength)
{
    constexpr int maxMarks = 8;
    QString shown;
    shown.reserve(std::min(text.size(), maxLength));
    int marks = 0;
    for (const QChar character : text) {
        marks = character.isMark() ? marks + 1 : 0;
        if (marks > maxMarks) {
            continue;
        }
        if (shown.size() == maxLength) {
            break;
        }
        const bool blank = character.category() == QChar::Other_Control ||
                           isBidiControl(character.unicode()) || character == QChar::LineSeparator ||
                           character == QChar::ParagraphSeparator;
        shown += blank ? QChar(u' ') : character;
    }
    if (!shown.isEmpty() && shown.back().isHighSurrogate()) {
        shown.chop(1);
    }
    return shown;
}

} // namespace core
