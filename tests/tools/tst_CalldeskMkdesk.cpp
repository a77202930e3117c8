#include "DeskFiles.h"
#include "ToolRun.h"

#include "support/TestDesk.h"

/// The maker of the delivered files as a program.
class tst_CalldeskMkdesk : public QObject
{
    Q_OBJECT

    std::unique_ptr<support::TestDesk> m_desk;

    ToolRun run(const QString &options) const { return runTool(PROGRAM, options, m_desk->folder.path()); }
    QString below(const QString &path) const { return m_desk->folder.filePath(path); }
    void write(const QString &path, const QByteArray &content) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(below(path)).path()));
        m_desk->writeFile(below(path), content);
    }
    void compareRows(const QString &file, const QString &table, const core::TsvTable &expected) const
    {
        QVERIFY(m_desk->fileBytes(below(file)).startsWith("SQLite format 3"));
        store::Database database(below(file), store::Database::Mode::ReadOnly);
        QCOMPARE(database.tableNames(), QStringList{table});
        store::Recordset rows = database.OpenRecordset(table);
        for (const QStringList &row : expected.rows) {
            for (const QString &column : expected.columns) {
                QCOMPARE(rows.value(column).toString(), expected.field(row, column));
            }
            rows.MoveNext();
        }
        QVERIFY(rows.EOFile());
    }

