#pragma once

#include <QString>
#include <QVariant>

namespace core {

/// True when `value` equals one of the candidates; false without candidates.
template <typename Value, typename... Candidates>
bool MyIn(const Value &value, const Candidates &...candidates)
{
    return (false || ... || (value == candidates));
}

/// Only 0 to 9 count as digits: what other scripts write for them is never what a unit delivers.
constexpr bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// The digits of `text`, in order.
QString DigitsOnly(QStringView text);

/// A fixed-width settings text without its NULs and surrounding blanks: an unset field reads as "".
QString TrimNulls(QStringView text);

/// A database value with Null replaced by empty text.
QVariant NullToEmpty(const QVariant &value);

/// A database value with Null replaced by 0.
QVariant NullToZero(const QVariant &value);

/// The number at the start of `text`, 0 where there is none ("12a" gives 12); blanks are skipped, values
/// beyond the 32-bit range give 0.
qint32 leadingNumber(QStringView text);

/// One character of a text: its code, and the UTF-16 units that it takes.
struct CodePoint
{
    char32_t code = 0;
    qsizetype units = 1;
};

/// The character that begins at a position; half a surrogate pair stands for itself.
inline CodePoint codePointAt(QStringView text, qsizetype position)
{
    const QChar first = text[position];
    const bool pair =
        first.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate();
    return pair ? CodePoint{QChar::surrogateToUcs4(first, text[position + 1]), 2}
                : CodePoint{first.unicode(), 1};
}

/// A stranger's text made fit for a window: control characters, line breaks, bidirectional overrides and
/// broken characters become blanks; at most `maxLength` UTF-16 units, and at most 8 combining marks in a row.
/// Plain text, no markup.
QString shownText(QStringView text, qsizetype maxLength = 256);

/// The text with marks around it that give it the direction of its own first letter, wherever it is shown:
/// in a mirrored window a number or a time then keeps the order of its parts.
QString isolated(const QString &text);

/// What a call says of its caller, where that may be a name: empty where it only repeats the number.
QString callerName(const QString &description, const QString &number);

/// The title of the window that shows something with a name: the name goes first.
QString titleOf(const QString &name, const QString &window);

/// A question about something with a name: the name stands above it.
QString questionAbout(const QString &name, const QString &question);

/// A cell of tab-separated text, as a spreadsheet takes it from the clipboard: in one line, and where it
/// would be calculated there, with the apostrophe that makes it a text. A plain number with its sign stays
/// one.
QString spreadsheetCell(QString text);

} // namespace core
