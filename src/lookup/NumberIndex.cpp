#include "lookup/NumberIndex.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

QStringList customerNumbers()
{
    return {u"WorkPhones"_s, u"ContactPersonMobile"_s, u"Fax"_s, u"ContactPersonHomePhones"_s};
}

/// What an empty table gives.
bool isBlank(const NumberEntries &entries)
{
    return entries.size() == 1 && entries.at(0).SN == 0 && entries.at(0).PhoneNumber.isEmpty();
}

} // namespace

bool NumberIndex::LoadPhoneNumberSNArray()
{
    return load(m_phoneBook, m_paths.PhoneBookFile, u"phonebook"_s, {u"Telno"_s});
}

bool NumberIndex::LoadCustomerPhoneNumberSnArray()
{
    m_savedMeanwhile.clear(); // the reading that begins sees them
    return load(m_customers, m_paths.CustomerFile, u"Customer"_s, customerNumbers());
}

bool NumberIndex::updateCustomer(qint32 sn)
{
    if (m_customers.reading) {
        m_savedMeanwhile.push_back(sn);
        return true;
    }
    bool updated = false;
    const bool done = m_log.trap(m_customers.procedure, [&] { updated = replaceCustomer(sn); });
    return done && (updated || LoadCustomerPhoneNumberSnArray());
}

/// False where only a rebuild will do.
bool NumberIndex::replaceCustomer(qint32 sn)
{
    if (m_customers.entries.isEmpty() || isBlank(m_customers.entries)) {
        return false;
    }
    const QStringList columns = customerNumbers();
    const QString select = u"select rowid,%1 from Customer where SN=%2"_s.arg(columns.join(u',')).arg(sn);
    QString numbers;
    bool inOrderOfSn = true;
    store::Database(m_paths.CustomerFile).forEachRow(select, [&](const store::Row &row) {
        inOrderOfSn = row.key(0) == sn;
        appendNumbers(numbers, row, 1, int(columns.size()));
    });
    return inOrderOfSn && m_customers.entries.replace(sn, pieces(numbers));
}

PhoneNumberPieces NumberIndex::pieces(QStringView numbers) const
{
    return phoneNumberPieces(m_log, m_codePage, numbers);
}

bool NumberIndex::continueLoading()
{
    return m_phoneBook.reading ? readOn(m_phoneBook) : !m_customers.reading || readOn(m_customers);
}

qint32 NumberIndex::GetSnByPhoneNumber(QStringView phoneNumber)
{
    return find("GetSnByPhoneNumber"_L1, m_phoneBook, phoneNumber);
}

qint32 NumberIndex::GetCustomerSnByPhoneNumber(QStringView phoneNumber)
{
    return find("GetCustomerSnByPhoneNumber"_L1, m_customers, phoneNumber);
}

qint32 NumberIndex::FindCustomerSnOfCaller(QStringView callerNumber)
{
    return whole(m_customers).find(callerNumber);
}

bool NumberIndex::load(Index &index, const QString &file, const QString &table,
                       const QStringList &numberColumns)
{
    index.reading.reset();
    return m_log.trap(index.procedure, [&] {
        index.reading.emplace(m_log, m_codePage, file, table, numberColumns);
    }) && readOn(index);
}

// Read aside, so that a reading that breaks off leaves the old index whole.
bool NumberIndex::readOn(Index &index)
{
    bool ended = true;
    const bool done = m_log.trap(index.procedure, [&] {
        ended = index.reading->readOn();
        if (ended) {
            index.entries = index.reading->take();
        }
    });
    if (!done || ended) {
        index.reading.reset();
        if (&index == &m_customers) {
            for (const qint32 sn : std::exchange(m_savedMeanwhile, {})) {
                updateCustomer(sn);
            }
        }
    }
    return done;
}

const NumberEntries &NumberIndex::whole(Index &index)
{
    while (index.reading) {
        readOn(index);
    }
    return index.entries;
}

qint32 NumberIndex::find(QLatin1StringView procedure, Index &index, QStringView number)
{
    return m_log.trap(procedure, -1, [&] {
        if (whole(index).isEmpty()) {
            throw core::Error(0, u"the number index was never loaded"_s);
        }
        return index.entries.find(number);
    });
}

} // namespace lookup
