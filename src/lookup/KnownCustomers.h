#pragma once

#include "lookup/CustomerFacts.h"

#include <QByteArray>
#include <QList>
#include <QUtf8StringView>

#include <optional>

namespace lookup {

/// What a call shows of the customer who makes it. Name and note are those in memory: they hold until the
/// customers change.
struct KnownCustomer
{
    QUtf8StringView name;
    QUtf8StringView note; ///< as far as it can be shown
    bool vip = false;
    bool blackListed = false;
    bool popsUp = true; ///< the pop-up flag is not "0"
};

/// The customers by their SN, in memory, so that a call needs no database to be shown. 12 bytes a customer,
/// and name and note in UTF-8.
class KnownCustomers
{
public:
    /// A row as it stands in the file, texts in UTF-8.
    struct Row
    {
        qint32 sn = 0;
        QByteArrayView name;
        QByteArrayView note;
        QByteArrayView vip;
        bool blackListed = false;
        QByteArrayView popUpFlag;
    };

    /// Adds a customer behind the others. Of several with one SN the first counts. Throws core::Error when
    /// there are too many.
    void append(const Row &row);
    /// Makes room for so many times what was appended.
    void expect(double times);
    /// To be called once behind the last append.
    void finish();

    /// Nothing where no customer has that SN.
    std::optional<KnownCustomer> find(qint32 sn) const;
    /// Puts a customer in the place of the one with his SN, or where that would stand; only when finished.
    /// False, with nothing changed, where the memory for texts is used up: it is free again once all are read
    /// anew.
    bool replace(qint32 sn, const CustomerFacts &facts);
    void remove(qint32 sn);

private:
    struct Entry
    {
        qint32 sn = 0;
        quint32 offset = 0; ///< of the name in m_texts; the note stands behind it
        quint16 nameSize = 0;
        quint16 noteSize : 13 = 0;
        quint16 vip : 1 = 0;
        quint16 blackListed : 1 = 0;
        quint16 popsUp : 1 = 0;
    };
    static_assert(sizeof(Entry) == 12);

    bool isFull() const;
    Entry entryOf(const Row &row);

    QList<Entry> m_entries; ///< in the order of their SN
    QByteArray m_texts;
};

} // namespace lookup
