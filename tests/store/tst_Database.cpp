#include "DeliveredFiles.h"
#include "support/Rows.h"

#include <sqlite3.h>

using store::Database, store::Recordset, store::Row;

/// Database files, and the cursor over a table.
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
        QVERIFY_THROWS_EXCEPTION(core::Error, rows.value(1));
        rows.MoveNext();
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
};

QTEST_GUILESS_MAIN(tst_Database)
#include "tst_Database.moc"
