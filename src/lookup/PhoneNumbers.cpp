#include "lookup/PhoneNumbers.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

// Full-width dashes and brackets stay inside a number, as their ASCII forms do; all other wide characters are
// words or punctuation around it.
bool separatesByItself(QChar character, const core::CodePage &codePage)
{
    switch (character.unicode()) {
    case u',':
    case u':':
    case u'.':
    case u' ':
    case u'|':
    case u'\r':
    case u'\n':
        return true;
    case 0xFF0D:
    case 0xFF08:
    case 0xFF09:
        return false;
    default:
        return !codePage.isSingleByte(character);
    }
}

void add(PhoneNumberPieces &pieces, QStringView piece)
{
    if (piece.isEmpty()) {
        return;
    }
    if (pieces.size() == maxPhoneNumbers) {
        throw core::Error(0, u"more than 101 numbers in one text"_s);
    }
    pieces.append(piece);
}

template <typename Separates>
PhoneNumberPieces cut(QStringView text, Separates separates)
{
    PhoneNumberPieces pieces;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (separates(text.at(i))) {
            add(pieces, text.sliced(start, i - start));
            start = i + 1;
        }
    }
    add(pieces, text.sliced(start));
    return pieces;
}

PhoneNumberPieces split(QStringView text, const core::CodePage &codePage,
                        const std::optional<QString> &separator)
{
    if (text.size() > std::numeric_limits<qint16>::max()) {
        throw core::Error(0, u"a numbers text of more than 32767 characters"_s);
    }
    if (!separator) {
        return cut(text, [&](QChar character) { return separatesByItself(character, codePage); });
    }
    if (separator->size() != 1) {
        return {}; // equals no single character, so it never closes a piece
    }
    return cut(text, [only = separator->front()](QChar character) { return character == only; });
}

} // namespace

PhoneNumberPieces phoneNumberPieces(core::RunLog &log, const core::CodePage &codePage, QStringView text,
                                    const std::optional<QString> &separator)
{
    return log.trap("SplitPhoneNumber"_L1, PhoneNumberPieces(),
                    [&] { return split(text, codePage, separator); });
}

PhoneNumberList SplitPhoneNumber(core::RunLog &log, const core::CodePage &codePage, QStringView text,
                                 const std::optional<QString> &separator)
{
    PhoneNumberList list;
    for (const QStringView piece : phoneNumberPieces(log, codePage, text, separator)) {
        list.Items.at(static_cast<size_t>(list.Count++)) = piece.toString();
    }
    return list;
}

} // namespace lookup
