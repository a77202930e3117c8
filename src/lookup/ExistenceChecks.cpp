#include "lookup/ExistenceChecks.h"

#include "core/TextUtilities.h"
#include "store/Database.h"
#include "store/SqlTokens.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lookup {

QString ExistenceChecks::text(const Owner &owner) const
{
    const auto value = [](const QString &text) { return core::isolated(core::shownText(text)); };
    const QString text = m_context.texts.Lms(owner.number.isEmpty() ? u"NameOnFile"_s : u"NumberBelongsTo"_s);
    return text.split(u"%1"_s).join(value(owner.number)).split(u"%2"_s).join(value(owner.name));
}

void ExistenceChecks::open(const Owner &owner) const
{
    m_context.navigator.Show_Editor(owner.row);
}

// A piece without digits is nobody's number, even though the index holds such entries.
std::optional<Owner>
ExistenceChecks::firstOwner(const QString &numbers,
                            const std::function<std::optional<Owner>(const QString &digits)> &ownerOf) const
{
    for (const QStringView piece : m_context.index.pieces(numbers)) {
        const QString digits = core::DigitsOnly(piece);
        if (std::optional<Owner> owner = digits.isEmpty() ? std::nullopt : ownerOf(digits)) {
            owner->number = piece.trimmed().toString();
            return owner;
        }
    }
    return {};
}

std::optional<Owner> ExistenceChecks::ownerOfNumbers(Table table, const QString &numbers,
                                                     std::optional<qint32> edited) const
{
    const bool phoneBook = table == Table::PhoneBook;
    return firstOwner(numbers, [&](const QString &digits) -> std::optional<Owner> {
        for (const qint32 sn :
             phoneBook ? m_context.index.entriesWith(digits) : m_context.index.customersWith(digits)) {
            const core::RowKey row{.table = table, .sn = sn};
            const auto name = sn == edited ? std::nullopt : nameOfHolder(row, digits);
            if (name) {
                return Owner{.row = row, .name = *name};
            }
        }
        return {};
    });
}

std::optional<Owner> ExistenceChecks::indexedOwner(Table table, const QString &numbers) const
{
    return firstOwner(numbers, [&](const QString &digits) -> std::optional<Owner> {
        const std::optional<qint32> sn = table == Table::PhoneBook
                                             ? m_context.index.GetSnByPhoneNumber(digits)
                                             : m_context.index.GetCustomerSnByPhoneNumber(digits);
        if (!sn) {
            return {};
        }
        const core::RowKey row{.table = table, .sn = *sn};
        return Owner{.row = row, .name = nameOfHolder(row, digits).value_or(QString())};
    });
}

// What is known of customers in memory follows the file. An entry of the phone book may have been changed or
// deleted since its numbers were read, so the file is asked.
std::optional<QString> ExistenceChecks::nameOfHolder(core::RowKey row, const QString &digits) const
{
    if (row.table == Table::Customer) {
        const std::optional<KnownCustomer> customer = m_context.index.customer(row.sn);
        return customer ? std::optional(customer->name.toString()) : std::nullopt;
    }
    std::optional<QString> name;
    m_context.log.trap("nameOfOwner"_L1, [&] {
        const store::NoWaiting atOnce;
        store::Database database(m_context.paths.PhoneBookFile);
        database.forEachBoundRow(u"select simpledes,Telno from phonebook where SN=?"_s, {row.sn},
                                 [&](const store::Row &entry) {
                                     const QString numbers = entry.text(1);
                                     const auto pieces = m_context.index.pieces(numbers);
                                     const bool holds = std::ranges::any_of(pieces, [&](QStringView piece) {
                                         return core::DigitsOnly(piece) == digits;
                                     });
                                     name = holds ? std::optional(entry.text(0)) : std::nullopt;
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
            owner = Owner{.row = {.table = Table::Customer, .sn = sn},
                          .name = customer.value(u"CustomerName"_s).toString()};
        }
        return !owner;
    });
    return {.isAnswered = !answer.isEmpty(), .owner = owner};
}

void ExistenceChecks::tell(const Owner &owner, QWidget *editor) const
{
    const QString key = owner.number.isEmpty() ? u"CustomerExisted"_s : u"ThePhoneNumberExists"_s;
    const QString whose = owner.name.isEmpty() ? QString() : u'\n' + text(owner);
    m_context.prompts.tell(m_context.texts.Lms(key) + whose, core::shownText(owner.number), editor);
    const QString sn = QString::number(owner.row.sn);
    if (owner.number.isEmpty()) {
        return;
    }
    if (owner.row.table == Table::PhoneBook) {
        m_context.navigator.showPhoneBook(u"Select * from phonebook where sn = "_s + sn, editor);
    } else {
        m_context.navigator.showCustomerList(u"Select * from customer where sn = "_s + sn, editor);
    }
}

QString ExistenceChecks::IfNumbersExistInSimplePhoneBook(const QString &numbers, QWidget *editor) const
{
    return m_context.log.trap("IfNumbersExistInSimplePhoneBook"_L1, QString(),
                              [&] { return check(Table::PhoneBook, numbers, editor); });
}

QString ExistenceChecks::IfThePhoneNumberExistInCustomer(const QString &numbers, QWidget *editor) const
{
    return m_context.log.trap("IfThePhoneNumberExistInCustomer"_L1, QString(),
                              [&] { return check(Table::Customer, numbers, editor); });
}

QString ExistenceChecks::check(Table table, const QString &numbers, QWidget *editor) const
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
    return m_context.log.trap("IfTheCustumerExist"_L1, QString(), [&] {
        if (name.isEmpty()) {
            return QString();
        }
        QString query =
            u"Select * from customer where  customername like '*"_s + store::quoted(name) + u"*'"_s;
        store::Database database(m_context.paths.CustomerFile);
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
