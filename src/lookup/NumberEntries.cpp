#include "lookup/NumberEntries.h"

#include "core/Error.h"
#include "core/Memory.h"
#include "core/TextUtilities.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr qsizetype mostDigits = std::numeric_limits<quint32>::max();

// Four bits tell digits apart, so numbers of up to 16 digits are folded without a collision. The mixing then
// spreads numbers that differ in one digit only, such as the extensions of one office.
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
    append(entryOf(piece, sn));
}

void NumberEntries::append(QLatin1StringView piece, qint32 sn)
{
    append(entryOf(piece, sn));
}

void NumberEntries::append(const Entry &entry)
{
    m_inOrderOfSn = m_inOrderOfSn && (m_entries.isEmpty() || m_entries.constLast().sn <= entry.sn);
    m_entries.append(entry);
}

void NumberEntries::expect(double times)
{
    core::reserveTimes(m_digits, times);
    core::reserveTimes(m_entries, times);
}

template <typename View>
NumberEntries::Entry NumberEntries::entryOf(View piece, qint32 sn)
{
    const qsizetype offset = m_digits.size();
    if (offset > mostDigits) {
        throw core::Error(0, u"more numbers than the index can hold"_s);
    }
    m_digits.resize(offset + piece.size());
    char *end = m_digits.data() + offset;
    for (qsizetype i = 0; i < piece.size(); ++i) {
        if (const QChar character = piece.at(i); core::isDigit(character)) {
            *end++ = static_cast<char>(character.unicode());
        }
    }
    const qsizetype length = end - m_digits.constData() - offset;
    m_digits.resize(offset + length);
    return {static_cast<quint32>(offset), static_cast<quint16>(length), sn};
}

// Goes from the last entry to the first, so that each entry finds the next one of its number in the slot.
bool NumberEntries::finishSome()
{
    constexpr size_t entriesAtOnce = 20000;
    if (m_hashed == 0) {
        core::dropSpare(m_digits);
        core::dropSpare(m_entries);
        core::reserveLarge(m_next, m_entries.size());
        m_next.assign(size(), noEntry);
        core::reserveLarge(m_slots, 2 * m_entries.size());
        m_slots.assign(2 * size(), Slot());
        m_used = 0;
    }
    const size_t end = std::min(m_hashed + entriesAtOnce, size());
    while (m_hashed < end) {
        m_hashed += linkBatch(size() - m_hashed, end - m_hashed);
    }
    return m_hashed == size();
}

// The slots lie all over a large hash. Those of a batch are read at once, for nothing but to have the
// processor fetch them together, so that none of them is waited for when its entry is put there.
size_t NumberEntries::linkBatch(size_t behind, size_t atMost)
{
    std::array<quint64, 64> hashes = {};
    const std::span<quint64> batch(hashes.data(), std::min(hashes.size(), atMost));
    size_t entry = behind;
    for (quint64 &hash : batch) {
        hash = hashOf(at(--entry).PhoneNumber);
    }
    for (const quint64 hash : batch) {
        [[maybe_unused]] const volatile quint32 fetched = m_slots[homeOf(hash)].entry;
    }
    entry = behind;
    for (const quint64 hash : batch) {
        link(static_cast<quint32>(--entry), hash);
    }
    return batch.size();
}

quint32 NumberEntries::firstOf(QStringView number) const
{
    return m_slots.empty() ? noEntry : m_slots[slotOf(number, hashOf(number))].entry;
}

std::optional<qint32> NumberEntries::find(QStringView number) const
{
    const quint32 entry = firstOf(number);
    return entry == noEntry ? std::nullopt : std::optional(at(entry).SN);
}

std::vector<qint32> NumberEntries::findAll(QStringView number) const
{
    std::vector<qint32> found;
    for (quint32 entry = firstOf(number); entry != noEntry; entry = m_next[entry]) {
        found.push_back(at(entry).SN);
    }
    return found;
}

PhoneNumberSN NumberEntries::view(const Entry &entry) const
{
    return {QLatin1StringView(m_digits.constData() + entry.offset, entry.length), entry.sn};
}

// The upper half of the hash, scaled to the table's size, chooses the slot: any size will do, not only powers
// of two.
size_t NumberEntries::homeOf(quint64 hash) const
{
    return ((hash >> 32) * m_slots.size()) >> 32;
}

template <typename View>
size_t NumberEntries::slotOf(View number, quint64 hash) const
{
    size_t position = homeOf(hash);
    const quint32 tag = tagOf(hash);
    for (;;) {
        const Slot &slot = m_slots[position];
        if (slot.entry == noEntry || (slot.tag == tag && at(slot.entry).PhoneNumber == number)) {
            return position;
        }
        position = slotBehind(position);
    }
}

