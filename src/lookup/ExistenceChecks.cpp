#include "lookup/ExistenceChecks.h"

#include "core/TextUtilities.h"
#include "store/Database.h"
#include "store/LockPatience.h"
#include "store/SqlDialect.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lookup {

QString ExistenceChecks::text(const Owner &owner) const
{
    const auto value = [](const QString &text) { return core::isolated(core::shownText(text)); };
    const QString text = m_needs.texts.Lms(owner.number.isEmpty() ? u"NameOnFile"_s : u"NumberBelongsTo"_s);
    return text.split(u"%1"_s).join(value(owner.number)).split(u"%2"_s).join(value(owner.name));
}

void ExistenceChecks::open(const Owner &owner) const
{
    const bool phoneBook = owner.table == Owner::Table::PhoneBook;
    m_needs.navigator.Show_Editor(phoneBook ? u"PHONEBOOK"_s : u"CUSTOMER"_s, owner.sn);
}

/// A word is nobody's number, though the index holds those of other rows.
std::optional<Owner>
ExistenceChecks::firstOwner(Owner::Table table, const QString &numbers,
                            const std::function<std::optional<Owner>(const QString &digits)> &ownerOf) const
{
    for (const QStringView piece : m_needs.index.pieces(numbers)) {
        const QString digits = core::DigitsOnly(piece);
        if (std::optional<Owner> owner = digits.isEmpty() ? std::nullopt : ownerOf(digits)) {
            owner->table = table;
            owner->number = piece.trimmed().toString();
            return owner;
        }
    }
    return {};
}

std::optional<Owner> ExistenceChecks::ownerOfNumbers(Owner::Table table, const QString &numbers,
                                                     std::optional<qint32> edited) const
{
    const bool phoneBook = table == Owner::Table::PhoneBook;
    return firstOwner(table, numbers, [&](const QString &digits) -> std::optional<Owner> {
        for (const qint32 sn :
             phoneBook ? m_needs.index.entriesWith(digits) : m_needs.index.customersWith(digits)) {
            const auto name = sn == edited ? std::nullopt : nameOfHolder(table, sn, digits);
            if (name) {
                return Owner{.sn = sn, .name = *name};
            }
        }
        return {};
    });
}

std::optional<Owner> ExistenceChecks::indexedOwner(Owner::Table table, const QString &numbers) const
{
    return firstOwner(table, numbers, [&](const QString &digits) {
        const qint32 sn = table == Owner::Table::PhoneBook ? m_needs.index.GetSnByPhoneNumber(digits)
                                                           : m_needs.index.GetCustomerSnByPhoneNumber(digits);
        return sn == -1 ? std::nullopt
                        : std::optional(
                              Owner{.sn = sn, .name = nameOfHolder(table, sn, digits).value_or(QString())});
    });
}

/// Customers stand in memory as they stand on file. An entry of the phone book may have been changed or
/// deleted since the number was read.
std::optional<QString> ExistenceChecks::nameOfHolder(Owner::Table table, qint32 sn,
                                                     const QString &digits) const
{
    if (table == Owner::Table::Customer) {
        const std::optional<KnownCustomer> customer = m_needs.index.customer(sn);
        return customer ? std::optional(customer->name.toString()) : std::nullopt;
    }
    std::optional<QString> name;
    m_needs.log.trap("nameOfOwner"_L1, [&] {
        const store::NoWaiting atOnce;
        store::Database database(m_needs.paths.PhoneBookFile);
        database.forEachBoundRow(u"select simpledes,Telno from phonebook where SN=?"_s, {sn},
                                 [&](const store::Row &row) {
                                     const QString numbers = row.text(1);
                                     const auto pieces = m_needs.index.pieces(numbers);
                                     const bool holds = std::ranges::any_of(pieces, [&](QStringView piece) {
                                         return core::DigitsOnly(piece) == digits;
                                     });
                                     name = holds ? std::optional(row.text(0)) : std::nullopt;
                                 });
    });
    return name;
}

OwnerAnswer ExistenceChecks::customerNamed(const QString &name, std::optional<qint32> edited) const
{
    std::optional<Owner> owner;
    const QString answer = IfTheCustumerExist(name, [&](const store::Recordset &customer) {
        const qint32 sn = customer.value(u"SN"_s).toInt();
        if (sn != edited) {
            owner = Owner{.sn = sn, .name = customer.value(u"CustomerName"_s).toString()};
        }
        return !owner;
    });
    return {.isAnswered = !answer.isEmpty(), .owner = owner};
}

void ExistenceChecks::tell(const Owner &owner, QWidget *editor) const
{
    const QString key = owner.number.isEmpty() ? u"CustomerExisted"_s : u"ThePhoneNumberExists"_s;
    const QString whose = owner.name.isEmpty() ? QString() : u'\n' + text(owner);
    m_needs.prompts.tell(m_needs.texts.Lms(key) + whose, core::shownText(owner.number), editor);
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
    const std::optional<Owner> owner = indexedOwner(table, numbers);
    if (owner) {
        tell(*owner, editor);
    }
    return owner ? QString() : u"NO"_s;
}

QString ExistenceChecks::IfTheCustumerExist(const QString &name,
                                            const std::function<bool(const store::Recordset &)> &visit) const
{
    return m_needs.log.trap("IfTheCustumerExist"_L1, QString(), [&] {
        if (name.isEmpty()) {
            return QString();
        }
        QString query =
            u"Select * from customer where  customername like '*"_s + store::quoted(name) + u"*'"_s;
        store::Database database(m_needs.paths.CustomerFile);
        store::Recordset found = database.OpenRecordset(query);
        if (found.RecordCount() == 0) {
            return u"NO"_s;
        }
        while (visit && !found.EOFile() && visit(found)) {
            found.MoveNext();
        }
        return query;
    });
}

} // namespace lookup
