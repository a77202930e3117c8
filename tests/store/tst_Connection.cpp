#include "DeliveredFiles.h"
#include "store/Connection.h"
#include "support/TestDesk.h"

using namespace Qt::StringLiterals;

class tst_Connection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anOpenConnectionStaysOnItsFile();
    void aMissingFileIsLoggedAndLeavesTheConnectionClosed();
    void percentSearchesGoThroughTheConnection();
    void rowsAreCountedUpToTheEnd();
    void textsAreFilledToTheirWidth_data();
    void textsAreFilledToTheirWidth();

private:
    support::TestDesk m_desk;
    store::Connection m_connection;
};

void tst_Connection::anOpenConnectionStaysOnItsFile()
{
    deliver(u"Customer"_s, m_desk.paths.CustomerFile, [](store::Database &database) {
        database.Execute(u"insert into customer(CustomerName) values('50% off'),('50* off'),('Łódź')"_s);
    });
    QVERIFY(store::ConnectDatabase(m_desk.log, m_connection, m_desk.paths.CustomerFile));
    QVERIFY(store::ConnectDatabase(m_desk.log, m_connection, u"elsewhere"_s));
    QCOMPARE(m_connection.state(), store::Connection::State::Open);
    QCOMPARE(m_connection.database().tableNames(), QStringList({u"customer"_s}));
    QCOMPARE(m_desk.logMessages(), QStringList());
}

void tst_Connection::aMissingFileIsLoggedAndLeavesTheConnectionClosed()
{
    store::Connection connection;
    QVERIFY(!store::ConnectDatabase(m_desk.log, connection, u"elsewhere"_s));
    QCOMPARE(connection.state(), store::Connection::State::Closed);
    QVERIFY(m_desk.logMessages().constLast().startsWith(u"!ConnectDatabase 14 "_s));
    QVERIFY_THROWS_EXCEPTION(core::Error, connection.database());
}

void tst_Connection::percentSearchesGoThroughTheConnection()
{
    const auto found = [this](const QString &pattern) {
        return m_connection.database()
            .OpenRecordset(u"select * from customer where CustomerName like '"_s + pattern + u'\'')
            .RecordCount();
    };
    QCOMPARE(found(u"%łÓDŹ%"_s), 1);
    QCOMPARE(found(u"50* o%"_s), 1);
    QCOMPARE(found(u"50_ OFF"_s), 2);
    QCOMPARE(found(u"%"_s), 3);
}

void tst_Connection::rowsAreCountedUpToTheEnd()
{
    store::Recordset rows = m_connection.database().OpenRecordset(u"customer"_s);
    QCOMPARE(store::GetRecordSetRows(m_desk.log, rows), 3);
    QVERIFY(rows.EOFile());
    store::Recordset none = m_connection.database().OpenRecordset(u"select * from customer where SN=0"_s);
    QCOMPARE(store::GetRecordSetRows(m_desk.log, none), 0);
    QVERIFY(none.BOF() && none.EOFile());
}

void tst_Connection::textsAreFilledToTheirWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("padAtEnd");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("fill");
    QTest::addColumn<QString>("result");
    QTest::newRow("in front") << u"ab"_s << false << 5 << u"0"_s << u"000ab"_s;
    QTest::newRow("behind, cut") << u"ab"_s << true << 5 << u"xy"_s << u"abxyx"_s;
    QTest::newRow("in front, cut") << u"ab"_s << false << 5 << u"xy"_s << u"yxyab"_s;
    QTest::newRow("too long") << u"abcdef"_s << true << 3 << u"0"_s << u"abcdef"_s;
    QTest::newRow("negative width") << u"a"_s << true << -3 << u" "_s << u"a"_s;
    QTest::newRow("nothing to fill with") << u"ab"_s << true << 5 << u""_s << u""_s;
}

void tst_Connection::textsAreFilledToTheirWidth()
{
    QFETCH(QString, text);
    QFETCH(bool, padAtEnd);
    QFETCH(int, width);
    QFETCH(QString, fill);
    QTEST(store::FillString(m_desk.log, text, padAtEnd, width, fill), "result");
}

QTEST_GUILESS_MAIN(tst_Connection)
#include "tst_Connection.moc"
