#include "DeliveredFiles.h"
#include "support/TestDesk.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include <sqlite3.h>

#include <cstdio>

using namespace Qt::StringLiterals;
using store::Database;
using store::Row;

class tst_Database : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFileThatIsNoUsableDatabaseSaysSo_data();
    void aFileThatIsNoUsableDatabaseSaysSo();
    void aFileMarkedReadOnlyIsReadButNotWritten();
    void aDamagedPageIsAnErrorAndNotTheEnd();
    void aForeignSchemaRunsNothing();
    void anotherTextOrderIsReplacedOnOpening();
    void rowsComeInTableOrderDespiteTheIndexes();
    void aFailedTransactionLeavesNothing();
    void anOpenListKeepsNobodyFromSaving();
    void ofTwoDesksTheLaterSaveWins();
    void makingADatabaseNeverTouchesAnExistingFile();
    void aKilledProgramLosesNoSavedRow();

private:
    QString expectError(const QString &path, int number);

    std::unique_ptr<support::TestDesk> m_desk;
    QString m_path;
};

namespace {

void addCustomers(Database &database)
{
    for (int i = 0; i < 300; ++i) {
        const QString name = u"Customer %1"_s.arg(999 - i);
        database.Execute(u"insert into customer(CustomerName,Address) values(?,?)"_s,
                         {name, name.repeated(10)});
    }
}

void executeRaw(const QString &path, const char *sql)
{
    sqlite3 *engine = nullptr;
    sqlite3_open(path.toUtf8().constData(), &engine);
    const auto backwards = [](void *, int n, const void *a, int m, const void *b) {
        return -QByteArrayView(static_cast<const char *>(a), n).compare({static_cast<const char *>(b), m});
    };
    sqlite3_create_collation(engine, "JET", SQLITE_UTF8, nullptr, backwards);
    QCOMPARE(sqlite3_exec(engine, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(engine);
}

int countRows(Database &database)
{
    int rows = 0;
    database.forEachRow(u"select SN, Address from customer"_s,
                        [&](const Row &row) { rows += row.text(1).size() < 0 ? 0 : 1; });
    return rows;
}

} // namespace

void tst_Database::init()
{
    m_desk = std::make_unique<support::TestDesk>();
    m_path = m_desk->paths.CustomerFile;
}

QString tst_Database::expectError(const QString &path, int number)
{
    try {
        Database database(path);
        countRows(database);
    } catch (const core::Error &error) {
        return error.number() == number ? error.description()
                                        : u"%1 %2"_s.arg(error.number()).arg(error.description());
    }
    return u"opened"_s;
}

void tst_Database::aFileThatIsNoUsableDatabaseSaysSo_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("description");
    QTest::newRow("missing") << 14 << u"the database file is missing: "_s;
    QTest::newRow("folder") << 14 << u"not a file: "_s;
    QTest::newRow("empty") << 26 << u"the database file is empty: "_s;
    QTest::newRow("text") << 26 << u"file is not a database: "_s;
    QTest::newRow("cut short") << 11 << u"database disk image is malformed: "_s;
    QTest::newRow("another schema") << 1 << u"no such table: customer: "_s;
    QTest::newRow("locked") << 5 << u"database is locked: "_s;
}

void tst_Database::aFileThatIsNoUsableDatabaseSaysSo()
{
    QFETCH(int, number);
    QFETCH(QString, description);
    const QByteArray trouble = QTest::currentDataTag();
    std::optional<Database> other;
    if (trouble == "folder") {
        QDir().mkpath(m_path);
    } else if (trouble == "empty" || trouble == "text") {
        m_desk->writeFile(m_path, QByteArray(trouble == "text" ? 4096 : 0, 'x'));
    } else if (trouble == "another schema") {
        deliver(u"Lang"_s, m_path);
    } else if (trouble != "missing") {
        deliver(u"Customer"_s, m_path, addCustomers);
    }
    if (trouble == "cut short") {
        QVERIFY(QFile::resize(m_path, QFileInfo(m_path).size() / 2));
    } else if (trouble == "locked") {
        other.emplace(m_path).Execute(u"begin exclusive"_s);
    }
    QCOMPARE(expectError(m_path, number), description + m_path);
    QCOMPARE(QFile::exists(m_path), trouble != "missing");
}

void tst_Database::aFileMarkedReadOnlyIsReadButNotWritten()
{
    deliver(u"Customer"_s, m_path, addCustomers);
    const QByteArray before = m_desk->fileBytes(m_path);
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::ReadUser));
    {
        Database database(m_path);
        QCOMPARE(countRows(database), 300);
        QVERIFY_THROWS_EXCEPTION(core::Error, database.Execute(u"delete from customer"_s));
    }
    QCOMPARE(m_desk->fileBytes(m_path), before);
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner));
    Database reader(m_path, Database::Mode::ReadOnly);
    QVERIFY_THROWS_EXCEPTION(core::Error, reader.Execute(u"delete from customer"_s));
}