private Q_SLOTS:
    void init() { m_desk = std::make_unique<support::TestDesk>(); }

    void everyFileIsMadeWithItsRowsUnlessItExists()
    {
        const mkdesk::DeskSources sources;
        QVERIFY(sources.helpLanguages().size() >= 3);
        for (const bool sample : {false, true}) {
            const QString folder = sample ? u"a/sample/"_s : u"a/empty/"_s;
            const ToolRun result = run(folder + (sample ? u" --sample"_s : u""_s));
            QVERIFY2(result.status == 0, qPrintable(result.errors));
            const auto rowsOf = [&](const char *path) {
                return sample ? sources.table(QLatin1String(path)) : core::TsvTable();
            };
            compareRows(folder + u"Customer.ccsm"_s, u"customer"_s, rowsOf("sample/customers.tsv"));
            compareRows(folder + u"SimplePhoneBook.cpbk"_s, u"phonebook"_s, rowsOf("sample/phonebook.tsv"));
            compareRows(folder + u"Lang.mdb"_s, u"Lang"_s, sources.languageTexts());
            compareRows(folder + u"UserLang.lan"_s, u"Language"_s, {{}, sources.languageTexts().rows});
            for (const QString &code : sources.languageCodes()) {
                compareRows(folder + code + u".lan"_s, u"Language"_s, sources.languageFile(code));
            }
            for (const QString &code : sources.helpLanguages()) {
                core::TsvTable pages{{u"HelpID"_s, u"Help"_s}, {}};
                for (const QString &id : sources.helpIds(code)) {
                    pages.rows.append({id, sources.text(u"help/%1/%2.txt"_s.arg(code, id))});
                }
                compareRows(folder + u"Help/Help%1.chlp"_s.arg(code), u"Help"_s, pages);
            }
            QCOMPARE(result.output.count(u'\n'),
                     4 + sources.languageCodes().size() + sources.helpLanguages().size());
        }
        write(u"a/empty/Customer.ccsm"_s, "years of work");
        QVERIFY(run(u"a/empty"_s).errors.contains(u"kept Customer.ccsm"_s));
        QCOMPARE(m_desk->fileBytes(below(u"a/empty/Customer.ccsm"_s)), "years of work"_ba);
    }

    void aDeskIsCheckedForDamage()
    {
        QCOMPARE(run(u"desk --sample"_s).status, 0);
        const ToolRun whole = run(u"desk --check"_s);
        QCOMPARE(whole.status, 0);
        QByteArray bytes = m_desk->fileBytes(below(u"desk/Customer.ccsm"_s));
        bytes.replace(bytes.size() / 2, 4096, QByteArray(4096, 'x'));
        write(u"desk/Customer.ccsm"_s, bytes);
        write(u"desk/Lang.mdb"_s, "no database");
        const ToolRun damaged = run(u"desk --check"_s);
        QCOMPARE(damaged.status, 1);
        QCOMPARE(damaged.output.count(u": ok\n"_s), whole.output.count(u": ok\n"_s) - 2);
    }

    void aLanguageWithAFileOfItsOwnGetsIt()
    {
        for (const char *name : {"Customer", "SimplePhoneBook", "Lang", "Language", "Help"}) {
            const QString schema = u"schema/%1.sql"_s.arg(QLatin1String(name));
            write(u"data/"_s + schema, mkdesk::DeskSources().text(schema).toUtf8());
        }
        write(u"data/lang/ENG/window.tsv"_s, "id\ttext\t[hint]\nEdit\tTwo\\nlines \\\\ x\ton a button\n");
        write(u"data/lang/CHS/window.tsv"_s, "id\ttext\nedit\t\u7f16\u8f91\n");
        write(u"data/lang/SPN/a.tsv"_s, "id\ttext\nOther\t\n");
        write(u"data/lang/SPN/b.tsv"_s, "id\ttext\neDIT\tDos\\nl\u00EDneas\n");
        write(u"data/lang/DEU/a.tsv"_s, "id\ttext\nEdit\tZwei\n"); // no language of the program
        const ToolRun made = run(u"desk --data data"_s);
        QVERIFY2(made.status == 0 && !made.output.contains(u"DEU"_s), qPrintable(made.errors));
        const QStringList columns{u"item"_s, u"userlanguage"_s, u"english"_s};
        const QString english = u"Two\nlines \\ x"_s;
        compareRows(u"desk/SPN.lan"_s, u"Language"_s, {columns, {{u"eDIT"_s, u"Dos\nlíneas"_s, english}}});
        compareRows(u"desk/UserLang.lan"_s, u"Language"_s, {columns, {{u"Edit"_s, english, english}}});
        compareRows(u"desk/Lang.mdb"_s, u"Lang"_s,
                    {{u"id"_s, u"ENG"_s, u"CHS"_s, u"CHT"_s}, {{u"Edit"_s, english, u"编辑"_s, QString()}}});
        write(u"data/lang/ENG/window.tsv"_s, "id\ttext\t[hint]\n1\t2\nEdit\n");
        const QString told = run(u"again --data data"_s).errors;
        QVERIFY2(told.contains(u"lang/ENG/window.tsv, line 3: 1 fields instead of 2"_s), qPrintable(told));
        write(u"data/lang/ENG/window.tsv"_s, "id\ttext\n");
        write(u"data/lang/SPN/a.tsv"_s, "text\tid\n");
        const QString order = run(u"again --data data"_s).errors;
        QVERIFY2(order.contains(u"lang/SPN/a.tsv: the columns must be id, text"_s), qPrintable(order));
    }

    void failuresAreToldAndSetTheExitStatus()
    {
        write(u"taken"_s, "a file");
        write(u"full/Customer.ccsm/x"_s, "a folder");
        for (const auto &[options, status, told] : {std::tuple(u""_s, 2, "--help"),
                                                    {u"a b"_s, 2, "one folder"},
                                                    {u"a --data ."_s, 1, "does not hold the sources"},
                                                    {u"taken/desk"_s, 1, "cannot make the folder"},
                                                    {u"full"_s, 1, "Customer.ccsm is no file"},
                                                    {u"nowhere --check"_s, 1, "no database file"}}) {
            const ToolRun result = run(options);
            QVERIFY2(result.errors.contains(QLatin1String(told)), qPrintable(result.errors));
            QCOMPARE(result.status, status);
        }
    }
};

QTEST_GUILESS_MAIN(tst_CalldeskMkdesk)
#include "tst_CalldeskMkdesk.moc"
