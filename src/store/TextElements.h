#pragma once

#include "store/Utf8.h"

#include <QByteArrayView>

#include <string>
#include <string_view>

namespace store {

/// Gives out one by one what a UTF-8 text is ordered by: its letters without case and width, each followed by
/// its accents.
class ElementReader
{
public:
    explicit ElementReader(QByteArrayView text) : m_text(text) {}

    static constexpr char32_t end = 0xFFFFFFFF; ///< what next() gives behind the last element

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
    /// The next element that is no accent.
    char32_t nextLetter();

private:
    void refill(char32_t c);

    Utf8Reader m_text;
    std::u32string m_own;
    std::u32string_view m_waiting;
};

/// Whether an element is an accent and not a letter.
bool isAccent(char32_t element);

} // namespace store
