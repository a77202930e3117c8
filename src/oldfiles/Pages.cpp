#include "oldfiles/Pages.h"

#include <array>
#include <bit>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace oldfiles {

namespace {

constexpr qint64 versionAt = 0x14;
constexpr qint64 maskedAt = 0x18;
constexpr qint64 maskedSize = 128;
constexpr qint64 codePageAt = 0x3C - maskedAt;
constexpr qint64 encodingKeyAt = 0x3E - maskedAt;

// A key stream of RC4, which masks a part of the header with a key that is the same in every file.
QByteArray unmasked(QByteArrayView masked)
{
    constexpr std::array<quint8, 4> key = {0xC7, 0xDA, 0x39, 0x6B};
    std::array<quint8, 256> state = {};
    std::iota(state.begin(), state.end(), quint8(0));
    quint8 j = 0;
    for (size_t i = 0; i < state.size(); ++i) {
        j = static_cast<quint8>(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    QByteArray clear = masked.toByteArray();
    quint8 i = 0;
    j = 0;
    for (char &byte : clear) {
        ++i;
        j = static_cast<quint8>(j + state[i]);
        std::swap(state[i], state[j]);
        const auto place = static_cast<quint8>(state[i] + state[j]);
        byte = static_cast<char>(static_cast<quint8>(byte) ^ state[place]);
    }
    return clear;
}

} // namespace

bool hasJetSignature(QByteArrayView file)
{
    constexpr QByteArrayView jet("\0\1\0\0Standard Jet DB", 19);
    constexpr QByteArrayView later("\0\1\0\0Standard ACE DB", 19);
    return file.startsWith(jet) || file.startsWith(later);
}

Pages::Pages(QByteArrayView file) : m_file(file)
{
    readHeader();
}

qint64 Pages::pageSize() const
{
    return m_version == Version::Jet4 ? 4096 : 2048;
}

// A password only masks the header and encodes no page, so nothing asks for it.
void Pages::readHeader()
{
    constexpr qint64 header = maskedAt + maskedSize;
    if (m_file.size() < header || !hasJetSignature(m_file.view())) {
        throw core::Error(0, u"this is no Jet database"_s);
    }
    const quint8 version = m_file.u8(versionAt);
    if (version > 1) {
        throw core::Error(0, u"this Jet database is of a newer version than 4"_s);
    }
    m_version = version == 1 ? Version::Jet4 : Version::Jet3;
    const QByteArray clear = unmasked(m_file.slice(maskedAt, maskedSize).view());
    if (Bytes(clear).u32(encodingKeyAt) != 0) {
        throw core::Error(0, u"this Jet database is encoded; decode it with the program that encoded it"_s);
    }
    m_texts = m_version == Version::Jet4 ? TextForm() : TextForm(Bytes(clear).u16(codePageAt));
}

Bytes Pages::page(quint32 number, PageType type) const
{
    if (number == 0 || number >= pageCount()) {
        throw Damage(u"page %1 is missing"_s.arg(number));
    }
    const Bytes page = m_file.slice(number * pageSize(), pageSize());
    if (page.u8(0) != static_cast<quint8>(type)) {
        throw Damage(u"page %1 holds something else"_s.arg(number));
    }
    return page;
}

int Pages::rowsOn(const Bytes &page) const
{
    return page.u16(rowListAt() - 2);
}

quint16 Pages::flagsOn(const Bytes &page, int row) const
{
    return page.u16(rowListAt() + 2LL * row) & Deleted;
}

Pages::Row Pages::rowOn(const Bytes &page, int row) const
{
    constexpr quint16 place = 0x1FFF;
    if (row >= rowsOn(page)) {
        throw Damage(u"a row is missing"_s);
    }
    const qint64 start = page.u16(rowListAt() + 2LL * row) & place;
    const qint64 end = row == 0 ? pageSize() : page.u16(rowListAt() + 2LL * (row - 1)) & place;
    if (start < rowListAt() + 2LL * rowsOn(page)) {
        throw Damage(u"a row lies over the list of rows"_s);
    }
    return {flagsOn(page, row), page.slice(start, end - start)};
}

Pages::Row Pages::row(RowPointer pointer) const
{
    return rowOn(page(pointer >> 8, PageType::Data), static_cast<int>(pointer & 0xFF));
}

QList<quint32> Pages::pagesIn(RowPointer usageMap) const
{
    constexpr qint64 bitmapAt = 4; // on a page of its own
    QList<quint32> pages;
    const Bytes map = row(usageMap).bytes;
    const quint8 kind = map.u8(0);
    if (kind == 0) {
        addBits(map.from(5), map.u32(1), pages);
    } else if (kind == 1) {
        const qint64 span = (pageSize() - bitmapAt) * 8;
        for (qint64 i = 0; 1 + 4 * (i + 1) <= map.size(); ++i) {
            if (const quint32 number = map.u32(1 + 4 * i); number != 0) {
                addBits(page(number, PageType::UsageMap).from(bitmapAt), i * span, pages);
            }
        }
    } else {
        throw Damage(u"the list of its pages cannot be read"_s);
    }
    return pages;
}

void Pages::addBits(const Bytes &bitmap, qint64 firstPage, QList<quint32> &pages) const
{
    for (qint64 at = 0; at < bitmap.size(); ++at) {
        for (quint8 bits = bitmap.u8(at); bits != 0; bits &= bits - 1) {
            const qint64 number = firstPage + at * 8 + std::countr_zero(bits);
            if (number >= pageCount()) {
                throw Damage(u"the list of its pages goes beyond the end of the file"_s);
            }
            pages.append(static_cast<quint32>(number));
        }
    }
}

} // namespace oldfiles
