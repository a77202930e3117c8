#include "store/Connection.h"
#include "support/Rows.h"
#include "support/TestDesk.h"

using store::Recordset;

/// The cursor over a table or a query, and the connection that searches with percent signs.
class tst_Recordset : public QObject
{
    Q_OBJECT

    static void saveTelno(Recordset &rows, const QString &telno)
    {
        rows.setValue(u"telno"_s, telno);
        rows.Update();
    }

    std::unique_ptr<support::TestDesk> m_desk;
    std::unique_ptr<store::Database> m_database;
    QString m_path;

private Q_SLOTS:
    void init()
    {
        m_desk = std::make_unique<support::TestDesk>();
        m_path = m_desk->folder.filePath(u"a.db"_s);
        m_desk->runSql(m_path, u"Create Table phonebook (SN counter, Telno text(255), simpledes text(255));"
                               "create unique index SN on phonebook (SN);"
                               "create index Simpledes on phonebook (simpledes);"
                               "insert into phonebook(Telno,simpledes) values('00123','zoe'),"
                               "('00123','Łucja 50* off'),('00123','anna 50%')"_s);
        m_database = std::make_unique<store::Database>(m_path);
    }

    void aRowIsFoundByItsIndexAndChangedOrDeletedByItsKey()
    {
        Recordset rows = m_database->OpenRecordset(u"Phonebook"_s);
        rows.setIndex(u"Simpledes"_s);
        QVERIFY(rows.Seek(u"ANNA 50% "_s));
        rows.Edit();
        saveTelno(rows, u"1e5"_s);
        QCOMPARE(support::rowsOf(m_path, u"select Telno from phonebook where SN = 3"_s), u"1e5"_s);
        rows.setIndex(u"SN"_s);
        QVERIFY(rows.Seek(u"3"_s) && rows.Seek(2));
        rows.Delete();
        rows.MoveNext();
        QCOMPARE(rows.value(u"SN"_s).toInt(), 3);
        rows.MovePrevious();
        QCOMPARE(rows.value(u"SN"_s).toInt(), 1);
        QVERIFY(!rows.Seek(u""_s));
        QVERIFY_THROWS_EXCEPTION(core::Error, rows.Edit());
    }

    void twoDesksAddChangeAndDeleteInOneFile()
    {
        store::Database other(m_path);
        Recordset mine = m_database->OpenRecordset(u"Phonebook"_s);
        Recordset theirs = other.OpenRecordset(u"Phonebook"_s);
        mine.AddNew();
        theirs.AddNew(); // each knows the number of its row before it is written
        QCOMPARE(mine.value(u"SN"_s).toInt(), 4);
        saveTelno(theirs, u"theirs"_s);
        saveTelno(mine, u"mine"_s);
        QCOMPARE(support::rowsOf(m_path, u"select sn,telno from phonebook where sn > 3"_s),
                 u"4|mine\n5|theirs"_s);
        for (Recordset *desk : {&mine, &theirs}) {
            desk->MoveFirst();
            desk->Edit();
        }
        saveTelno(theirs, u"first"_s);
        saveTelno(mine, u"later"_s);
        QCOMPARE(support::rowsOf(m_path, u"select telno from phonebook where sn = 1"_s), u"later"_s);
        theirs.MoveFirst();
        mine.Edit();
        theirs.Delete();
        QVERIFY_THROWS_EXCEPTION(core::Error, saveTelno(mine, u"lost"_s));
    }

    void deletingWhileWalkingVisitsEveryRowOnce()
    {
        Recordset rows = m_database->OpenRecordset(u"select * from phonebook order by Simpledes"_s);
        QString names;
        for (; !rows.EOFile(); rows.MoveNext()) {
            names += rows.value(2).toString().first(1);
            rows.Delete();
            QVERIFY_THROWS_EXCEPTION(core::Error, rows.value(1));
        }
        QCOMPARE(names, u"aŁz"_s);
        QVERIFY(rows.BOF() && rows.EOFile());
    }

    void aConnectionStaysOnItsFileAndSearchesWithPercentSigns()
    {
        store::Connection connection;
        QVERIFY(!store::ConnectDatabase(m_desk->log, connection, u"elsewhere"_s));
        QVERIFY(m_desk->logMessages().constLast().startsWith(u"!ConnectDatabase 14 "_s));
        QVERIFY(store::ConnectDatabase(m_desk->log, connection, m_path));
        QVERIFY(store::ConnectDatabase(m_desk->log, connection, u"elsewhere"_s));
        for (const auto &[pattern, count] :
             {std::pair(u"%łUCJA%"_s, 1), {u"%50* o%"_s, 1}, {u"% 50_%"_s, 2}, {u"%"_s, 3}, {u"x"_s, 0}}) {
            Recordset rows = connection.database().OpenRecordset(
                u"select * from phonebook where simpledes like '"_s + pattern + u'\'');
            QCOMPARE(store::GetRecordSetRows(m_desk->log, rows), count);
        }
    }

    void textsAreFilledToTheirWidth()
    {
        QCOMPARE(store::FillString(m_desk->log, u"ab"_s, true, 5, u"xy"_s), u"abxyx"_s);
        QCOMPARE(store::FillString(m_desk->log, u"ab"_s, false, 5, u"xy"_s), u"yxyab"_s);
        QCOMPARE(store::FillString(m_desk->log, u"ab"_s, true, 5, u""_s), u""_s);
    }
};

QTEST_GUILESS_MAIN(tst_Recordset)
#include "tst_Recordset.moc"
