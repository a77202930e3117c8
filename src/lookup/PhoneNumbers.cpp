#include "lookup/PhoneNumbers.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr auto procedure = "SplitPhoneNumber"_L1;

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

template <typename View>
void add(PiecesOf<View> &pieces, View piece)
{
    if (piece.isEmpty()) {
        return;
    }
    if (pieces.size() == maxPhoneNumbers) {
        throw core::Error(0, u"more than 101 numbers in one text"_s);
    }
    pieces.append(piece);
}

template <typename View, typename Separates>
PiecesOf<View> cut(View text, Separates separates)
{
    if (text.size() > std::numeric_limits<qint16>::max()) {
        throw core::Error(0, u"a numbers text of more than 32767 characters"_s);
    }
    PiecesOf<View> pieces;
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

template <typename View>
PiecesOf<View> split(View text, const core::CodePage &codePage)
{
    return cut(text, [&](QChar character) { return separatesByItself(character, codePage); });
}

PhoneNumberPieces splitAt(const QString &separator, QStringView text)
{
    if (separator.size() != 1) {
        return {}; // equals no single character, so it never closes a piece
    }
    return cut(text, [only = separator.front()](QChar character) { return character == only; });
}

} // namespace

PhoneNumberPieces phoneNumberPieces(core::RunLog &log, const core::CodePage &codePage, QStringView text,
                                    const std::optional<QString> &separator)
{
    return log.trap(procedure, PhoneNumberPieces(),
                    [&] { return separator ? splitAt(*separator, text) : split(text, codePage); });
}

PiecesOf<QLatin1StringView> phoneNumberPieces(core::RunLog &log, const core::CodePage &codePage,
                                              QLatin1StringView ascii)
{
    return log.trap(procedure, PiecesOf<QLatin1StringView>(), [&] { return split(ascii, codePage); });
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
