#pragma once

#include <QLatin1StringView>
#include <QStringView>

#include <vector>

namespace lookup {

/// One entry of a number index: a number (digits only, may be empty) and the SN of the row that holds it. The
/// number lives in the index.
struct PhoneNumberSN
{
    QLatin1StringView PhoneNumber;
    qint32 SN = 0;
};

/// The entries of a number index in the order in which they were appended, and a hash from each number to its
/// first entry beside them. About 40 bytes an entry: 12 for the entry, one for each digit, 16 for the hash.
class NumberEntries
{
public:
    /// Adds an entry with the digits of `piece`, of at most 32,767 characters. Throws core::Error when there
    /// are too many.
    void append(QStringView piece, qint32 sn);
    /// Gives spare memory back and builds the hash: to be called after the last append until it returns true.
    /// Each call takes a few milliseconds.
    bool finishSome();

    bool isEmpty() const { return m_entries.empty(); }

    /// The SN of the first entry whose number equals `number` in every character, -1 when none does.
    qint32 find(QStringView number) const;

private:
    struct Entry
    {
        quint32 offset = 0; ///< of the first digit in m_digits
        quint16 length = 0;
        qint32 sn = 0;
    };
    struct Slot
    {
        quint32 tag = 0; ///< the part of the hash that did not choose the slot: most misses end here
        quint32 entry = noEntry;
    };
    static constexpr quint32 noEntry = 0xFFFFFFFF;

    PhoneNumberSN view(const Entry &entry) const;
    /// The slot that holds the number's first entry, or the free one where it would stand.
    template <typename View>
    size_t slotOf(View number, quint64 hash) const;

    std::vector<char> m_digits;
    std::vector<Entry> m_entries;
    size_t m_hashed = 0;       ///< entries that the hash knows
    std::vector<Slot> m_slots; ///< open addressing with linear probing, twice as many as entries
};

} // namespace lookup
