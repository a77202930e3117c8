#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QList>
#include <QStringView>

#include <optional>
#include <span>
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
/// first entry beside them. About 45 bytes an entry: 12 for the entry, 4 for the way to the next of the same
/// number, one for each digit, 16 for the hash; entries and digits may have up to a third more.
class NumberEntries
{
public:
    /// Adds an entry with the digits of `piece`, of at most 32,767 characters. Throws core::Error when there
    /// are too many.
    void append(QStringView piece, qint32 sn);
    void append(QLatin1StringView piece, qint32 sn);
    /// Makes room for so many times what was appended, which then need not be copied as it grows.
    void expect(double times);
    /// Gives much spare memory back and builds the hash: to be called after the last append until it returns
    /// true. Each call takes a few milliseconds.
    bool finishSome();

    bool isEmpty() const { return m_entries.isEmpty(); }
    size_t size() const { return static_cast<size_t>(m_entries.size()); }
    PhoneNumberSN at(size_t position) const { return view(m_entries[static_cast<qsizetype>(position)]); }

    /// The SN of the first entry whose number equals `number` in every character.
    std::optional<qint32> find(QStringView number) const;

    /// The SN of each entry whose number does, in their order.
    std::vector<qint32> findAll(QStringView number) const;

    /// Puts the digits of `pieces` in the place of a row's entries, or where its SN would stand. Only for
    /// finished entries; false, with nothing changed, where they do not stand in the order of their SN, where
    /// no entry would be left, and where the digits would be too many.
    bool replace(qint32 sn, std::span<const QStringView> pieces);

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

    template <typename View>
    Entry entryOf(View piece, qint32 sn);
    void append(const Entry &entry);
    PhoneNumberSN view(const Entry &entry) const;
    quint32 firstOf(QStringView number) const;
    size_t homeOf(quint64 hash) const;
    size_t slotBehind(size_t slot) const { return slot + 1 == m_slots.size() ? 0 : slot + 1; }
    /// The slot that holds the number's first entry, or the free one where it would stand.
    template <typename View>
    size_t slotOf(View number, quint64 hash) const;

    void exchangeEntries(size_t place, size_t old, const std::vector<Entry> &entries);
    /// Links the entries before `behind`, but some at a time; how many.
    size_t linkBatch(size_t behind, size_t atMost);
    void link(quint32 entry, quint64 hash);
    void unlink(quint32 entry);
    void freeSlot(size_t slot);
    void dropUnusedDigits();

    // Lists of the toolkit grow where they stand; those of the standard library by a copy of themselves.
    QByteArray m_digits;
    QList<Entry> m_entries;
    std::vector<quint32> m_next;  ///< of each entry: the next one with the same number
    size_t m_hashed = 0;          ///< entries that the hash knows, from the last one on
    std::vector<Slot> m_slots;    ///< open addressing with linear probing, twice as many as entries
    size_t m_used = 0;            ///< slots that are not free
    qsizetype m_unusedDigits = 0; ///< of entries that were replaced
    bool m_inOrderOfSn = true;
};

} // namespace lookup
