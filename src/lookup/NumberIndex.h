#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "lookup/KnownCustomers.h"
#include "lookup/NumberEntries.h"
#include "lookup/NumberReading.h"
#include "lookup/PhoneNumbers.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace lookup {

/// Who holds a number: the numbers of the phone book and of the customers, held in memory so that a call
/// needs no database to be identified. A lookup compares every character; callers strip a number to its
/// digits first where they want that. Every lookup gives nothing where nobody holds the number, and also,
/// with a log entry, in an index that was never loaded.
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
    /// failure, rows without a single number included, the index keeps what it held. Of a large table the
    /// rest is read by continueLoading(); until it has ended, lookups are answered as before or, where there
    /// was nothing before, read the rest themselves. Of a damaged table every row that can be read is taken,
    /// unless the whole of it is known already; that counts as a failure, too.
    bool LoadPhoneNumberSNArray();
    bool LoadCustomerPhoneNumberSnArray();
    /// Takes over a customer who was saved, or deleted where there are no facts: his numbers get the places
    /// that a rebuilt index would give them. No file is read, unless there is no index yet or the order of
    /// its rows does not tell the place: then a rebuild begins. While the index is being read, the facts wait
    /// for the last piece, too. False after a failure.
    bool updateCustomer(qint32 sn, const std::optional<CustomerFacts> &onFile);

    /// Remembers the numbers of a phone book entry that was saved, beside the index, which keeps what it
    /// read.
    void entrySaved(qint32 sn, const QString &numbers);

    bool isLoading() const { return m_phoneBook.reading || m_customers.reading; }
    /// Reads on for a few milliseconds. False after a failure, and while another program has locked the file.
    bool continueLoading();
    /// Some customer's number can be found.
    bool knowsCustomers() const { return !m_customers.entries.isEmpty(); }
    /// The same of the phone book.
    bool knowsPhoneBook() const { return !m_phoneBook.entries.isEmpty(); }
    /// Why the last reading of the phone book, or of the customers, failed.
    const std::optional<core::Error> &phoneBookFailure() const { return m_phoneBook.failure; }
    const std::optional<core::Error> &customersFailure() const { return m_customers.failure; }
    /// The last reading found a customer without a pop-up flag.
    bool hasUnflagged() const { return m_hasUnflagged; }

    std::optional<qint32> GetSnByPhoneNumber(QStringView phoneNumber);
    std::optional<qint32> GetCustomerSnByPhoneNumber(QStringView phoneNumber);
    /// The lookup of a call, given the number as received without the blanks around it; never reads a file.
    /// No log entry where the index was never loaded: a desk may well have no customers.
    std::optional<qint32> FindCustomerSnOfCaller(QStringView callerNumber) const;
    /// All rows that may hold a number now; a phone book entry may have lost it. They never read a file.
    std::vector<qint32> entriesWith(QStringView phoneNumber) const;
    std::vector<qint32> customersWith(QStringView phoneNumber) const
    {
        return CustomerPhoneNumberSnArray.findAll(phoneNumber);
    }
    /// What a call shows of a customer; nothing where nobody has that SN.
    std::optional<KnownCustomer> customer(qint32 sn) const { return m_known.find(sn); }

private:
    /// An index with the name of its procedure and, while its table is read, what will take its place.
    struct Index
    {
        QLatin1StringView procedure;
        NumberEntries &entries;
        std::optional<NumberReading> reading = {};
        std::optional<core::Error> failure = {};
        bool isWhole = false;
    };

    CallerTable phoneBookTable() const;
    CallerTable customerTable() const;
    bool attempt(Index &index, const std::function<void()> &work);
    bool load(Index &index, const CallerTable &table);
    bool readOn(Index &index);
    void exchange(Index &index);
    bool replaceCustomer(qint32 sn, const std::optional<CustomerFacts> &onFile);
    const NumberEntries &whole(Index &index);
    std::optional<qint32> find(QLatin1StringView procedure, Index &index, QStringView number);

    const core::Paths &m_paths;
    core::RunLog &m_log;
    const core::CodePage &m_codePage;
    NumberEntries PhoneNumberSNArray;
    NumberEntries CustomerPhoneNumberSnArray;
    NumberEntries m_savedEntries; ///< of the phone book, since the start
    Index m_phoneBook{QLatin1StringView("LoadPhoneNumberSNArray"), PhoneNumberSNArray};
    Index m_customers{QLatin1StringView("LoadCustomerPhoneNumberSnArray"), CustomerPhoneNumberSnArray};
    KnownCustomers m_known; ///< those whose numbers the index holds
    bool m_hasUnflagged = false;
    /// Customers who were saved or deleted while their index is being read.
    std::vector<std::pair<qint32, std::optional<CustomerFacts>>> m_savedMeanwhile;
};

} // namespace lookup
