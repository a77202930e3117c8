#include "lookup/NumberEntries.h"

#include "core/Error.h"
#include "core/TextUtilities.h"

#include <algorithm>
#include <bit>
#include <limits>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

// Four bits tell digits apart, so numbers of up to 16 digits fold without a collision; the mixing spreads
// numbers that differ in one digit only, as those of one office do.
template <typename View>
quint64 hashOf(View number)
{
    quint64 hash = static_cast<quint64>(number.size());
    for (qsizetype i = 0; i < number.size(); ++i) {
        hash = std::rotl(hash, 4) ^ QChar(number.at(i)).unicode();
    }
    hash = (hash ^ (hash >> 33)) * 0xFF51AFD7ED558CCD;
    hash = (hash ^ (hash >> 33)) * 0xC4CEB9FE1A85EC53;
    return hash ^ (hash >> 33);
}

quint32 tagOf(quint64 hash)
{
    return static_cast<quint32>(hash);
}

} // namespace

void NumberEntries::append(QStringView piece, qint32 sn)
{
    const size_t offset = m_digits.size();
    if (offset > std::numeric_limits<quint32>::max()) {
        throw core::Error(0, u"more numbers than the index can hold"_s);
    }
    for (const QChar character : piece) {
        if (core::isDigit(character)) {
            m_digits.push_back(static_cast<char>(character.unicode()));
        }
    }
    m_entries.push_back({static_cast<quint32>(offset), static_cast<quint16>(m_digits.size() - offset), sn});
}

bool NumberEntries::finishSome()
{
    constexpr size_t entriesAtOnce = 100000;
    if (m_hashed == 0) {
        m_digits.shrink_to_fit();
        m_entries.shrink_to_fit();
        m_slots.assign(2 * m_entries.size(), Slot());
    }
    const size_t end = std::min(m_hashed + entriesAtOnce, m_entries.size());
    for (; m_hashed < end; ++m_hashed) {
        const QLatin1StringView number = view(m_entries[m_hashed]).PhoneNumber;
        const quint64 hash = hashOf(number);
        Slot &slot = m_slots[slotOf(number, hash)];
        if (slot.entry == noEntry) {
            slot = {tagOf(hash), static_cast<quint32>(m_hashed)};
        }
    }
    return m_hashed == m_entries.size();
}

qint32 NumberEntries::find(QStringView number) const
{
    if (m_slots.empty()) {
        return -1;
    }
    const Slot &slot = m_slots[slotOf(number, hashOf(number))];
    return slot.entry == noEntry ? -1 : view(m_entries[slot.entry]).SN;
}

PhoneNumberSN NumberEntries::view(const Entry &entry) const
{
    return {QLatin1StringView(m_digits.data() + entry.offset, entry.length), entry.sn};
}

template <typename View>
size_t NumberEntries::slotOf(View number, quint64 hash) const
{
    // The upper half of the hash, scaled to the table's size, chooses the slot: any size will do, not only
    // powers of two.
    size_t position = ((hash >> 32) * m_slots.size()) >> 32;
    const quint32 tag = tagOf(hash);
    for (;;) {
        const Slot &slot = m_slots[position];
        if (slot.entry == noEntry || (slot.tag == tag && view(m_entries[slot.entry]).PhoneNumber == number)) {
            return position;
        }
        position = position + 1 == m_slots.size() ? 0 : position + 1;
    }
}

} // namespace lookup
