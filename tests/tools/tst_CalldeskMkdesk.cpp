#include "DeskFiles.h"
#include "ToolRun.h"

#include "core/Error.h"
#include "store/Database.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The maker of the delivered files, as a program and by its parts.
class tst_CalldeskMkdesk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyFileIsMadeWithItsRows_data();
    void everyFileIsMadeWithItsRows();
    void aFileThatExistsIsKept();
    void aLanguageWithAFileOfItsOwnGetsIt();
    void failuresAreToldAndSetTheExitStatus_data();
    void failuresAreToldAndSetTheExitStatus();
    void aDamagedTextFileNamesItsLine();

private:
    ToolRun run(const QStringList &arguments) const
    {
        return runTool(QStringLiteral(PROGRAM), arguments, m_folder->path());
    }
    void compareRows(const QString &file, const QString &table, const mkdesk::TsvTable &expected);
    QString below(const QString &path) const { return QDir(m_folder->path()).filePath(path); }
    void write(const QString &path, const QByteArray &content) const;
    QByteArray read(const QString &path) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_CalldeskMkdesk::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_CalldeskMkdesk::write(const QString &path, const QByteArray &content) const
{
    QVERIFY(QDir().mkpath(QFileInfo(below(path)).path()));
    QFile file(below(path));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray tst_CalldeskMkdesk::read(const QString &path) const
{
    QFile file(below(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_CalldeskMkdesk::everyFileIsMadeWithItsRows_data()
{
    QTest::addColumn<bool>("sample");
    QTest::newRow("empty desk") << false;
    QTest::newRow("sample desk") << true;
}

void tst_CalldeskMkdesk::everyFileIsMadeWithItsRows()
{
    QFETCH(bool, sample);
    const ToolRun result = run(sample ? QStringList{u"a/desk"_s, u"--sample"_s} : QStringList{u"a/desk"_s});
    QVERIFY2(result.status == 0, qPrintable(result.errors));
    const mkdesk::DeskSources sources;
    const auto help = [&](const QString &code) {
        mkdesk::TsvTable pages{{u"HelpID"_s, u"Help"_s}, {}};
        for (const QString &id : sources.helpIds(code)) {
            pages.rows.append({id, sources.text(u"help/%1/%2.txt"_s.arg(code, id))});
        }
        return pages;
    };
    const auto rowsOf = [&](const QString &path) {
        return sample ? sources.table(path) : mkdesk::TsvTable();
    };
    const mkdesk::TsvTable texts = sources.languageTexts();
    compareRows(u"Customer.ccsm"_s, u"customer"_s, rowsOf(u"sample/customers.tsv"_s));
    compareRows(u"SimplePhoneBook.cpbk"_s, u"phonebook"_s, rowsOf(u"sample/phonebook.tsv"_s));
    compareRows(u"Lang.mdb"_s, u"Lang"_s, texts);
    compareRows(u"UserLang.lan"_s, u"Language"_s, {{}, texts.rows});
    for (const QString &code : {u"ENG"_s, u"CHS"_s, u"CHT"_s}) {
        compareRows(u"Help/Help%1.chlp"_s.arg(code), u"Help"_s, help(code));
    }
    QCOMPARE(result.output.count(u'\n'), 4 + sources.languageCodes().size() + sources.helpLanguages().size());
}

void tst_CalldeskMkdesk::compareRows(const QString &file, const QString &table,
                                     const mkdesk::TsvTable &expected)
{
    QVERIFY(read(u"a/desk/"_s + file).startsWith("SQLite format 3"));
    store::Database database(below(u"a/desk/"_s + file), store::Database::Mode::ReadOnly);
    QCOMPARE(database.tableNames(), QStringList{table});
    store::Recordset rows = database.OpenRecordset(table);
    for (const QStringList &row : expected.rows) {
        for (const QString &column : expected.columns) {
            QCOMPARE(rows.value(column).toString(), expected.field(row, column));
        }
        QVERIFY(!rows.EOFile());
        rows.MoveNext();
    }
    QVERIFY(rows.EOFile());
}

void tst_CalldeskMkdesk::aFileThatExistsIsKept()
{
    write(u"desk/Customer.ccsm"_s, "years of work");
    const ToolRun first = run({u"desk"_s, u"--sample"_s});
    QCOMPARE(first.status, 0);
    QVERIFY(!first.output.contains(u"Customer.ccsm"_s));
    QVERIFY(first.errors.contains(u"kept Customer.ccsm"_s));
    const ToolRun second = run({u"desk"_s});
    QCOMPARE(second.status, 0);
    QCOMPARE(second.output, QString());
    QCOMPARE(read(u"desk/Customer.ccsm"_s), "years of work"_ba);
}

void tst_CalldeskMkdesk::aLanguageWithAFileOfItsOwnGetsIt()
{
    for (const QString &name : {u"Customer"_s, u"SimplePhoneBook"_s, u"Lang"_s, u"Language"_s, u"Help"_s}) {
        write(u"data/schema/%1.sql"_s.arg(name),
              mkdesk::DeskSources().text(u"schema/%1.sql"_s.arg(name)).toUtf8());
    }
    write(u"data/lang/window.tsv"_s, "id\tENG\tCHS\tCHT\nEdit\tTwo\\nlines \\\\ x\t\t\n");
    write(u"data/lang/SPN.tsv"_s, "item\tuserlanguage\tenglish\nEdit\t&Editar\t&Edit\n");
    const ToolRun result = run({u"desk"_s, u"--data"_s, u"data"_s});
    QVERIFY2(result.status == 0, qPrintable(result.errors));
    store::Database spanish(below(u"desk/SPN.lan"_s), store::Database::Mode::ReadOnly);
    QCOMPARE(spanish.OpenRecordset(u"Language"_s).value(u"userlanguage"_s).toString(), u"&Editar"_s);
    store::Database own(below(u"desk/UserLang.lan"_s), store::Database::Mode::ReadOnly);
    QCOMPARE(own.OpenRecordset(u"Language"_s).value(u"userlanguage"_s).toString(), u"Two\nlines \\ x"_s);
    QVERIFY(!QFileInfo::exists(below(u"desk/Help"_s)));
}

void tst_CalldeskMkdesk::failuresAreToldAndSetTheExitStatus_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("told");
    QTest::newRow("no folder") << QStringList{} << 2 << u"--help"_s;
    QTest::newRow("two folders") << QStringList{u"a"_s, u"b"_s} << 2 << u"one folder"_s;
    QTest::newRow("no option") << QStringList{u"a"_s, u"--simple"_s} << 2 << u"simple"_s;
    QTest::newRow("no sources") << QStringList{u"a"_s, u"--data"_s, u"."_s} << 1
                                << u"does not hold the sources"_s;
    QTest::newRow("a file in the folder's place")
        << QStringList{u"taken/desk"_s} << 1 << u"cannot make the folder"_s;
    QTest::newRow("a folder in the file's place")
        << QStringList{u"full"_s} << 1 << u"Customer.ccsm is no file"_s;
}

void tst_CalldeskMkdesk::failuresAreToldAndSetTheExitStatus()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, status);
    QFETCH(QString, told);
    write(u"taken"_s, "a file");
    write(u"full/Customer.ccsm/x"_s, "a folder");
    const ToolRun result = run(arguments);
    QCOMPARE(result.status, status);
    QVERIFY2(result.errors.contains(told), qPrintable(result.errors));
}

void tst_CalldeskMkdesk::aDamagedTextFileNamesItsLine()
{
    try {
        mkdesk::parseTsv(u"a\tb\n1\t2\n3\n"_s, u"x.tsv"_s);
        QFAIL("the table was accepted");
    } catch (const core::Error &error) {
        QCOMPARE(error.description(), u"x.tsv, line 3: 1 fields instead of 2"_s);
    }
}

QTEST_GUILESS_MAIN(tst_CalldeskMkdesk)
#include "tst_CalldeskMkdesk.moc"
