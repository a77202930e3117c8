#pragma once

#include <QByteArrayView>

namespace store {

/// Reads UTF-8 code point by code point, whatever the bytes are: a byte that belongs to no character comes
/// out as a value of its own beyond Unicode, so that different texts stay different.
class Utf8Reader
{
public:
    explicit Utf8Reader(QByteArrayView text) : m_next(text.data()), m_end(text.data() + text.size()) {}

    bool atEnd() const { return m_next == m_end; }
    const char *place() const { return m_next; }
    void moveTo(const char *place) { m_next = place; }
    /// Not to be called at the end.
    char32_t next()
    {
        const auto byte = static_cast<unsigned char>(*m_next);
        return byte < 0x80 ? (++m_next, byte) : nextBeyondAscii();
    }

private:
    char32_t nextBeyondAscii();

    const char *m_next;
    const char *m_end;
};

} // namespace store
