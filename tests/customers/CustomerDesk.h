#pragma once

#include "customers/CustomerEditing.h"
#include "store/DeliveredFiles.h"

/// Records what a saved customer causes.
struct FakeCustomerEffects : customers::CustomerEffects
{
    QStringList called; ///< one line a call
    QList<core::CustomerInfo> sent;

    void refreshCustomerList() override { called.append(u"refreshCustomerList"_s); }
    void SendTDRData(const core::CustomerInfo &info) override { sent.append(info); }
    void customerSaved(qint32 sn, const QString &oldName, const QString &newName) override
    {
        called.append(u"customerSaved %1 %2 %3"_s.arg(sn).arg(oldName, newName));
    }
    void customerDeleted(qint32 sn) override { called.append(u"customerDeleted %1"_s.arg(sn)); }
};

/// Runs one statement on the customer database and gives the first row of a select, columns joined by "|".
inline QString customerSql(const support::TestDesk &desk, const QString &sql, const QVariantList &bound = {})
{
    store::Database database(desk.paths.CustomerFile);
    if (!sql.startsWith(u"select"_s)) {
        database.Execute(sql, bound);
        return {};
    }
    store::Recordset rows = database.OpenRecordset(sql, bound);
    QStringList values;
    for (int column = 0; !rows.EOFile() && column < rows.fieldNames().size(); ++column) {
        values.append(rows.value(column).isNull() ? u"Null"_s : rows.value(column).toString());
    }
    return values.join(u'|');
}

/// Another value in each field; check boxes, whose values must repeat, are told apart by their columns.
inline customers::CustomerRecord fullCustomer()
{
    customers::CustomerRecord customer;
    int number = 0;
    for (const customers::CustomerField &field : customers::customerFields()) {
        const bool check = field.kind >= customers::FieldKind::FlagLetter;
        customer.shown.at(size_t(number)) = check ? u"1"_s : u"VALUE %1"_s.arg(number);
        ++number;
    }
    return customer;
}
