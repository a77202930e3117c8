#include "store/CaseFolding.h"

#include <QChar>

#include <algorithm>

namespace store {

namespace {

constexpr char32_t endOfUnicode = 0x110000;

char32_t foldedAlone(char32_t c)
{
    constexpr char32_t dottedCapital = 0x130;
    constexpr char32_t dotlessSmall = 0x131;
    static constexpr char32_t apostrophes[] = {0x2BC, 0x2018, 0x2019, 0xFF07};
    if (std::ranges::find(apostrophes, c) != std::end(apostrophes)) {
        return U'\'';
    }
    return c == dottedCapital || c == dotlessSmall ? U'i' : QChar::toCaseFolded(c);
}

} // namespace

const CaseFolding &CaseFolding::table()
{
    static const CaseFolding folding;
    return folding;
}

CaseFolding::CaseFolding() : m_pages(1)
{
    for (char32_t c = 0; c < planeSize; ++c) {
        const char32_t folded = foldedAlone(c);
        if (folded != c) {
            add(c, folded);
        }
    }
}

void CaseFolding::add(char32_t c, char32_t folded)
{
    unsigned char &page = m_pageOf[c >> 8];
    if (page == 0) {
        page = static_cast<unsigned char>(m_pages.size());
        Page fresh;
        for (size_t i = 0; i < fresh.size(); ++i) {
            fresh[i] = static_cast<char16_t>((c & ~0xFFU) + i);
        }
        m_pages.push_back(fresh);
    }
    m_pages[page][c & 0xFF] = static_cast<char16_t>(folded);
    m_hasVariants[folded] = true;
}

char32_t CaseFolding::foldedBeyondPlane(char32_t c)
{
    return c < endOfUnicode ? QChar::toCaseFolded(c) : c;
}

std::vector<char32_t> CaseFolding::variants(char32_t c) const
{
    std::vector<char32_t> found{c};
    for (size_t high = 0; c < planeSize && m_hasVariants[c] && high < m_pageOf.size(); ++high) {
        const Page &page = m_pages[m_pageOf[high]];
        for (size_t low = 0; m_pageOf[high] != 0 && low < page.size(); ++low) {
            const auto other = static_cast<char32_t>(high << 8 | low);
            if (page[low] == c && other != c) {
                found.push_back(other);
            }
        }
    }
    return found;
}

} // namespace store
