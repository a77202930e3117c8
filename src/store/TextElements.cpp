#include "store/TextElements.h"

#include <QChar>
#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace store {

namespace {

// Letters that Unicode does not take apart but that people look for beside their plain ones. Each gets a
// mark of its own, so that it stays another letter.
constexpr std::pair<char32_t, std::u32string_view> lettersWithStrokes[] = {
    {U'\u0131', U"i\u0335"},  {U'\u0142', U"l\u0335"},  {U'\u00F8', U"o\u0338"},
    {U'\u0111', U"d\u0335"},  {U'\u0127', U"h\u0335"},  {U'\u0167', U"t\u0335"},
    {U'\u00E6', U"ae\u0335"}, {U'\u0153', U"oe\u0335"}, {U'\u00DF', U"ss\u0335"},
};

// What is known of characters since, is not asked for: a newer toolkit would else order an index
// differently.
bool isSettled(char32_t c)
{
    return c < 0x110000 && QChar::unicodeVersion(c) <= QChar::Unicode_13_0;
}

bool isTakenApart(QChar::Decomposition how)
{
    return how == QChar::Canonical || how == QChar::Wide || how == QChar::Narrow;
}

// Appends what `c` is ordered as: its letter without case and width, then its accents.
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

// The elements of the characters that texts are mostly made of, worked out once.
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
    static constexpr char32_t size = 0x3100; // to the end of the Japanese syllables

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

} // namespace

bool isAccent(char32_t element)
{
    return element >= 0x300 && isSettled(element) && QChar::combiningClass(element) != 0 &&
           QChar::category(element) == QChar::Mark_NonSpacing;
}

char32_t ElementReader::nextLetter()
{
    char32_t element = next();
    while (element != end && isAccent(element)) {
        element = next();
    }
    return element;
}

void ElementReader::refill(char32_t c)
{
    constexpr char32_t ideographs = 0x3400; // they stand for themselves
    constexpr char32_t behindIdeographs = 0xA000;
    if (c < ElementTable::size) {
        m_waiting = ElementTable::table().elementsOf(c);
        return;
    }
    m_own.clear();
    if (c >= ideographs && c < behindIdeographs) {
        m_own.push_back(c);
    } else {
        appendElements(c, m_own);
    }
    m_waiting = m_own;
}

} // namespace store
