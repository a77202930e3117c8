#include "DeliveredFiles.h"
#include "store/Upgrade.h"

#include <QElapsedTimer>

class tst_Upgrade : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        store::CustomerPopUpTable table;
        void runBoth()
        {
            store::FixCustomerData(log, paths, table);
            QVERIFY(store::UpdateDatabase_Customer_0606191111(log, paths));
        }
        QString fixed() const
        {
            QStringList rows;
            store::Database(paths.CustomerFile)
                .forEachRow(u"select T3, CustomerID from customer order by SN"_s,
                            [&](const store::Row &row) { rows.append(row.text(0) + u'/' + row.text(1)); });
            return rows.join(u'|');
        }
    };

private Q_SLOTS:
    void bothCallNoteTablesAreAddedOnce()
    {
        Desk desk;
        deliver(u"Customer"_s, desk.paths.CustomerFile);
        desk.runBoth();
        desk.runSql(
            desk.paths.CustomerFile,
            u"insert into callinfo values('Call1','Acme','2026-11-21 09:30:15','Ann','00123');"
            "insert into customerrequest values('Call1','00123','1e5',1,'');"
            "drop index CallInfo_CustomerName; drop index customer_CustomerType"_s); // as in a file of an
                                                                                     // older program
        desk.runBoth();
        store::Database database(desk.paths.CustomerFile);
        QCOMPARE(database.tableNames(), QStringList({u"customer"_s, u"CallInfo"_s, u"CustomerRequest"_s}));
        const auto kept = [&](const QString &from) {
            return database.OpenRecordset(u"select * from "_s + from);
        };
        QCOMPARE(kept(u"CallInfo where [callid]='CALL1'"_s).value(u"CallContent"_s).toString(), u"00123"_s);
        store::Recordset requests = kept(u"CustomerRequest where [IfResolved] = True"_s);
        QCOMPARE(requests.value(u"Response"_s).toString(), u"1e5"_s);
        QCOMPARE(requests.value(u"IfResolved"_s), QVariant(true));
        QStringList indexes;
        database.forEachRow(u"select name from sqlite_schema where type='index'"_s,
                            [&](const store::Row &row) { indexes.append(row.text(0)); });
        for (const QString &name :
             {u"CallInfo_CustomerName"_s, u"CustomerRequest_CallID"_s, u"customer_CustomerType"_s}) {
            QVERIFY2(indexes.contains(name), qPrintable(name));
        }
        database.Execute(u"drop table CallInfo"_s); // one of them alone counts as upgraded, too
        desk.runBoth();
        QVERIFY(!database.tableNames().contains(u"CallInfo"_s));
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void fixUpsRepairFlagsAndSingleBlanksBehindThePopUpTable()
    {
        Desk desk;
        deliver(u"Customer"_s, desk.paths.CustomerFile);
        desk.runSql(desk.paths.CustomerFile,
                    u"insert into customer(SN,T3,CustomerID) values(7,null,' '),(8,'','  '),(9,' ',''),"
                    "(10,'0','AB-1'),(2000000000,' 0 ',null)"_s);
        desk.table.append(1, "old");
        desk.runBoth();
        QCOMPARE(desk.fixed(), u"1/|1/  |1/|0/AB-1| 0 /"_s);
        QCOMPARE(desk.table.rowCount(), 5);
        QCOMPARE(desk.table.T3(7), std::optional(u""_s));
        QCOMPARE(desk.table.T3(10), std::optional(u"0"_s));
        QCOMPARE(desk.table.T3(2'000'000'000), std::optional(u" 0 "_s));
        QCOMPARE(desk.table.T3(1), std::nullopt);
    }

    void oneCustomerIsFixedAsAllAre_data()
    {
        const support::Table<QString> row("change");
        row("no flag, blank ID", u"update customer set T3=null,CustomerID=' '"_s);
        row("empty flag, two blanks", u"update customer set T3='',CustomerID='  '"_s);
        row("blank flag, no ID", u"update customer set T3=' ',CustomerID=null"_s);
        row("switched off", u"update customer set T3='0'"_s);
        row("deleted", u"delete from customer"_s);
    }
    void oneCustomerIsFixedAsAllAre()
    {
        QFETCH(QString, change);
        QStringList outcomes;
        for (const bool one : {true, false}) {
            Desk desk;
            deliver(u"Customer"_s, desk.paths.CustomerFile);
            desk.runSql(desk.paths.CustomerFile,
                        u"insert into customer(SN,T3,CustomerID) values(7,'1','A'),(8,'0','B')"_s);
            desk.runBoth();
            desk.runSql(desk.paths.CustomerFile, change + u" where SN=7"_s);
            QCOMPARE(one ? store::FixSavedCustomer(desk.log, desk.paths, desk.table, 7)
                         : store::FixCustomerData(desk.log, desk.paths, desk.table),
                     1);
            outcomes.append(desk.fixed() + desk.table.T3(7).value_or(u"gone"_s) +
                            desk.table.T3(8).value_or(u"gone"_s));
        }
        QCOMPARE(outcomes.first(), outcomes.last());
    }

    void aLockedFileIsLoggedOnceByEachInGoodTime()
    {
        Desk desk;
        deliver(u"Customer"_s, desk.paths.CustomerFile);
        store::Database other(desk.paths.CustomerFile);
        other.Execute(u"begin exclusive"_s);
        desk.table.append(1, "1");
        QElapsedTimer timer;
        timer.start();
        desk.runBoth();
        QVERIFY2(timer.elapsed() < 500, "the window stood still");
        const QStringList messages = desk.logMessages();
        QVERIFY(messages.value(0).startsWith(u"!FixCustomerData 5 "_s));
        QVERIFY(messages.value(1).startsWith(u"!UpdateDatabase_Customer_0606191111 5 "_s));
        QVERIFY(desk.table.T3(1).has_value());
    }
};

QTEST_GUILESS_MAIN(tst_Upgrade)
#include "tst_Upgrade.moc"
