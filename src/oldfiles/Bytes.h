#pragma once

#include "core/Error.h"

#include <QByteArrayView>
#include <QtEndian>

namespace oldfiles {

/// What stands in the file cannot be: some byte of it was lost or changed.
class Damage : public core::Error
{
public:
    explicit Damage(const QString &what) : Error(0, what) {}
};

/// A piece of a file. Nothing is read beyond its ends, wherever damaged numbers point; throws Damage instead.
class Bytes
{
public:
    Bytes() = default;
    explicit Bytes(QByteArrayView bytes) : m_bytes(bytes) {}

    qsizetype size() const { return m_bytes.size(); }
    QByteArrayView view() const { return m_bytes; }

    Bytes slice(qint64 at, qint64 size) const
    {
        check(at, size);
        return Bytes(m_bytes.sliced(at, size));
    }
    Bytes from(qint64 at) const { return slice(at, m_bytes.size() - at); }

    template <typename Number>
    Number number(qint64 at) const
    {
        check(at, sizeof(Number));
        return qFromLittleEndian<Number>(m_bytes.data() + at);
    }
    quint8 u8(qint64 at) const { return number<quint8>(at); }
    quint16 u16(qint64 at) const { return number<quint16>(at); }
    quint32 u32(qint64 at) const { return number<quint32>(at); }

private:
    void check(qint64 at, qint64 size) const
    {
        if (at < 0 || size < 0 || at > m_bytes.size() - size) {
            throw Damage(QStringLiteral("a number points out of its page"));
        }
    }

    QByteArrayView m_bytes;
};

} // namespace oldfiles
