#include "lookup/ExistenceChecks.h"

#include "core/TextUtilities.h"
#include "store/Database.h"
#include "store/SqlDialect.h"

using namespace Qt::StringLiterals;

namespace lookup {

QString ownerText(const core::TextLookup &texts, const Owner &owner)
{
    const auto value = [](const QString &text) { return core::isolated(core::shownText(text)); };
    const QString text = texts.Lms(owner.number.isEmpty() ? u"NameOnFile"_s : u"NumberBelongsTo"_s);
    return text.split(u"%1"_s).join(value(owner.number)).split(u"%2"_s).join(value(owner.name));
}

std::optional<Owner> ExistenceChecks::ownerOfNumbers(Owner::Table table, const QString &numbers,
                                                     std::optional<qint32> edited) const
{
    if (numbers.isEmpty()) {
        return {};
    }
    for (const QStringView piece : m_needs.index.pieces(numbers)) {
        const QString digits = core::DigitsOnly(piece);
        if (digits.isEmpty()) { // a word is nobody's number, though the index holds those of other rows
            continue;
        }
        const qint32 sn = table == Owner::Table::PhoneBook ? m_needs.index.GetSnByPhoneNumber(digits)
                                                           : m_needs.index.GetCustomerSnByPhoneNumber(digits);
        if (sn != -1 && sn != edited) {
            return Owner{table, sn, nameOf(table, sn), piece.trimmed().toString()};
        }
    }
    return {};
}

/// Customers stand in memory. An entry of the phone book that cannot be read right now has no name.
QString ExistenceChecks::nameOf(Owner::Table table, qint32 sn) const
{
    if (table == Owner::Table::Customer) {
        const std::optional<KnownCustomer> customer = m_needs.index.customer(sn);
        return customer ? customer->name : QString();
    }
    QString name;
    m_needs.log.trap("nameOfOwner"_L1, [&] {
        store::Database database(m_needs.paths.PhoneBookFile);
        database.forEachBoundRow(u"select simpledes from phonebook where SN=?"_s, {sn},
                                 [&](const store::Row &row) { name = row.text(0); });
    });
    return name;
}

std::optional<Owner> ExistenceChecks::customerNamed(const QString &name, std::optional<qint32> edited) const
{
    std::optional<Owner> owner;
    const QString query = IfTheCustumerExist(name);
    if (query.isEmpty() || query == "NO"_L1) {
        return owner;
    }
    m_needs.log.trap("IfTheCustumerExist"_L1, [&] {
        store::Database database(m_needs.paths.CustomerFile);
        store::Recordset found = database.OpenRecordset(query);
        while (!found.EOFile() && found.value(u"SN"_s).toInt() == edited) {
            found.MoveNext();
        }
        if (!found.EOFile()) {
            owner = Owner{Owner::Table::Customer,
                          found.value(u"SN"_s).toInt(),
                          found.value(u"CustomerName"_s).toString(),
                          {}};
        }
    });
    return owner;
}

void ExistenceChecks::tell(const Owner &owner, QWidget *editor) const
{
    const QString key = owner.number.isEmpty() ? u"CustomerExisted"_s : u"ThePhoneNumberExists"_s;
    m_needs.prompts.tell(m_needs.texts.Lms(key) + u'\n' + ownerText(m_needs.texts, owner),
                         core::shownText(owner.number), editor);
    const QString sn = QString::number(owner.sn);
    if (owner.number.isEmpty()) {
        return;
    }
    if (owner.table == Owner::Table::PhoneBook) {
        m_needs.navigator.showPhoneBook(u"Select * from phonebook where sn = "_s + sn, editor);
    } else {
        m_needs.navigator.showCustomerList(u"Select * from customer where sn = "_s + sn, editor);
    }
}

QString ExistenceChecks::IfNumbersExistInSimplePhoneBook(const QString &numbers, QWidget *editor) const
{
    return m_needs.log.trap("IfNumbersExistInSimplePhoneBook"_L1, QString(),
                            [&] { return check(Owner::Table::PhoneBook, numbers, editor); });
}

QString ExistenceChecks::IfThePhoneNumberExistInCustomer(const QString &numbers, QWidget *editor) const
{
    return m_needs.log.trap("IfThePhoneNumberExistInCustomer"_L1, QString(),
                            [&] { return check(Owner::Table::Customer, numbers, editor); });
}

QString ExistenceChecks::check(Owner::Table table, const QString &numbers, QWidget *editor) const
{
    if (numbers.isEmpty()) {
        return {};
    }
    const std::optional<Owner> owner = ownerOfNumbers(table, numbers, {});
    if (owner) {
        tell(*owner, editor);
    }
    return owner ? QString() : u"NO"_s;
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

} // namespace lookup