void tst_Database::aDamagedPageIsAnErrorAndNotTheEnd()
{
    deliver(u"Customer"_s, m_path, addCustomers);
    constexpr int page = 4096;
    QByteArray bytes = m_desk->fileBytes(m_path);
    const qsizetype middle = bytes.indexOf("Customer 850") / page * page;
    bytes.replace(middle, page, QByteArray(page, '\x7F'));
    m_desk->writeFile(m_path, bytes);
    QCOMPARE(expectError(m_path, 11), u"database disk image is malformed: "_s + m_path);
}

void tst_Database::aForeignSchemaRunsNothing()
{
    executeRaw(m_path,
               "create table phonebook(SN integer primary key, Telno text);"
               "create table taken(Telno text);"
               "create trigger spy after insert on phonebook begin insert into taken values(new.Telno); end;"
               "create view customer as with recursive n(i) as (select 1 union all select i+1 from n)"
               " select i as SN, i as Address from n;");
    QVERIFY_THROWS_EXCEPTION(core::Error, Database(m_path).OpenRecordset(u"customer"_s));
    QVERIFY(expectError(m_path, 1).endsWith(m_path)); // the view that never ends is not run
    Database database(m_path);
    database.Execute(u"insert into phonebook(Telno) values('1')"_s);
    QCOMPARE(database.OpenRecordset(u"taken"_s).RecordCount(), 0);
    QVERIFY_THROWS_EXCEPTION(core::Error, database.Execute(u"delete from sqlite_schema"_s));
    QVERIFY_THROWS_EXCEPTION(core::Error, database.Execute(u"select load_extension('x')"_s));
}

void tst_Database::anotherTextOrderIsReplacedOnOpening()
{
    deliver(u"Customer"_s, m_path, addCustomers);
    executeRaw(m_path, "reindex JET; pragma user_version=0;");
    Database database(m_path);
    store::Recordset rows = database.OpenRecordset(u"Customer"_s);
    rows.setIndex(u"CustomerName"_s);
    QVERIFY(rows.Seek(u"CUSTOMER 800 "_s));
    QCOMPARE(rows.value(u"SN"_s).toInt(), 200);
}

void tst_Database::rowsComeInTableOrderDespiteTheIndexes()
{
    deliver(u"Customer"_s, m_path, addCustomers);
    Database database(m_path);
    QStringList names;
    database.forEachRow(u"select CustomerName from customer"_s,
                        [&](const Row &row) { names.append(row.text(0)); });
    QCOMPARE(names.first(), u"Customer 999"_s);
    QCOMPARE(database.OpenRecordset(u"select CustomerName from customer"_s).value(0).toString(),
             u"Customer 999"_s);
}

void tst_Database::aFailedTransactionLeavesNothing()
{
    deliver(u"Customer"_s, m_path);
    Database database(m_path);
    QVERIFY_THROWS_EXCEPTION(core::Error, database.transaction([&] {
        addCustomers(database);
        database.Execute(u"insert into customer(SN) values(1)"_s);
    }));
    QCOMPARE(countRows(database), 0);
    database.transaction([&] { addCustomers(database); });
    Database other(m_path);
    QCOMPARE(countRows(other), 300);
}

