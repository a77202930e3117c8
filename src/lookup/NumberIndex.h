#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "lookup/NumberEntries.h"

#include <QStringList>

namespace lookup {

/// Who holds a number: the numbers of the phone book and of the customers, held in memory so that a call
/// needs no database to be identified. A lookup compares every character; callers strip a number to its
/// digits first where they want that. Every lookup gives -1 where nobody holds the number, and also, with a
/// log entry, in an index that was never loaded.
class NumberIndex
{
public:
    /// Both must outlive the index.
    NumberIndex(const core::Paths &paths, core::RunLog &log) : m_paths(paths), m_log(log) {}

    /// Rebuild an index from its table. An empty table gives one entry, an empty number with SN 0; after a
    /// failure, rows without a single number included, the index keeps what it held.
    bool LoadPhoneNumberSNArray();
    bool LoadCustomerPhoneNumberSnArray();

    qint32 GetSnByPhoneNumber(QStringView phoneNumber) const;
    qint32 GetCustomerSnByPhoneNumber(QStringView phoneNumber) const;
    /// The lookup of a call, given the number as received without the blanks around it. -1 without a log
    /// entry where the index was never loaded: a desk may well have no customers.
    qint32 FindCustomerSnOfCaller(QStringView callerNumber) const;

private:
    NumberEntries load(const QString &file, const QString &table, const QStringList &numberColumns) const;
    qint32 find(QLatin1StringView procedure, const NumberEntries &index, QStringView number) const;

    const core::Paths &m_paths;
    core::RunLog &m_log;
    NumberEntries PhoneNumberSNArray;
    NumberEntries CustomerPhoneNumberSnArray;
};

} // namespace lookup
