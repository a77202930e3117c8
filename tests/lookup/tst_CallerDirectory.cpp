#include "lookup/CallerDirectory.h"
#include "store/DeliveredFiles.h"
#include "support/CustomerOnFile.h"
#include "support/Row.h"
#include "support/Rows.h"

#include <QSignalSpy>

using lookup::CallerDirectory;

/// What a desk knows of its callers: read at start, completed into a call, and followed.
class tst_CallerDirectory : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        core::CodePage codePage{936};
        CallerDirectory callers{paths, log, codePage};

        Desk()
        {
            deliver(u"Customer"_s, paths.CustomerFile);
            runSql(paths.PhoneBookFile, u"create table phonebook (SN counter, Telno text);"
                                        "insert into phonebook values (1, '5550')"_s);
        }
        void save(const QString &sql) const { runSql(paths.CustomerFile, sql); }
        /// As the editor does.
        void saveOwn(int sn, int number)
        {
            {
                store::Database database(paths.CustomerFile);
                database.transaction([&] {
                    database.Execute(u"update customer set WorkPhones=? where SN=?"_s, {number, sn});
                });
            }
            callers.customerSaved(sn, support::customerOnFile(paths.CustomerFile, sn).value());
        }
        /// Customers whose SN is their number, with notes that fill some pages.
        void addCustomers(int first, int last) const
        {
            save(
                u"insert into customer (SN, CustomerName, WorkPhones, T3, note) with recursive counted(i) as "
                "(select %1 union all select i + 1 from counted where i < %2) "
                "select i, 'Name ' || i, i, '1', replace(hex(zeroblob(100)), '0', 'x') from counted"_s
                    .arg(first)
                    .arg(last));
        }
        bool start()
        {
            callers.load();
            const bool read = QTest::qWaitFor([this] { return !callers.numbers().isLoading(); }, 20000);
            callers.fixCustomers();
            callers.addCallNoteTables();
            return read;
        }
        qint32 ownerOf(int number)
        {
            return callers.numbers().FindCustomerSnOfCaller(QString::number(number)).value_or(-1);
        }
    };

    static QString told(const core::CallRecord &record)
    {
        return QStringList{record.Source + record.SnText,
                           QString::number(record.SN),
                           record.SimpleDes,
                           record.DetailDes,
                           record.IfVIP,
                           record.IfInBlackList}
            .join(u'|');
    }

