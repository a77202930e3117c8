#pragma once

#include <array>
#include <bitset>
#include <vector>

namespace store {

/// Unicode case folding by code point, as searches use it. Two additions: both Turkish letters i fold to "i"
/// with their capitals, since in Turkish texts "I" is the capital of the dotless one and "I" with a dot that
/// of the other; and every apostrophe folds to that of the keyboard, since names are stored with either.
class CaseFolding
{
public:
    /// The one table, made at its first use and never changed.
    static const CaseFolding &table();

    char32_t folded(char32_t c) const
    {
        if (c >= planeSize) {
            return foldedBeyondPlane(c);
        }
        const auto page = m_pageOf[c >> 8];
        return page == 0 ? c : m_pages[page][c & 0xFF];
    }
    /// Whether other code points than itself fold to the folded `c`.
    bool hasVariants(char32_t c) const { return c >= planeSize || m_hasVariants[c]; }
    /// The code points that fold to the folded `c`, itself first.
    std::vector<char32_t> variants(char32_t c) const;

private:
    static constexpr char32_t planeSize = 0x10000;
    using Page = std::array<char16_t, 256>;

    CaseFolding();
    static char32_t foldedBeyondPlane(char32_t c);
    void add(char32_t c, char32_t folded);

    std::array<unsigned char, 256> m_pageOf{}; ///< 0: nothing on the page folds
    std::vector<Page> m_pages;
    std::bitset<planeSize> m_hasVariants;
};

} // namespace store
