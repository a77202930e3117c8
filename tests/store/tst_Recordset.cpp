#include "store/Database.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_Recordset : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aTableIsReadForthAndBackInItsOrder();
    void aRowIsFoundByItsIndexAndChangedOrDeletedByItsKey();
    void theNumberOfANewRowIsKnownBeforeItIsWritten();
    void deletingWhileWalkingVisitsEveryRowOnce();
    void aJoinCanBeReadButNotChanged();

private:
    std::unique_ptr<support::TestDesk> m_desk;
    QString m_path;
};

void tst_Recordset::init()
{
    m_desk = std::make_unique<support::TestDesk>();
    m_path = m_desk->folder.filePath(u"a.db"_s);
    store::createDatabase(
        m_path,
        u"Create Table phonebook (SN counter, Telno text(255), simpledes text(255));"
        "create unique index SN on phonebook (SN);"
        "create index Simpledes on phonebook (simpledes);"_s,
        [](store::Database &database) {
            for (const QString &name : {u"zoe"_s, u"Łucja"_s, u"anna"_s}) {
                database.Execute(u"insert into phonebook(Telno,simpledes) values(?,?)"_s, {u"00123"_s, name});
            }
        });
}

void tst_Recordset::aTableIsReadForthAndBackInItsOrder()
{
    store::Database database(m_path);
    store::Recordset rows = database.OpenRecordset(u"Phonebook"_s);
    QStringList names;
    for (; !rows.EOFile(); rows.MoveNext()) {
        names.append(rows.value(u"SIMPLEDES"_s).toString());
    }
    QCOMPARE(names, QStringList({u"zoe"_s, u"Łucja"_s, u"anna"_s}));
    rows.MoveLast();
    rows.MovePrevious();
    QCOMPARE(rows.value(u"SN"_s).toInt(), 2);
    QCOMPARE(rows.value(u"Telno"_s).toString(), u"00123"_s);
    rows.MoveFirst();
    rows.MovePrevious();
    QVERIFY(rows.BOF());
}

void tst_Recordset::aRowIsFoundByItsIndexAndChangedOrDeletedByItsKey()
{
    store::Database database(m_path);
    store::Recordset rows = database.OpenRecordset(u"Phonebook"_s);
    rows.setIndex(u"Simpledes"_s);
    QVERIFY(rows.Seek(u"ANNA"_s));
    rows.Edit();
    rows.setValue(u"telno"_s, u"1e5"_s);
    QCOMPARE(rows.value(u"Telno"_s).toString(), u"1e5"_s);
    rows.Update();
    rows.setIndex(u"SN"_s);
    QVERIFY(rows.Seek(u"3"_s));
    QCOMPARE(rows.value(u"Telno"_s).toString(), u"1e5"_s);
    QVERIFY(rows.Seek(2));
    rows.Delete();
    rows.MoveNext();
    QCOMPARE(rows.value(u"SN"_s).toInt(), 3);
    rows.MovePrevious();
    QCOMPARE(rows.value(u"SN"_s).toInt(), 1);
    QVERIFY(!rows.Seek(u""_s));
    QVERIFY_THROWS_EXCEPTION(core::Error, rows.Edit());
}

void tst_Recordset::theNumberOfANewRowIsKnownBeforeItIsWritten()
{
    store::Database one(m_path);
    store::Database other(m_path);
    store::Recordset mine = one.OpenRecordset(u"Phonebook"_s);
    store::Recordset theirs = other.OpenRecordset(u"Phonebook"_s);
    mine.AddNew();
    QCOMPARE(mine.value(u"SN"_s).toInt(), 4);
    theirs.AddNew();
    theirs.setValue(u"simpledes"_s, u"theirs"_s);
    theirs.Update();
    QCOMPARE(theirs.value(u"SN"_s).toInt(), 5);
    mine.setValue(u"simpledes"_s, u"mine"_s);
    mine.Update();
    QCOMPARE(mine.value(u"SN"_s).toInt(), 4);
    QCOMPARE(other.OpenRecordset(u"select * from phonebook where sn = 4"_s).value(u"simpledes"_s).toString(),
             u"mine"_s);
}

void tst_Recordset::deletingWhileWalkingVisitsEveryRowOnce()
{
    store::Database database(m_path);
    store::Recordset rows = database.OpenRecordset(u"select * from phonebook order by Simpledes"_s);
    QStringList names;
    for (; !rows.EOFile(); rows.MoveNext()) {
        names.append(rows.value(1).toString() + rows.value(2).toString());
        rows.Delete();
        QVERIFY_THROWS_EXCEPTION(core::Error, rows.value(1));
    }
    QCOMPARE(names.size(), 3);
    QVERIFY(rows.BOF() && rows.EOFile());
}

void tst_Recordset::aJoinCanBeReadButNotChanged()
{
    store::Database database(m_path);
    store::Recordset rows = database.OpenRecordset(
        u"select a.SN, b.simpledes from phonebook a, phonebook b where a.SN=b.SN order by a.SN"_s);
    QCOMPARE(rows.RecordCount(), 3);
    QCOMPARE(rows.value(1).toString(), u"zoe"_s);
    rows.Edit();
    rows.setValue(u"simpledes"_s, u"x"_s);
    QVERIFY_THROWS_EXCEPTION(core::Error, rows.Update());
}

QTEST_GUILESS_MAIN(tst_Recordset)
#include "tst_Recordset.moc"