private Q_SLOTS:
    void aCallIsCompletedFromTheCustomersRow()
    {
        Desk desk;
        desk.save(u"insert into customer(SN,CustomerName,WorkPhones,note,IfVIP,ifinblacklist,T3) values"
                  "(7,' Harbour Ltd ','1-1','Pays late','y',0,'1'),(8,null,'22',null,'N',1,' 0 '),"
                  "(9,'Bay','n/a, 33',null,null,null,null),(10,'Long','44','%1',null,null,null)"_s.arg(
                      u"张"_s.repeated(300)));
        QVERIFY(desk.start());
        // What the sender tells: number, name, note, marks, and the row that he has found.
        for (const auto &[name, number, own, mark, source, sn, expected] :
             {std::tuple("a VIP with a note", u"11"_s, u""_s, u""_s, u""_s, u""_s,
                         u"CUSTOMER7|7|Harbour Ltd|Pays late|Y|"_s),
              {"black-listed, without a name", u"22"_s, u""_s, u""_s, u""_s, u""_s, u"CUSTOMER8|8|22|||Y"_s},
              {"what the sender wrote stays", u"11"_s, u"Told"_s, u"N"_s, u""_s, u""_s,
               u"CUSTOMER7|7|Told|Told|N|N"_s},
              {"a match of the sender's own", u"11"_s, u""_s, u""_s, u"PHONEBOOK"_s, u"3"_s,
               u"PHONEBOOK3|3||||"_s},
              {"the sender's match is another customer", u"11"_s, u""_s, u""_s, u"CUSTOMER"_s, u"3"_s,
               u"CUSTOMER3|3||||"_s},
              {"the sender's match is the same customer", u"11"_s, u""_s, u""_s, u"CUSTOMER"_s, u"007"_s,
               u"CUSTOMER007|7|Harbour Ltd|Pays late|Y|"_s},
              {"nobody's number", u"12"_s, u""_s, u""_s, u""_s, u""_s, u"|0||||"_s},
              {"a long note is cut between characters", u"44"_s, u""_s, u""_s, u""_s, u""_s,
               u"CUSTOMER10|10|Long|%1||"_s.arg(u"张"_s.repeated(256) + u"\u2026"_s)}}) {
            const support::Row row(name);
            core::CallRecord record;
            record.CallerID = number;
            record.SimpleDes = record.DetailDes = own;
            record.IfVIP = record.IfInBlackList = mark;
            record.Source = source;
            record.SnText = sn;
            record.SN = sn.toInt();
            desk.callers.completeFromDesk(record);
            QCOMPARE(told(record), expected);
        }
        for (const auto &[number, other, popsUp] :
             {std::tuple(u"11"_s, u""_s, true),
              {u"22"_s, u"11"_s, false}, // the first one is somebody's
              {u"1"_s, u"11"_s, true},
              {u""_s, u""_s, false}, // though "n/a" holds no digit either
              {u"33"_s, u"33"_s, true},
              {u"5550"_s, u"5550"_s, false}}) {
            QCOMPARE(desk.callers.callerPopsUp(number, other), popsUp);
        }
    }

    void whateverAnotherDeskSavesIsFollowedWithoutALongTurn()
    {
        Desk desk;
        desk.addCustomers(1000, 30000);
        QVERIFY(desk.start());
        for (const auto &[sql, follows] :
             {std::pair(
                  u"insert into customer(SN,CustomerName,WorkPhones,T3) values(40000,'New','55',null)"_s,
                  std::function<bool()>([&] { return desk.ownerOf(55) == 40000; })),
              {u"update customer set WorkPhones='66' where SN=1000"_s,
               [&] { return desk.ownerOf(66) == 1000 && desk.ownerOf(1000) == -1; }},
              {u"update customer set T3='0' where SN=1001"_s,
               [&] { return !desk.callers.callerPopsUp(u"1001", u""); }},
              {u"delete from customer where SN=1002"_s, [&] { return desk.ownerOf(1002) == -1; }}}) {
            desk.save(sql);
            desk.callers.look();
            QVERIFY(desk.callers.numbers().isLoading());
            QCOMPARE(desk.ownerOf(3000), 3000); // answered from what was read before
            QTRY_VERIFY_WITH_TIMEOUT(follows(), 5000);
            QCOMPARE(desk.ownerOf(30000), 30000);
        }
        desk.save(u"update customer set T3=null where SN<5000"_s); // more than are repaired in one turn
        desk.callers.look();
        QTRY_COMPARE(
            support::rowsOf(desk.paths.CustomerFile, u"select count(*) from customer where T3 is null"_s),
            u"0"_s);
        desk.saveOwn(2001, 88);
        QCOMPARE(desk.ownerOf(88), 2001); // at once
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void whatTheDeskItselfSavesIsNotReadAgainUnlessSomebodyElseSavesToo()
    {
        Desk desk;
        desk.addCustomers(1, 5);
        QVERIFY(desk.start());
        desk.callers.look();
        QSignalSpy read(&desk.callers, &CallerDirectory::customersRead);
        const auto saveOwn = [&desk](int sn, int number) {
            desk.saveOwn(sn, number);
            desk.callers.look();
        };
        saveOwn(1, 71);
        saveOwn(2, 72);
        QCOMPARE(desk.ownerOf(71) + desk.ownerOf(72), 3);
        QCOMPARE(read.size(), 0);
        desk.save(u"update customer set WorkPhones='73' where SN=3"_s);
        saveOwn(1, 74);
        QCOMPARE(desk.ownerOf(73), 3);
        QCOMPARE(read.size(), 1);
    }

    // A table that is being read when both save may hold the other desk's row already.
    void whoeverSavesTheSameCustomerLastHolds()
    {
        for (const bool reading : {false, true}) {
            Desk desk;
            desk.addCustomers(1, 30000);
            QVERIFY(desk.start());
            QTRY_VERIFY(!desk.callers.numbers().isLoading());
            if (reading) {
                desk.save(u"update customer set WorkPhones='70003' where SN=3"_s);
                desk.callers.look();
                QVERIFY(desk.callers.numbers().isLoading());
            }
            desk.saveOwn(30000, 70001);
            desk.save(u"update customer set WorkPhones='70002',T3='0' where SN=30000"_s);
            QCOMPARE(desk.ownerOf(70001), 30000);
            QTRY_COMPARE(desk.ownerOf(70001), -1);
            QCOMPARE(desk.ownerOf(70002), 30000);
            QVERIFY(!desk.callers.callerPopsUp(u"70002", u""));
        }
    }

    void aSaveIsKnownAtOnceThoughAnotherDeskHasLockedTheFile()
    {
        Desk desk;
        desk.addCustomers(1, 3);
        QVERIFY(desk.start());
        desk.save(u"update customer set T3='0',WorkPhones='71' where SN=2"_s);
        const auto saved = support::customerOnFile(desk.paths.CustomerFile, 2);
        const support::TakenFile other(desk.paths.CustomerFile);
        desk.callers.customerSaved(2, saved.value());
        desk.callers.customerDeleted(3);
        QCOMPARE(desk.ownerOf(71), 2);
        QVERIFY(!desk.callers.callerPopsUp(u"71", u""));
        QCOMPARE(desk.ownerOf(2) + desk.ownerOf(3), -2);
        QVERIFY(desk.callers.isAvailable());
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void importedPhoneBookEntriesAreReadAtOnce()
    {
        Desk desk;
        desk.addCustomers(1, 1);
        QVERIFY(desk.start());
        desk.runSql(desk.paths.PhoneBookFile, u"insert into phonebook values (2, '5551')"_s);
        QVERIFY(!desk.callers.numbers().GetSnByPhoneNumber(u"5551"));
        desk.callers.entriesImported();
        QTRY_COMPARE(desk.callers.numbers().GetSnByPhoneNumber(u"5551"), std::optional<qint32>(2));
    }

    void aFileThatIsReplacedIsFollowedAndTheSameOneIsNotReadAgain()
    {
        Desk desk;
        Desk other;
        desk.addCustomers(1, 3);
        other.addCustomers(5, 7);
        QVERIFY(desk.start());
        desk.callers.look(); // what the start itself has repaired
        QSignalSpy read(&desk.callers, &CallerDirectory::customersRead);
        desk.callers.look();
        QCOMPARE(read.size(), 0);
        desk.writeFile(desk.paths.CustomerFile, desk.fileBytes(other.paths.CustomerFile)); // copied over
        desk.callers.look();
        QCOMPARE(desk.ownerOf(5), 5);
        QCOMPARE(desk.ownerOf(1), -1);
    }

    void ofADamagedFileEveryRowThatCanBeReadIsKnown()
    {
        constexpr int customers = 5000;
        constexpr qsizetype pageBytes = 4096;
        Desk desk;
        desk.addCustomers(1, customers);
        QByteArray bytes = desk.fileBytes(desk.paths.CustomerFile);
        for (const int page : {150, 160, 170}) {
            bytes.replace(page * pageBytes, pageBytes, QByteArray(pageBytes, '\xA5'));
        }
        desk.writeFile(desk.paths.CustomerFile, bytes);
        QVERIFY(desk.start() && !desk.callers.isAvailable());
        int known = 0;
        for (int number = 1; number <= customers; ++number) {
            const qint32 owner = desk.ownerOf(number);
            QVERIFY(owner == number || owner == -1);
            known += owner == number ? 1 : 0;
        }
        QVERIFY2(known < customers && known >= customers - 120, qPrintable(QString::number(known)));
    }
};

QTEST_GUILESS_MAIN(tst_CallerDirectory)
#include "tst_CallerDirectory.moc"
