#include "lookup/NumberIndex.h"

#include "lookup/PhoneNumbers.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace lookup {

bool NumberIndex::LoadPhoneNumberSNArray()
{
    return m_log.trap("LoadPhoneNumberSNArray"_L1, [&] {
        PhoneNumberSNArray = load(m_paths.PhoneBookFile, u"phonebook"_s, {u"Telno"_s});
    });
}

bool NumberIndex::LoadCustomerPhoneNumberSnArray()
{
    return m_log.trap("LoadCustomerPhoneNumberSnArray"_L1, [&] {
        CustomerPhoneNumberSnArray =
            load(m_paths.CustomerFile, u"Customer"_s,
                 {u"WorkPhones"_s, u"ContactPersonMobile"_s, u"Fax"_s, u"ContactPersonHomePhones"_s});
    });
}

qint32 NumberIndex::GetSnByPhoneNumber(QStringView phoneNumber) const
{
    return find("GetSnByPhoneNumber"_L1, PhoneNumberSNArray, phoneNumber);
}

qint32 NumberIndex::GetCustomerSnByPhoneNumber(QStringView phoneNumber) const
{
    return find("GetCustomerSnByPhoneNumber"_L1, CustomerPhoneNumberSnArray, phoneNumber);
}

qint32 NumberIndex::FindCustomerSnOfCaller(QStringView callerNumber) const
{
    return CustomerPhoneNumberSnArray.find(callerNumber);
}

// Built aside, so that a reading that breaks off leaves the old index whole.
NumberEntries NumberIndex::load(const QString &file, const QString &table,
                                const QStringList &numberColumns) const
{
    NumberEntries entries;
    bool hasRows = false;
    QString numbers;
    store::Database database(file);
    database.forEachRow(table, QStringList(u"SN"_s) + numberColumns, [&](const store::Row &row) {
        hasRows = true;
        numbers.resize(0);
        for (int column = 1; column <= numberColumns.size(); ++column) {
            if (column > 1) {
                numbers += u',';
            }
            row.appendTo(numbers, column);
        }
        for (const QStringView piece : phoneNumberPieces(m_log, numbers)) {
            entries.append(piece, row.integer(0));
        }
    });
    if (!hasRows) {
        entries.append({}, 0);
    }
    if (entries.isEmpty()) {
        throw core::Error(0, u"no row holds a number: "_s + table);
    }
    entries.finish();
    return entries;
}

qint32 NumberIndex::find(QLatin1StringView procedure, const NumberEntries &index, QStringView number) const
{
    return m_log.trap(procedure, -1, [&] {
        if (index.isEmpty()) {
            throw core::Error(0, u"the number index was never loaded"_s);
        }
        return index.find(number);
    });
}

} // namespace lookup
