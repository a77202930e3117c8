#pragma once

#include "customers/CustomerEditing.h"
#include "store/DeliveredFiles.h"
#include "support/Rows.h"

/// Records what a saved customer causes.
struct FakeCustomerEffects : customers::CustomerEffects
{
    QStringList called; ///< one line a call
    QList<core::CustomerInfo> sent;
    lookup::CustomerFacts onFile; ///< of the last one
    std::function<void()> refreshes = [] {};

    void refreshCustomerList() override
    {
        called.append(u"refreshCustomerList"_s);
        refreshes();
    }
    void SendTDRData(const core::CustomerInfo &info) override { sent.append(info); }
    void customerSaved(qint32 sn, const QString &oldName, const lookup::CustomerFacts &saved) override
    {
        called.append(u"customerSaved %1 %2 %3"_s.arg(sn).arg(oldName, saved.name));
        onFile = saved;
    }
    void customerDeleted(qint32 sn) override { called.append(u"customerDeleted %1"_s.arg(sn)); }
};

/// Runs one statement on the customer database and gives the rows of a select.
inline QString customerSql(const support::TestDesk &desk, const QString &sql, const QVariantList &bound = {})
{
    if (sql.startsWith(u"select"_s)) {
        return support::rowsOf(desk.paths.CustomerFile, sql);
    }
    store::Database(desk.paths.CustomerFile).Execute(sql, bound);
    return {};
}

/// Another value in each field; check boxes, whose values must repeat, are told apart by their columns.
inline customers::CustomerRecord fullCustomer(const QString &text = u"VALUE %1"_s)
{
    customers::CustomerRecord customer;
    for (size_t place = 0; place < customer.shown.size(); ++place) {
        const bool check = customers::customerFields()[place].kind >= customers::FieldKind::FlagLetter;
        customer.shown.at(place) = check ? u"1"_s : QString(text).replace(u"%1"_s, QString::number(place));
    }
    return customer;
}
