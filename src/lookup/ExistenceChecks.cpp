#include "lookup/ExistenceChecks.h"

#include "core/TextUtilities.h"
#include "lookup/PhoneNumbers.h"
#include "store/Database.h"
#include "store/SqlDialect.h"

using namespace Qt::StringLiterals;

namespace lookup {

QString ExistenceChecks::IfNumbersExistInSimplePhoneBook(const QString &numbers) const
{
    return m_needs.log.trap("IfNumbersExistInSimplePhoneBook"_L1, QString(), [&] {
        return check(numbers, &NumberIndex::GetSnByPhoneNumber, u"Select * from phonebook where sn = "_s,
                     &core::Navigator::showPhoneBook);
    });
}

QString ExistenceChecks::IfThePhoneNumberExistInCustomer(const QString &numbers) const
{
    return m_needs.log.trap("IfThePhoneNumberExistInCustomer"_L1, QString(), [&] {
        return check(numbers, &NumberIndex::GetCustomerSnByPhoneNumber,
                     u"Select * from customer where sn = "_s, &core::Navigator::showCustomerList);
    });
}

QString ExistenceChecks::IfTheCustumerExist(const QString &name) const
{
    return m_needs.log.trap("IfTheCustumerExist"_L1, QString(), [&] {
        if (name.isEmpty()) {
            return QString();
        }
        const QString query =
            u"Select * from customer where  customername like '*"_s + store::quoted(name) + u"*'"_s;
        store::Database database(m_needs.paths.CustomerFile);
        return database.OpenRecordset(query).RecordCount() == 0 ? u"NO"_s : query;
    });
}

QString ExistenceChecks::check(const QString &numbers, Lookup lookUp, const QString &query, Show show) const
{
    if (numbers.isEmpty()) {
        return {};
    }
    const Found found = firstOwner(numbers, lookUp);
    if (found.sn == -1) {
        return u"NO"_s;
    }
    m_needs.prompts.tell(m_needs.texts.Lms(u"ThePhoneNumberExists"_s), core::shownText(found.number));
    (m_needs.navigator.*show)(query + QString::number(found.sn));
    return {};
}

ExistenceChecks::Found ExistenceChecks::firstOwner(const QString &numbers, Lookup lookUp) const
{
    for (const QStringView piece : phoneNumberPieces(m_needs.log, numbers)) {
        const qint32 sn = (m_needs.index.*lookUp)(core::DigitsOnly(piece));
        if (sn != -1) {
            return {sn, piece.trimmed().toString()};
        }
    }
    return {};
}

} // namespace lookup
