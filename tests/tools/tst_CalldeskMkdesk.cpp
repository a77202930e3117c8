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
        const ToolRun result = run(u"desk --sample"_s);
        QVERIFY2(result.status == 0, qPrintable(result.errors));
        compareRows(u"desk/Customer.ccsm"_s, u"customer"_s, sources.table(u"sample/customers.tsv"_s));
        compareRows(u"desk/SimplePhoneBook.cpbk"_s, u"phonebook"_s, sources.table(u"sample/phonebook.tsv"_s));
        compareRows(u"desk/Lang.mdb"_s, u"Lang"_s, sources.languageTexts());
        compareRows(u"desk/UserLang.lan"_s, u"Language"_s, {{}, sources.languageTexts().rows});
        compareRows(u"desk/VN.lan"_s, u"Language"_s, sources.languageFile(u"VN"_s));
        core::TsvTable pages{{u"HelpID"_s, u"Help"_s}, {}};
        for (const QString &id : sources.helpIds(u"CHS"_s)) {
            pages.rows.append({id, sources.text(u"help/CHS/%1.txt"_s.arg(id))});
        }
        compareRows(u"desk/Help/HelpCHS.chlp"_s, u"Help"_s, pages);
        QCOMPARE(result.output.count(u'\n'),
                 4 + sources.languageCodes().size() + sources.helpLanguages().size());
        write(u"desk/Customer.ccsm"_s, "years of work");
        QVERIFY(run(u"desk"_s).errors.contains(u"kept Customer.ccsm"_s));
        QCOMPARE(m_desk->fileBytes(below(u"desk/Customer.ccsm"_s)), "years of work"_ba);
        QCOMPARE(run(u"empty"_s).status, 0);
        compareRows(u"empty/Customer.ccsm"_s, u"customer"_s, {});
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
