#include "lookup/NumberIndex.h"

using namespace Qt::StringLiterals;

namespace lookup {

bool NumberIndex::LoadPhoneNumberSNArray()
{
    return load(m_phoneBook, m_paths.PhoneBookFile, u"phonebook"_s, {u"Telno"_s});
}

bool NumberIndex::LoadCustomerPhoneNumberSnArray()
{
    return load(m_customers, m_paths.CustomerFile, u"Customer"_s,
                {u"WorkPhones"_s, u"ContactPersonMobile"_s, u"Fax"_s, u"ContactPersonHomePhones"_s});
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
    return m_log.trap(index.procedure, [&] { index.reading.emplace(m_log, file, table, numberColumns); }) &&
           readOn(index);
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
