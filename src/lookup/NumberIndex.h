#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "lookup/NumberEntries.h"
#include "lookup/NumberReading.h"
#include "lookup/PhoneNumbers.h"

#include <QStringList>

#include <optional>

namespace lookup {

/// Who holds a number: the numbers of the phone book and of the customers, held in memory so that a call
/// needs no database to be identified. A lookup compares every character; callers strip a number to its
/// digits first where they want that. Every lookup gives -1 where nobody holds the number, and also, with a
/// log entry, in an index that was never loaded.
class NumberIndex
{
public:
    /// All must outlive the index; the code page tells what separates the numbers of a text.
    NumberIndex(const core::Paths &paths, core::RunLog &log, const core::CodePage &codePage)
        : m_paths(paths), m_log(log), m_codePage(codePage)
    {}

    /// The numbers of a text as the index has them.
    PhoneNumberPieces pieces(QStringView numbers) const;

    /// Rebuild an index from its table. An empty table gives one entry, an empty number with SN 0; after a
    /// failure, rows without a single number included, the index keeps what it held. Of a table with more
    /// than 10,000 rows the rest is read by continueLoading(), or by the first lookup, which never sees half
    /// an index.
    bool LoadPhoneNumberSNArray();
    bool LoadCustomerPhoneNumberSnArray();
    /// Takes the numbers of a customer that was saved or deleted from its row, to the places that a rebuilt
    /// index would give them; in about a millisecond. While the index is being read, the row waits for the
    /// last piece. Where there is no index yet, or the order of the rows does not tell the place, a rebuild
    /// begins. False after a failure.
    bool updateCustomer(qint32 sn);

    bool isLoading() const { return m_phoneBook.reading || m_customers.reading; }
    /// Reads on for a few milliseconds; false after a failure.
    bool continueLoading();

    qint32 GetSnByPhoneNumber(QStringView phoneNumber);
    qint32 GetCustomerSnByPhoneNumber(QStringView phoneNumber);
    /// The lookup of a call, given the number as received without the blanks around it. -1 without a log
    /// entry where the index was never loaded: a desk may well have no customers.
    qint32 FindCustomerSnOfCaller(QStringView callerNumber);

private:
    /// An index with the name of its procedure and, while its table is read, what will take its place.
    struct Index
    {
        QLatin1StringView procedure;
        NumberEntries &entries;
        std::optional<NumberReading> reading = {};
    };

    bool load(Index &index, const QString &file, const QString &table, const QStringList &numberColumns);
    bool readOn(Index &index);
    bool replaceCustomer(qint32 sn);
    const NumberEntries &whole(Index &index);
    qint32 find(QLatin1StringView procedure, Index &index, QStringView number);

    const core::Paths &m_paths;
    core::RunLog &m_log;
    const core::CodePage &m_codePage;
    NumberEntries PhoneNumberSNArray;
    NumberEntries CustomerPhoneNumberSnArray;
    Index m_phoneBook{QLatin1StringView("LoadPhoneNumberSNArray"), PhoneNumberSNArray};
    Index m_customers{QLatin1StringView("LoadCustomerPhoneNumberSnArray"), CustomerPhoneNumberSnArray};
    std::vector<qint32> m_savedMeanwhile; ///< customers, while their index is being read
};

} // namespace lookup