bool NumberEntries::replace(qint32 sn, std::span<const QStringView> pieces)
{
    const qsizetype digits =
        std::accumulate(pieces.begin(), pieces.end(), m_digits.size(),
                        [](qsizetype sum, QStringView piece) { return sum + piece.size(); });
    if (!m_inOrderOfSn || digits > mostDigits) {
        return false;
    }
    const auto first = std::ranges::lower_bound(std::as_const(m_entries), sn, {}, &Entry::sn);
    const auto behind = std::ranges::upper_bound(std::as_const(m_entries), sn, {}, &Entry::sn);
    const auto place = static_cast<size_t>(first - m_entries.constBegin());
    const auto old = static_cast<size_t>(behind - first);
    if (old == size() && pieces.empty()) {
        return false;
    }
    std::vector<Entry> entries;
    for (const QStringView piece : pieces) {
        entries.push_back(entryOf(piece, sn));
    }
    for (size_t i = 0; i < old; ++i) {
        unlink(static_cast<quint32>(place + i));
        m_unusedDigits += at(place + i).PhoneNumber.size();
    }
    exchangeEntries(place, old, entries);
    if (4 * (m_used + entries.size()) > 3 * m_slots.size()) { // a full hash would be searched for ever
        m_hashed = 0;
        while (!finishSome()) {
        }
    } else {
        for (size_t i = 0; i < entries.size(); ++i) {
            link(static_cast<quint32>(place + i), hashOf(at(place + i).PhoneNumber));
        }
    }
    dropUnusedDigits();
    return true;
}

// The entries behind the place move up or down, and every index that leads to them is corrected.
void NumberEntries::exchangeEntries(size_t place, size_t old, const std::vector<Entry> &entries)
{
    const auto kept = static_cast<std::ptrdiff_t>(std::min(old, entries.size()));
    const auto at = static_cast<std::ptrdiff_t>(place);
    std::copy_n(entries.begin(), kept, m_entries.begin() + at);
    std::fill_n(m_next.begin() + at, kept, noEntry);
    if (entries.size() == old) { // as most often: nothing else moves
        return;
    }
    const auto behind = static_cast<std::ptrdiff_t>(place + old);
    const auto added = static_cast<std::ptrdiff_t>(entries.size()) - kept;
    m_entries.erase(m_entries.begin() + at + kept, m_entries.begin() + behind);
    m_entries.insert(at + kept, added, Entry());
    std::copy_n(entries.begin() + kept, added, m_entries.begin() + at + kept);
    m_next.erase(m_next.begin() + at + kept, m_next.begin() + behind);
    m_next.insert(m_next.begin() + at + kept, static_cast<size_t>(added), noEntry);
    const auto difference = static_cast<quint32>(entries.size() - old); // modulo 2^32: it may be negative
    const auto moved = [&](quint32 entry) {
        return entry != noEntry && entry >= place + old ? entry + difference : entry;
    };
    std::ranges::transform(m_next, m_next.begin(), moved);
    for (Slot &slot : m_slots) {
        slot.entry = moved(slot.entry);
    }
}

// Puts an entry among those of the same number, in their order.
void NumberEntries::link(quint32 entry, quint64 hash)
{
    Slot &slot = m_slots[slotOf(at(entry).PhoneNumber, hash)];
    if (slot.entry == noEntry || slot.entry > entry) {
        m_used += slot.entry == noEntry ? 1 : 0;
        m_next[entry] = slot.entry;
        slot = {tagOf(hash), entry};
        return;
    }
    quint32 before = slot.entry;
    while (m_next[before] < entry) {
        before = m_next[before];
    }
    m_next[entry] = m_next[before];
    m_next[before] = entry;
}

void NumberEntries::unlink(quint32 entry)
{
    const QLatin1StringView number = at(entry).PhoneNumber;
    const size_t position = slotOf(number, hashOf(number));
    quint32 before = m_slots[position].entry;
    if (before != entry) {
        while (m_next[before] != entry) {
            before = m_next[before];
        }
        m_next[before] = m_next[entry];
    } else if (m_next[entry] != noEntry) {
        m_slots[position].entry = m_next[entry];
    } else {
        freeSlot(position);
    }
}

// Closes the gap, so that the search for a number that stands behind it does not end there.
void NumberEntries::freeSlot(size_t slot)
{
    const auto distance = [&](size_t from, size_t to) {
        return to >= from ? to - from : to + m_slots.size() - from;
    };
    size_t gap = slot;
    for (size_t i = slotBehind(gap); m_slots[i].entry != noEntry; i = slotBehind(i)) {
        const size_t home = homeOf(hashOf(at(m_slots[i].entry).PhoneNumber));
        if (distance(home, i) >= distance(gap, i)) {
            m_slots[gap] = m_slots[i];
            gap = i;
        }
    }
    m_slots[gap] = Slot();
    --m_used;
}

void NumberEntries::dropUnusedDigits()
{
    if (2 * m_unusedDigits <= m_digits.size()) {
        return;
    }
    QByteArray digits;
    digits.reserve(m_digits.size() - m_unusedDigits);
    for (Entry &entry : m_entries) {
        const QLatin1StringView number = view(entry).PhoneNumber;
        entry.offset = static_cast<quint32>(digits.size());
        digits.append(number.data(), number.size());
    }
    m_digits = std::move(digits);
    m_unusedDigits = 0;
}

} // namespace lookup
