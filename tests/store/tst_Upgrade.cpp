#include "DeliveredFiles.h"
#include "store/Upgrade.h"
#include "support/TestDesk.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;
using store::CustomerPopUpTable;

class tst_Upgrade : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void bothCallNoteTablesAreAddedOnce();
    void oneTableAloneCountsAsUpgraded();
    void fixUpsRepairFlagsAndSingleBlanks();
    void thePopUpTableHoldsTheFlagsAsTheyStoodBefore();
    void aFileThatCannotBeUsedIsLoggedOnceByEach_data();
    void aFileThatCannotBeUsedIsLoggedOnceByEach();

private:
    void runBoth();

    std::unique_ptr<support::TestDesk> m_desk;
    CustomerPopUpTable m_table;
};

void tst_Upgrade::init()
{
    m_desk = std::make_unique<support::TestDesk>();
    m_table = {};
}

void tst_Upgrade::runBoth()
{
    store::FixCustomerData(m_desk->log, m_desk->paths, m_table);
    QVERIFY(store::UpdateDatabase_Customer_0606191111(m_desk->log, m_desk->paths));
}

void tst_Upgrade::bothCallNoteTablesAreAddedOnce()
{
    deliver(u"Customer"_s, m_desk->paths.CustomerFile);
    runBoth();
    store::Database database(m_desk->paths.CustomerFile);
    QCOMPARE(database.tableNames(), QStringList({u"customer"_s, u"CallInfo"_s, u"CustomerRequest"_s}));
    database.Execute(u"insert into callinfo values('Call1','Acme','2026-11-21 09:30:15','Ann','00123')"_s);
    database.Execute(u"insert into customerrequest values('Call1','00123','1e5',1,'')"_s);
    runBoth();
    store::Recordset calls = database.OpenRecordset(u"select * from CallInfo where [callid]='CALL1'"_s);
    QCOMPARE(calls.value(u"CallContent"_s).toString(), u"00123"_s);
    store::Recordset requests =
        database.OpenRecordset(u"select * from CustomerRequest where [IfResolved] = True"_s);
    QCOMPARE(requests.value(u"Response"_s).toString(), u"1e5"_s);
    QCOMPARE(requests.value(u"IfResolved"_s), QVariant(true));
    QCOMPARE(m_desk->logMessages(), QStringList());
}

void tst_Upgrade::oneTableAloneCountsAsUpgraded()
{
    deliver(u"Customer"_s, m_desk->paths.CustomerFile, [](store::Database &database) {
        database.Execute(u"Create Table CustomerRequest ([CallID] text(50))"_s);
    });
    runBoth();
    QCOMPARE(store::Database(m_desk->paths.CustomerFile).tableNames(),
             QStringList({u"customer"_s, u"CustomerRequest"_s}));
}

void tst_Upgrade::fixUpsRepairFlagsAndSingleBlanks()
{
    const QVariantList flags{QVariant(), u""_s, u" "_s, u"0"_s, u"1"_s};
    const QVariantList ids{u" "_s, u"  "_s, u""_s, u"AB-1"_s, QVariant()};
    deliver(u"Customer"_s, m_desk->paths.CustomerFile, [&](store::Database &database) {
        for (int i = 0; i < flags.size(); ++i) {
            database.Execute(u"insert into customer(T3,CustomerID) values(?,?)"_s, {flags.at(i), ids.at(i)});
        }
    });
    QCOMPARE(store::FixCustomerData(m_desk->log, m_desk->paths, m_table), 1);
    store::Database database(m_desk->paths.CustomerFile);
    QVariantList fixedFlags;
    QVariantList fixedIds;
    for (auto rows = database.OpenRecordset(u"customer"_s); !rows.EOFile(); rows.MoveNext()) {
        fixedFlags.append(rows.value(u"T3"_s));
        fixedIds.append(rows.value(u"CustomerID"_s));
    }
    QCOMPARE(fixedFlags, QVariantList({u"1"_s, u"1"_s, u"1"_s, u"0"_s, u"1"_s}));
    QCOMPARE(fixedIds, QVariantList({u""_s, u"  "_s, u""_s, u"AB-1"_s, QVariant()}));
}

void tst_Upgrade::thePopUpTableHoldsTheFlagsAsTheyStoodBefore()
{
    constexpr qint32 largeSn = 2'000'000'000;
    deliver(u"Customer"_s, m_desk->paths.CustomerFile, [](store::Database &database) {
        database.Execute(u"insert into customer(SN,T3) values(7,null),(9,'0'),(2000000000,' 0 ')"_s);
    });
    m_table.append(1, "old");
    runBoth();
    QCOMPARE(m_table.rowCount(), 3);
    QCOMPARE(m_table.T3(7), std::optional(u""_s));
    QCOMPARE(m_table.T3(9), std::optional(u"0"_s));
    QCOMPARE(m_table.T3(largeSn), std::optional(u" 0 "_s));
    QCOMPARE(m_table.T3(1), std::nullopt);
    m_table.append(9, "1");
    QCOMPARE(m_table.T3(9), std::optional(u"0"_s));
}

void tst_Upgrade::aFileThatCannotBeUsedIsLoggedOnceByEach_data()
{
    QTest::addColumn<QString>("trouble");
    QTest::addColumn<int>("number");
    QTest::newRow("missing") << u"missing"_s << 14;
    QTest::newRow("text") << u"text"_s << 26;
    QTest::newRow("locked by another") << u"locked"_s << 5;
}

void tst_Upgrade::aFileThatCannotBeUsedIsLoggedOnceByEach()
{
    QFETCH(QString, trouble);
    QFETCH(int, number);
    const QString &path = m_desk->paths.CustomerFile;
    std::optional<store::Database> other;
    if (trouble == u"text"_s) {
        m_desk->writeFile(path, QByteArray(5000, 'x'));
    } else if (trouble == u"locked"_s) {
        deliver(u"Customer"_s, path);
        other.emplace(path).Execute(u"begin exclusive"_s);
    }
    m_table.append(1, "1");
    QElapsedTimer timer;
    timer.start();
    runBoth();
    QVERIFY2(timer.elapsed() < 500, "the window stood still");
    const QStringList messages = m_desk->logMessages();
    QCOMPARE(messages.size(), 2);
    QVERIFY(messages.at(0).startsWith(u"!FixCustomerData %1 "_s.arg(number)));
    QVERIFY(messages.at(1).startsWith(u"!UpdateDatabase_Customer_0606191111 %1 "_s.arg(number)));
    QVERIFY(m_table.T3(1).has_value());
}

QTEST_GUILESS_MAIN(tst_Upgrade)
#include "tst_Upgrade.moc"
