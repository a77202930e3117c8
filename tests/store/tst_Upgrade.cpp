#include "DeliveredFiles.h"
#include "store/Upgrade.h"
#include "support/Rows.h"

class tst_Upgrade : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        Desk() { deliver(u"Customer"_s, paths.CustomerFile); }
        void runBoth()
        {
            store::FixCustomerData(log, paths);
            QVERIFY(store::UpdateDatabase_Customer_0606191111(log, paths));
        }
        QString rows(const QString &select) const { return support::rowsOf(paths.CustomerFile, select); }
    };

private Q_SLOTS:
    void bothCallNoteTablesAreAddedOnce()
    {
        Desk desk;
        desk.runBoth();
        desk.runSql(
            desk.paths.CustomerFile,
            u"insert into callinfo values('Call1','Acme','2026-11-21 09:30:15','Ann','00123');"
            "insert into customerrequest values('Call1','00123','1e5',1,'');"
            "drop index CallInfo_CustomerName; drop index customer_CustomerType"_s); // as an older program's
        desk.runBoth();
        store::Database database(desk.paths.CustomerFile);
        QCOMPARE(database.tableNames(), QStringList({u"customer"_s, u"CallInfo"_s, u"CustomerRequest"_s}));
        QCOMPARE(desk.rows(u"select CallContent from CallInfo where [callid]='CALL1'"_s), u"00123"_s);
        QCOMPARE(desk.rows(u"select Response,IfResolved from CustomerRequest where [IfResolved] = True"_s),
                 u"1e5|true"_s);
        QCOMPARE(desk.rows(u"select name from sqlite_schema where type='index' and name in "
                           "('CallInfo_CustomerName','CustomerRequest_CallID','customer_CustomerType')"_s)
                     .count(u'\n'),
                 2);
        desk.runSql(desk.paths.CustomerFile, // the indexes of a table that is kept aside keep their names
                    u"alter table CustomerRequest rename to Kept;"
                    "create table CustomerRequest (CallID text(50))"_s);
        desk.runBoth();
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void flagsAndSingleBlanksAreRepairedInAllRowsAndInOneThatIsBeingWritten()
    {
        for (const bool written : {false, true}) {
            Desk desk;
            desk.runSql(desk.paths.CustomerFile,
                        u"insert into customer(SN,T3,CustomerID) values(7,null,' '),(8,'','  '),(9,' ',''),"
                        "(10,'0','AB-1'),(2000000000,' 0 ',null)"_s);
            if (written) {
                store::Database database(desk.paths.CustomerFile);
                store::Recordset customer = database.OpenRecordset(u"customer"_s);
                for (; !customer.EOFile(); customer.MoveNext()) {
                    customer.Edit();
                    store::repairCustomer(customer);
                    customer.Update();
                }
            } else {
                desk.runBoth();
            }
            QCOMPARE(desk.rows(u"select T3, CustomerID from customer order by SN"_s),
                     u"1|\n1|  \n1|\n0|AB-1\n 0 |Null"_s);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Upgrade)
#include "tst_Upgrade.moc"
