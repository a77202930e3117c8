#include "store/TextOrder.h"

#include "store/Utf8.h"

#include <QChar>
#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace store {

namespace {

/// Letters that Unicode does not take apart but that people look for beside their plain ones. Each gets a
/// mark of its own, so that it stays another letter.
constexpr std::pair<char32_t, std::u32string_view> lettersWithStrokes[] = {
    {U'\u0131', U"i\u0335"},  {U'\u0142', U"l\u0335"},  {U'\u00F8', U"o\u0338"},
    {U'\u0111', U"d\u0335"},  {U'\u0127', U"h\u0335"},  {U'\u0167', U"t\u0335"},
    {U'\u00E6', U"ae\u0335"}, {U'\u0153', U"oe\u0335"}, {U'\u00DF', U"ss\u0335"},
};

/// What is known of characters since, is not asked for: a newer toolkit would else order an index
/// differently.
bool isSettled(char32_t c)
{
    return c < 0x110000 && QChar::unicodeVersion(c) <= QChar::Unicode_13_0;
}

bool isTakenApart(QChar::Decomposition how)
{
    return how == QChar::Canonical || how == QChar::Wide || how == QChar::Narrow;
}

/// Appends what `c` is ordered as: its letter without case and width, then its accents.
void appendElements(char32_t c, std::u32string &elements)
{
    if (!isSettled(c)) {
        elements.push_back(c);
        return;
    }
    const char32_t folded = QChar::toCaseFolded(c);
    const auto *stroke = std::ranges::find(lettersWithStrokes, folded, [](auto &each) { return each.first; });
    if (stroke != std::end(lettersWithStrokes)) {
        elements += stroke->second;
        return;
    }
    const bool hangul = folded >= 0xAC00 && folded <= 0xD7A3; // its syllables stand in their order already
    if (hangul || !isTakenApart(QChar::decompositionTag(folded))) {
        elements.push_back(folded);
        return;
    }
    for (const char32_t part : QChar::decomposition(folded).toUcs4()) {
        appendElements(part, elements);
    }
}

/// The elements of the characters that texts are mostly made of, worked out once.
class ElementTable
{
public:
    static const ElementTable &table()
    {
        static const ElementTable elements;
        return elements;
    }
    std::u32string_view elementsOf(char32_t c) const
    {
        return std::u32string_view(m_elements).substr(m_begin[c], m_begin[c + 1] - m_begin[c]);
    }
    static constexpr char32_t size = 0x3100; ///< to the end of the Japanese syllables

private:
    ElementTable()
    {
        for (char32_t c = 0; c < size; ++c) {
            m_begin[c] = static_cast<std::uint16_t>(m_elements.size());
            appendElements(c, m_elements);
        }
        m_begin[size] = static_cast<std::uint16_t>(m_elements.size());
    }
    std::array<std::uint16_t, size + 1> m_begin{};
    std::u32string m_elements;
};

bool isAccent(char32_t element)
{
    return element >= 0x300 && isSettled(element) && QChar::combiningClass(element) != 0 &&
           QChar::category(element) == QChar::Mark_NonSpacing;
}

/// Gives out a text's elements one by one.
class ElementReader
{
public:
    explicit ElementReader(QByteArrayView text) : m_text(text) {}

    static constexpr char32_t end = 0xFFFFFFFF;

    char32_t next()
    {
        while (m_waiting.empty()) {
            if (m_text.atEnd()) {
                return end;
            }
            refill(m_text.next());
        }
        const char32_t element = m_waiting.front();
        m_waiting.remove_prefix(1);
        return element;
    }
    char32_t nextLetter()
    {
        char32_t element = next();
        while (element != end && isAccent(element)) {
            element = next();
        }
        return element;
    }

private:
    void refill(char32_t c)
    {
        constexpr char32_t ideographs = 0x3400;
        constexpr char32_t compatibility = 0xF900;
        if (c < ElementTable::size) {
            m_waiting = ElementTable::table().elementsOf(c);
            return;
        }
        m_own.clear();
        if (c >= ideographs && c < compatibility) {
            m_own.push_back(c);
        } else {
            appendElements(c, m_own);
        }
        m_waiting = m_own;
    }

    Utf8Reader m_text;
    std::u32string m_own;
    std::u32string_view m_waiting;
};

int orderOf(char32_t left, char32_t right)
{
    if (left == ElementReader::end || right == ElementReader::end) {
        return left == right ? 0 : left == ElementReader::end ? -1 : 1;
    }
    return left < right ? -1 : left > right ? 1 : 0;
}

int compareLetters(QByteArrayView left, QByteArrayView right)
{
    ElementReader leftReader(left);
    ElementReader rightReader(right);
    while (true) {
        const char32_t element = leftReader.nextLetter();
        const int order = orderOf(element, rightReader.nextLetter());
        if (order != 0 || element == ElementReader::end) {
            return order;
        }
    }
}

/// For texts of the same letters: the one without an accent where they first differ comes first.
int compareAccents(QByteArrayView left, QByteArrayView right)
{
    ElementReader leftReader(left);
    ElementReader rightReader(right);
    while (true) {
        const char32_t leftElement = leftReader.next();
        const char32_t rightElement = rightReader.next();
        if (leftElement == rightElement) {
            if (leftElement == ElementReader::end) {
                return 0;
            }
            continue;
        }
        const bool leftAccent = leftElement != ElementReader::end && isAccent(leftElement);
        const bool rightAccent = rightElement != ElementReader::end && isAccent(rightElement);
        return leftAccent == rightAccent ? orderOf(leftElement, rightElement) : leftAccent ? 1 : -1;
    }
}

/// Without the blanks behind it. A text of blanks alone keeps them: it is told from the empty text and from
/// another number of blanks, as the data fix-ups need it.
QByteArrayView withoutTrailingBlanks(QByteArrayView text)
{
    constexpr QByteArrayView wideBlank("\xE3\x80\x80");
    QByteArrayView rest = text;
    while (!rest.isEmpty()) {
        if (rest.endsWith(' ')) {
            rest.chop(1);
        } else if (rest.endsWith(wideBlank)) {
            rest.chop(wideBlank.size());
        } else {
            return rest;
        }
    }
    return text;
}

constexpr int folded(char c)
{
    return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
}

/// How many bytes from the start on are the same ASCII letters in both.
qsizetype commonAscii(QByteArrayView left, QByteArrayView right)
{
    const qsizetype shorter = std::min(left.size(), right.size());
    qsizetype i = 0;
    while (i < shorter && folded(left[i]) == folded(right[i]) && (left[i] & 0x80) == 0) {
        ++i;
    }
    return i;
}

} // namespace

int compareJet(QByteArrayView left, QByteArrayView right)
{
    left = withoutTrailingBlanks(left);
    right = withoutTrailingBlanks(right);
    const qsizetype common = commonAscii(left, right);
    left = left.sliced(common);
    right = right.sliced(common);
    const bool leftAscii = left.isEmpty() || (left.front() & 0x80) == 0;
    const bool rightAscii = right.isEmpty() || (right.front() & 0x80) == 0;
    if (leftAscii && rightAscii) { // the first difference decides, whatever follows
        return left.isEmpty() || right.isEmpty() ? int(right.isEmpty()) - int(left.isEmpty())
                                                 : folded(left.front()) - folded(right.front());
    }
    const int order = compareLetters(left, right);
    return order != 0 ? order : compareAccents(left, right);
}

} // namespace store
