#include "store/Upgrade.h"

#include "store/Database.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

// Both tables or none: either of them alone counts as already upgraded.
void createCallNoteTables(Database &database)
{
    database.transaction([&] {
        database.Execute(u"Create Table CallInfo (CallID text(50) primary key,CustomerName text(255),"
                         "DateAndTime Text(20),Consultant Text(50),CallContent Memo);"_s);
        database.Execute(u"Create Table CustomerRequest ([CallID] text(50),[Request] Memo,[Response] Memo,"
                         "[IfResolved] BIT,[Note] Memo);"_s);
    });
}

// A file that may only be read is not written without need.
void addIndex(Database &database, const QString &table, const QString &name, const QString &columns)
{
    if (!database.hasIndex(table, name)) {
        database.Execute(u"create index %1 on %2 (%3)"_s.arg(name, table, columns));
    }
}

// What the searches and reports of call notes go through. The names in a call's row stand beside its key, so
// that most conditions are answered without reading the row.
void indexCallNotes(Database &database)
{
    addIndex(database, u"CallInfo"_s, u"CustomerName"_s, u"CustomerName,CallID,DateAndTime,Consultant"_s);
    addIndex(database, u"CustomerRequest"_s, u"CallID"_s, u"CallID"_s);
}

} // namespace

bool UpdateDatabase_Customer_0606191111(core::RunLog &log, const core::Paths &paths)
{
    log.trap("UpdateDatabase_Customer_0606191111"_L1, [&] {
        Database database(paths.CustomerFile);
        const QStringList tables = database.tableNames();
        const bool calls = tables.contains(u"CallInfo"_s);
        const bool requests = tables.contains(u"CustomerRequest"_s);
        if (!calls && !requests) {
            createCallNoteTables(database);
        }
        if (calls == requests) {
            indexCallNotes(database);
        }
        addIndex(database, u"customer"_s, u"CustomerType"_s, u"CustomerType"_s); // the list sorts by it
    });
    return true;
}

qint32 FixCustomerData(core::RunLog &log, const core::Paths &paths)
{
    constexpr qint64 rowsAtOnce = 1000;
    const QString some = u" limit "_s + QString::number(rowsAtOnce) + u')';
    return log.trap("FixCustomerData"_L1, 0, [&] {
        qint64 most = 0;
        Database database(paths.CustomerFile);
        database.transaction([&] {
            for (const QString &repair :
                 {u"T3='1' where rowid in (select rowid from customer where T3=' ' or T3='' or isnull(T3)"_s,
                  u"customerid='' where rowid in (select rowid from customer where customerid=' '"_s}) {
                most = std::max(most, database.Execute(u"update customer set "_s + repair + some));
            }
        });
        return most < rowsAtOnce ? 1 : moreToFix;
    });
}

void repairCustomer(Recordset &customer)
{
    const QString popUpFlag = customer.value(u"T3"_s).toString();
    if (popUpFlag.isEmpty() || popUpFlag == " "_L1) {
        customer.setValue(u"T3"_s, u"1"_s);
    }
    if (customer.value(u"CustomerID"_s).toString() == " "_L1) {
        customer.setValue(u"CustomerID"_s, u""_s);
    }
}

} // namespace store
