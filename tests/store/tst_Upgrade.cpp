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
        QString fixed() const { return rows(u"select T3, CustomerID from customer order by SN"_s); }
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
        database.Execute(u"drop table CallInfo"_s); // one of them alone counts as upgraded, too
        desk.runBoth();
        QVERIFY(!database.tableNames().contains(u"CallInfo"_s));
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void fixUpsRepairFlagsAndSingleBlanks()
    {
        Desk desk;
        desk.runSql(desk.paths.CustomerFile,
                    u"insert into customer(SN,T3,CustomerID) values(7,null,' '),(8,'','  '),(9,' ',''),"
                    "(10,'0','AB-1'),(2000000000,' 0 ',null)"_s);
        desk.runBoth();
        QCOMPARE(desk.fixed(), u"1|\n1|  \n1|\n0|AB-1\n 0 |Null"_s);
    }

    void manyRowsAreRepairedSomeAtATime()
    {
        Desk desk;
        desk.runSql(desk.paths.CustomerFile,
                    u"insert into customer(CustomerID) with recursive counted(i) as (select 1 union all "
                    "select i + 1 from counted where i < 1500) select ' ' from counted"_s);
        QCOMPARE(store::FixCustomerData(desk.log, desk.paths), store::moreToFix);
        QCOMPARE(store::FixCustomerData(desk.log, desk.paths), 1);
        QCOMPARE(desk.rows(u"select count(*) from customer where T3='1' and CustomerID=''"_s), u"1500"_s);
    }

    void aRowThatIsBeingWrittenIsFixedAsAllAre()
    {
        for (const QString &change :
             {u"update customer set T3=null,CustomerID=' '"_s, u"update customer set T3='',CustomerID='  '"_s,
              u"update customer set T3=' ',CustomerID=null"_s, u"update customer set T3='0'"_s}) {
            QStringList outcomes;
            for (const bool one : {true, false}) {
                Desk desk;
                desk.runSql(desk.paths.CustomerFile,
                            u"insert into customer(SN,T3,CustomerID) values(7,'1','A'),(8,'0','B')"_s);
                desk.runBoth();
                desk.runSql(desk.paths.CustomerFile, change + u" where SN=7"_s);
                if (one) {
                    store::Database database(desk.paths.CustomerFile);
                    store::Recordset customer = database.OpenRecordset(u"customer"_s);
                    customer.Edit();
                    store::repairCustomer(customer);
                    customer.Update();
                } else {
                    QCOMPARE(store::FixCustomerData(desk.log, desk.paths), 1);
                }
                outcomes.append(desk.fixed());
            }
            QCOMPARE(outcomes.first(), outcomes.last());
        }
    }
};

QTEST_GUILESS_MAIN(tst_Upgrade)
#include "tst_Upgrade.moc"
