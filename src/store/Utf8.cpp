#include "store/Utf8.h"

namespace store {

namespace {

// How many bytes follow a first byte, 0 when it cannot be one.
int followers(unsigned char first)
{
    if (first < 0xC2) {
        return 0;
    }
    return first < 0xE0 ? 1 : first < 0xF0 ? 2 : first < 0xF5 ? 3 : 0;
}

} // namespace

char32_t Utf8Reader::nextBeyondAscii()
{
    constexpr char32_t beyondUnicode = 0x110000;
    const auto first = static_cast<unsigned char>(*m_next);
    const int more = followers(first);
    char32_t codePoint = first & (0x3F >> more);
    bool good = more > 0 && m_end - m_next > more;
    for (int i = 1; good && i <= more; ++i) {
        const auto byte = static_cast<unsigned char>(m_next[i]);
        good = (byte & 0xC0) == 0x80;
        codePoint = codePoint << 6 | (byte & 0x3FU);
    }
    if (!good) {
        ++m_next;
        return beyondUnicode + first;
    }
    m_next += more + 1;
    return codePoint;
}

} // namespace store
