#include "customers/CustomerEditing.h"

#include "customers/CustomerForwarding.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace customers {

namespace {

// The messenger shows the home phones, on purpose, and not its own column; the next save writes them there.
CustomerRecord customerOf(const store::Recordset &row)
{
    CustomerRecord customer;
    customer.SN = row.value(u"SN"_s).toInt();
    QString *shown = customer.shown.data();
    for (const CustomerField &field : customerFields()) {
        *shown++ = shownValue(field, row.value(QLatin1StringView(field.column)));
    }
    customer.shown.at(static_cast<size_t>(fieldOf(u"ContactPersonMessenger"))) =
        customer.text(u"ContactPersonHomePhones");
    return customer;
}

bool equalInCapitals(QByteArrayView stored, const QByteArray &capitals, bool capitalsAreAscii)
{
    const bool ascii = capitalsAreAscii && std::all_of(stored.begin(), stored.end(), [](char byte) {
                           return static_cast<signed char>(byte) >= 0;
                       });
    return ascii ? stored.compare(capitals, Qt::CaseInsensitive) == 0
                 : QString::fromUtf8(stored).toUpper().toUtf8() == capitals;
}

} // namespace

bool CustomerEditing::ShowCustomerBySN(qint32 sn)
{
    return show("ShowCustomerBySN"_L1, u"SN"_s, sn);
}

bool CustomerEditing::ShowCustomerByName(const QString &name)
{
    return show("ShowCustomerByName"_L1, u"CustomerName"_s, name);
}

bool CustomerEditing::show(QLatin1StringView procedure, const QString &index, const QVariant &key)
{
    const QString problem = m_context.log.trap(procedure, u"CustomerNotShown"_s, [&] {
        store::Database database(m_context.paths.CustomerFile);
        store::Recordset customers = database.OpenRecordset(u"Customer"_s);
        customers.setIndex(index);
        if (!customers.Seek(key)) {
            return u"CustomerNotFound"_s;
        }
        const CustomerRecord customer = customerOf(customers);
        m_controls.showCustomer(customer);
        m_nameOnFile = customer.text(u"CustomerName");
        m_asLoaded = m_controls.shownCustomer();
        return QString();
    });
    if (!problem.isEmpty()) {
        tell(problem);
    }
    return problem.isEmpty();
}

void CustomerEditing::showNewCustomer(const QString &number)
{
    CustomerRecord customer;
    for (const QStringView flag : {u"IfVIP", u"ifinblacklist"}) {
        customer.shown.at(static_cast<size_t>(fieldOf(flag))) = u"0"_s;
    }
    customer.shown.at(static_cast<size_t>(fieldOf(u"T3"))) = u"1"_s;
    customer.shown.at(static_cast<size_t>(fieldOf(u"WorkPhones"))) = number;
    m_controls.showCustomer(customer);
    m_nameOnFile.clear();
    m_asLoaded = m_controls.shownCustomer();
}

bool CustomerEditing::SaveCustomer()
{
    const CustomerRecord customer = m_controls.shownCustomer();
    if (customer.text(u"CustomerName").trimmed().isEmpty()) {
        tell(u"PlsInputCustomerName"_s);
        m_controls.turnTo(u"CustomerName");
        return false;
    }
    if (!m_context.log.trapAs("SaveCustomer "_L1, [&] { write(customer); })) {
        tell(u"CustomerNotSaved"_s);
        return false;
    }
    m_context.effects.refreshCustomerList();
    m_context.server.SendServer(u"REFRESHCUSTOMERLIST"_s);
    return true;
}

// The number of a new row is shown as soon as it is reserved, before the row is written.
void CustomerEditing::write(const CustomerRecord &customer)
{
    store::Database database(m_context.paths.CustomerFile);
    store::Recordset customers = database.OpenRecordset(u"Customer"_s);
    customers.setIndex(u"SN"_s);
    if (customers.Seek(customer.SN)) {
        customers.Edit();
        m_nameOnFile = customers.value(u"CustomerName"_s).toString(); // another desk may have renamed him
    } else {
        customers.AddNew();
    }
    const QString *shown = customer.shown.data();
    for (const CustomerField &field : customerFields()) {
        customers.setValue(QLatin1StringView(field.column), storedValue(field, *shown++));
    }
    m_controls.showSN(customers.value(u"SN"_s).toInt());
    customers.Update();
}

// The first match is the one with the smallest key. The table is walked by the column alone, which the engine
// takes from its index where the column has one.
bool CustomerEditing::IfRepeatCustomerField(qint32 sn, const QString &column, const QString &value)
{
    return m_context.log.trap("IfRepeatCustomerField"_L1, false, [&] {
        if (value.isEmpty()) {
            return false;
        }
        const QString name =
            QLatin1StringView(customerFields().at(static_cast<size_t>(fieldOf(column))).column);
        const QByteArray capitals = value.toUpper().toUtf8();
        const bool ascii = value.toUpper().toLatin1() == capitals;
        std::optional<qint32> first;
        store::Database database(m_context.paths.CustomerFile, store::Database::Mode::ReadOnly);
        database.forEachRow(u"select SN, "_s + name + u" from customer"_s, [&](const store::Row &row) {
            if (equalInCapitals(row.bytes(1), capitals, ascii)) {
                first = std::min(row.integer(0), first.value_or(row.integer(0)));
            }
        });
        return first && *first != sn;
    });
}

bool CustomerEditing::save()
{
    const CustomerRecord shown = m_controls.shownCustomer();
    if (IfRepeatCustomerField(shown.SN, u"CustomerID"_s, shown.text(u"CustomerID"))) {
        m_context.prompts.tell(m_context.texts.Lms(u"CustomerID"_s) + m_context.values.WordSeparator +
                               m_context.texts.Lms(u"CustomerIDexisted"_s));
        m_controls.turnTo(u"CustomerID");
        return false;
    }
    if (!SaveCustomer()) {
        return false;
    }
    m_asLoaded = m_controls.shownCustomer();
    const QString name = m_asLoaded.text(u"CustomerName").trimmed();
    m_context.effects.SendTDRData(GetCustomerInfo(m_asLoaded));
    m_context.effects.customerSaved(m_asLoaded.SN, std::exchange(m_nameOnFile, name), name);
    return true;
}

void CustomerEditing::tell(const QString &textKey)
{
    m_context.prompts.tell(m_context.texts.Lms(textKey));
}

} // namespace customers