void tst_Database::anOpenListKeepsNobodyFromSaving()
{
    deliver(u"Customer"_s, m_path, addCustomers);
    Database mine(m_path);
    store::Recordset list = mine.OpenRecordset(u"select * from customer order by CustomerName"_s);
    QCOMPARE(list.value(u"CustomerName"_s).toString(), u"Customer 700"_s);
    Database theirs(m_path);
    theirs.Execute(u"update customer set CustomerName='Customer 0' where SN=299"_s);
    list.MoveNext();
    QCOMPARE(list.value(u"CustomerName"_s).toString(), u"Customer 0"_s);
}

void tst_Database::ofTwoDesksTheLaterSaveWins()
{
    deliver(u"Customer"_s, m_path, addCustomers);
    Database mine(m_path);
    Database theirs(m_path);
    store::Recordset my = mine.OpenRecordset(u"Customer"_s);
    store::Recordset their = theirs.OpenRecordset(u"Customer"_s);
    for (store::Recordset *desk : {&my, &their}) {
        desk->setIndex(u"SN"_s);
        QVERIFY(desk->Seek(5));
        desk->Edit();
        desk->setValue(u"city"_s, desk == &my ? u"mine"_s : u"theirs"_s);
    }
    their.Update();
    my.Update();
    QVERIFY(their.Seek(5));
    QCOMPARE(their.value(u"City"_s).toString(), u"mine"_s);
    my.Edit();
    my.setValue(u"city"_s, u"lost"_s);
    their.Delete();
    QVERIFY_THROWS_EXCEPTION(core::Error, my.Update());
}

void tst_Database::makingADatabaseNeverTouchesAnExistingFile()
{
    m_desk->writeFile(m_path, "mine");
    QVERIFY_THROWS_EXCEPTION(core::Error, deliver(u"Customer"_s, m_path));
    QCOMPARE(m_desk->fileBytes(m_path), QByteArray("mine"));
    QVERIFY(QFile::remove(m_path));
    QVERIFY_THROWS_EXCEPTION(
        core::Error, deliver(u"Customer"_s, m_path, [](Database &) { throw core::Error(0, u"full"_s); }));
    QCOMPARE(QFileInfo(m_path).dir().entryList(QDir::Files), QStringList());
}

void tst_Database::aKilledProgramLosesNoSavedRow()
{
    deliver(u"Customer"_s, m_path);
    int saved = 0;
    for (int round = 0; round < 6; ++round) {
        QProcess desk;
        desk.start(QCoreApplication::applicationFilePath(), {u"--save-until-killed"_s, m_path});
        int lines = 0;
        while (lines <= round * 2) {
            QVERIFY(desk.waitForReadyRead());
            lines += int(desk.readAllStandardOutput().count('\n'));
        }
        saved += lines;
        desk.kill();
        QVERIFY(desk.waitForFinished());
    }
    Database database(m_path);
    QVERIFY(countRows(database) >= saved);
    QCOMPARE(database.OpenRecordset(u"select * from customer where city<>CustomerName"_s).RecordCount(), 0);
    database.forEachRow(u"pragma integrity_check"_s, [](const Row &row) { QCOMPARE(row.text(0), u"ok"_s); });
}

namespace {

/// The other program of aKilledProgramLosesNoSavedRow: tells of each row when it is saved.
int saveUntilKilled(const QString &path)
{
    for (int i = 0;; ++i) {
        Database database(path);
        store::Recordset rows = database.OpenRecordset(u"Customer"_s);
        rows.AddNew();
        rows.setValue(u"CustomerName"_s, QString::number(i).repeated(2000));
        rows.setValue(u"city"_s, QString::number(i).repeated(2000));
        rows.Update();
        std::printf("%d\n", i);
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().value(1) == u"--save-until-killed"_s) {
        return saveUntilKilled(application.arguments().value(2));
    }
    tst_Database test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Database.moc"
