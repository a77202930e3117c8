#include "DeliveredFiles.h"
#include "store/Connection.h"
#include "support/Rows.h"

#include <sqlite3.h>

using store::Database, store::Recordset, store::Row;

/// Database files, the cursor over a table or a query, and the connection that searches with percent signs.
class tst_Database : public QObject
{
    Q_OBJECT

    static void addCustomers(Database &database)
    {
        for (int number = 999; number > 699; --number) {
            const QString name = u"Customer %1"_s.arg(number);
            database.Execute(u"insert into customer(CustomerName,Address) values(?,?)"_s,
                             {name, name.repeated(9)});
        }
    }

    /// Past all of our own: with another text order, and none of the hardening.
    static void executeRaw(const QString &path, const char *sql)
    {
        sqlite3 *engine = nullptr;
        sqlite3_open(path.toUtf8().constData(), &engine);
        const auto backwards = [](void *, int n, const void *a, int m, const void *b) {
            return -QByteArrayView(static_cast<const char *>(a), n)
                        .compare({static_cast<const char *>(b), m});
        };
        sqlite3_create_collation(engine, "JET", SQLITE_UTF8, nullptr, backwards);
        QCOMPARE(sqlite3_exec(engine, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(engine);
    }

    static int countRows(Database &database)
    {
        int rows = 0;
        database.forEachRow(u"select SN, Address from customer"_s, [&](const Row &) { ++rows; });
        return rows;
    }

    static QString errorOf(const QString &path)
    {
        return support::errorOf([&path] {
            Database database(path);
            countRows(database);
        });
    }
    static QString errorOf(Database &database, const QString &statement)
    {
        return support::errorOf([&] { database.Execute(statement); });
    }
    static QString saveTelno(Recordset &rows, const QString &telno)
    {
        return support::errorOf([&] {
            rows.setValue(u"telno"_s, telno);
            rows.Update();
        });
    }

    std::unique_ptr<support::TestDesk> m_desk;
    QString m_path, m_phoneBook;

private Q_SLOTS:
    void init()
    {
        m_desk = std::make_unique<support::TestDesk>();
        m_path = m_desk->paths.CustomerFile;
        m_phoneBook = m_desk->paths.PhoneBookFile;
        m_desk->runSql(m_phoneBook,
                       u"Create Table phonebook (SN counter, Telno text(255), simpledes text(255));"
                       "create unique index SN on phonebook (SN);"
                       "create index Simpledes on phonebook (simpledes);"
                       "insert into phonebook(Telno,simpledes) values('00123','zoe'),"
                       "('00123','Łucja 50* off'),('00123','anna 50%')"_s);
    }

    void aFileThatIsNoUsableDatabaseSaysSo()
    {
        QCOMPARE(errorOf(m_path), u"14 the database file is missing: "_s + m_path);
        m_desk->writeFile(m_path, {});
        QCOMPARE(errorOf(m_path), u"26 the database file is empty: "_s + m_path);
        m_desk->writeFile(m_path, QByteArray(4096, 'x'));
        QCOMPARE(errorOf(m_path), u"26 file is not a database: "_s + m_path);
        QCOMPARE(errorOf(m_phoneBook), u"1 no such table: customer: "_s + m_phoneBook);
        const support::TakenFile taken(m_phoneBook);
        QCOMPARE(errorOf(m_phoneBook), u"5 database is locked: "_s + m_phoneBook);
        QFile::remove(m_path);
        deliver(u"Customer"_s, m_path, addCustomers);
        QByteArray bytes = m_desk->fileBytes(m_path);
        const qsizetype page = bytes.indexOf("Customer 850") / 4096 * 4096;
        m_desk->writeFile(m_path, bytes.replace(page, 4096, QByteArray(4096, '\x7F')));
        QCOMPARE(errorOf(m_path), u"11 database disk image is malformed: "_s + m_path);
    }

    void aFileMarkedReadOnlyIsReadButNotWritten()
    {
        deliver(u"Customer"_s, m_path, addCustomers);
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::ReadUser));
        Database database(m_path);
        QCOMPARE(countRows(database), 300);
        QVERIFY(errorOf(database, u"delete from customer"_s).startsWith("8 "_L1));
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner));
        Database reader(m_path, Database::Mode::ReadOnly);
        QVERIFY(errorOf(reader, u"delete from customer"_s).startsWith("8 "_L1));
    }

    void aForeignSchemaRunsNothing()
    {
        executeRaw(
            m_path,
            "create table phonebook(SN integer primary key, Telno text); create table taken(Telno text);"
            "create trigger spy after insert on phonebook begin insert into taken values(new.Telno); end;"
            "create view customer as with recursive n(i) as (select 1 union all select i+1 from n)"
            " select i as SN, i as Address from n;");
        QVERIFY(errorOf(m_path).startsWith(u"1 "_s)); // the view that never ends is not run
        Database database(m_path);
        database.Execute(u"insert into phonebook(Telno) values('1')"_s);
        QCOMPARE(database.OpenRecordset(u"taken"_s).RecordCount(), 0);
        QVERIFY(errorOf(database, u"delete from sqlite_schema"_s).contains("may not be modified"_L1));
        QVERIFY(errorOf(database, u"select load_extension('x')"_s).contains("not authorized"_L1));
    }

    void anotherTextOrderIsReplacedOnOpening()
    {
        deliver(u"Customer"_s, m_path, addCustomers);
        executeRaw(m_path, "reindex JET; pragma user_version=0;");
        Database database(m_path);
        Recordset rows = database.OpenRecordset(u"Customer"_s);
        rows.setIndex(u"CustomerName"_s);
        QVERIFY(rows.Seek(u"CUSTOMER 800 "_s));
        QCOMPARE(rows.value(u"SN"_s).toInt(), 200);
    }

    void aTransactionIsWrittenWholeOrNotAtAll()
    {
        deliver(u"Customer"_s, m_path);
        Database database(m_path);
        const auto addAll = [&] { addCustomers(database); };
        const QString error = support::errorOf([&] {
            database.transaction([&] {
                addAll();
                database.Execute(u"insert into customer(SN) values(1)"_s);
            });
        });
        QVERIFY2(error.startsWith("19 "_L1), qPrintable(error));
        QCOMPARE(countRows(database), 0);
        database.transaction(addAll);
        Database other(m_path);
        QCOMPARE(countRows(other), 300);
        database.forEachRow(u"pragma synchronous"_s, [](const Row &row) { QCOMPARE(row.integer(0), 2); });
    }

    void makingADatabaseNeverTouchesAnExistingFile()
    {
        m_desk->writeFile(m_path, "mine");
        QVERIFY(!support::errorOf([this] { deliver(u"Customer"_s, m_path); }).isEmpty());
        QCOMPARE(m_desk->fileBytes(m_path), QByteArray("mine"));
        QVERIFY(QFile::remove(m_path));
        const auto fail = [](Database &) { throw core::Error(7, u"full"_s); };
        QCOMPARE(support::errorOf([&] { deliver(u"Customer"_s, m_path, fail); }), u"7 full"_s);
        QCOMPARE(QDir(m_desk->paths.StartFolder).entryList(QDir::Files),
                 QStringList(u"SimplePhoneBook.cpbk"_s));
    }

    void aRowIsFoundByItsIndexAndChangedOrDeletedByItsKey()
    {
        Database phoneBook(m_phoneBook);
        Recordset rows = phoneBook.OpenRecordset(u"Phonebook"_s);
        rows.setIndex(u"Simpledes"_s);
        QVERIFY(rows.Seek(u"ANNA 50% "_s));
        rows.Edit();
        saveTelno(rows, u"1e5"_s);
        rows.setIndex(u"SN"_s);
        QVERIFY(rows.Seek(u"3"_s));
        QCOMPARE(rows.value(u"Telno"_s).toString(), u"1e5"_s);
        QVERIFY(rows.Seek(2));
        rows.Delete();
        rows.MoveNext();
        QCOMPARE(rows.value(u"SN"_s).toInt(), 3);
        rows.MovePrevious();
        QCOMPARE(rows.value(u"SN"_s).toInt(), 1);
        rows.MoveLast();
        QCOMPARE(rows.value(u"SN"_s).toInt(), 3);
        QVERIFY(!rows.Seek(u""_s));
        QVERIFY_THROWS_EXCEPTION(core::Error, rows.Edit());
    }

    void twoDesksAddChangeAndDeleteInOneFile()
    {
        Database phoneBook(m_phoneBook);
        Database other(m_phoneBook);
        Recordset mine = phoneBook.OpenRecordset(u"Phonebook"_s);
        Recordset theirs = other.OpenRecordset(u"Phonebook"_s);
        mine.AddNew();
        theirs.AddNew(); // each knows the number of its row before it is written
        QCOMPARE(mine.value(u"SN"_s).toInt(), 4);
        saveTelno(theirs, u"theirs"_s);
        saveTelno(mine, u"mine"_s);
        QCOMPARE(support::rowsOf(m_phoneBook, u"select sn,telno from phonebook where sn > 3"_s),
                 u"4|mine\n5|theirs"_s);
        for (Recordset *desk : {&mine, &theirs}) {
            desk->MoveFirst();
            desk->Edit();
        }
        saveTelno(theirs, u"first"_s);
        saveTelno(mine, u"later"_s);
        theirs.MoveFirst();
        QCOMPARE(theirs.value(u"Telno"_s).toString(), u"later"_s);
        mine.Edit();
        theirs.Delete();
        QVERIFY(!saveTelno(mine, u"lost"_s).isEmpty());
    }

    void deletingWhileWalkingVisitsEveryRowOnce()
    {
        Database phoneBook(m_phoneBook);
        Recordset rows = phoneBook.OpenRecordset(u"select * from phonebook order by Simpledes"_s);
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
        QVERIFY(store::ConnectDatabase(m_desk->log, connection, m_phoneBook));
        QVERIFY(store::ConnectDatabase(m_desk->log, connection, u"elsewhere"_s));
        Recordset rows = connection.database().OpenRecordset(
            u"select * from phonebook where simpledes like '%50* o%' or simpledes like '*anna*'"_s);
        QCOMPARE(store::GetRecordSetRows(m_desk->log, rows), 1);
    }

    void textsAreFilledToTheirWidthAndNeverCut()
    {
        QCOMPARE(store::FillString(m_desk->log, u"ab"_s, true, 5, u"xy"_s), u"abxyx"_s);
        QCOMPARE(store::FillString(m_desk->log, u"ab"_s, false, 5, u"0"_s), u"000ab"_s);
        QCOMPARE(store::FillString(m_desk->log, u"a name of 25 characters.."_s, true, 20, u" "_s).size(), 25);
    }
};

QTEST_GUILESS_MAIN(tst_Database)
#include "tst_Database.moc"
