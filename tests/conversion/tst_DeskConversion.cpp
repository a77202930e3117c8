#include "conversion/DeskConversion.h"
#include "support/JetWriter.h"
#include "support/Rows.h"
#include "support/TestDesk.h"
#include "tools/ToolRun.h"

#include <QProcess>
#include <QRandomGenerator>

using oldfiles::ColumnType;
using support::JetTable;

namespace {

using Files = QMap<QString, QByteArray>;

const JetTable customers = {
    u"customer"_s,
    {{u"SN"_s, ColumnType::Long, false, true},
     {u"CustomerName"_s, ColumnType::Text, true},
     {u"note"_s, ColumnType::Memo},
     {u"ifinblacklist"_s, ColumnType::Integer},
     {u"Geburtstag"_s, ColumnType::Date},
     {u"credit limit"_s, ColumnType::Currency},
     {u"photo"_s, ColumnType::Ole},
     {u"rate"_s, ColumnType::Double}},
    {{7, u"客户"_s, u"line one\r\nline \U0001F4DE"_s, 1, 38852.75, 1234500, "\0\1\2"_ba, 0.1},
     {9, u"007"_s, u"x"_s.repeated(9000), 0, {}, {}, {}, -0.0},
     {12, {}, u""_s, {}, {}, {}, {}, qQNaN()}},
    {{u"SN"_s, u"SN"_s, true}, {u"CustomerName"_s, u"CustomerName"_s, false}},
    {},
    {1},
    1,
    40};

/// A desk as years of work leave it behind.
Files oldDesk()
{
    const JetTable requests = {u"CustomerRequest"_s,
                               {{u"CallID"_s}, {u"IfResolved"_s, ColumnType::YesNo}},
                               {{u"1"_s, true}, {u"1"_s, false}}};
    const JetTable own = {
        u"Our own list"_s, {{u"a column"_s}}, {{u"kept"_s}, {u"KEPT"_s}}, {{u"own"_s, u"a column"_s, true}}};
    const JetTable phoneBook = {u"phonebook"_s,
                                {{u"SN"_s, ColumnType::Long, false, true}, {u"Telno"_s}, {u"IfVIP"_s}},
                                {{3, u"+49 30 1"_s, u"Y"_s}},
                                {{u"SN"_s, u"SN"_s, true}}};
    const JetTable texts = {u"Lang"_s, {{u"id"_s}, {u"ENG"_s}}, {{u"Edit"_s, u"Edit"_s}}};
    const JetTable language = {u"Language"_s, {{u"item"_s}, {u"userlanguage"_s}}, {{u"Edit"_s, u"编辑"_s}}};
    const JetTable help = {u"Help"_s,
                           {{u"HelpID"_s}, {u"Help"_s, ColumnType::Memo}},
                           {{u"main"_s, u"text"_s}},
                           {{u"HelpID"_s, u"HelpID"_s, true}}};
    const JetTable areas = {u"placename"_s, {{u"AreaCode"_s}, {u"Area"_s}}, {{u"030"_s, u"Berlin"_s}}};
    return {{u"Customer.ccsm"_s, support::jetFile({customers, requests, own})},
            {u"SimplePhoneBook.cpbk"_s, support::jetFile({phoneBook})},
            {u"Lang.mdb"_s, support::jetFile({texts})},
            {u"UserLang.lan"_s, support::jetFile({language})},
            {u"AreaCode.mdb"_s, support::jetFile({areas})},
            {u"Help/HelpENG.chlp"_s, support::jetFile({help})},
            {u"Crm.cfg"_s, QByteArray(334, 'c')},
            {u"PopUserData/cmbCity_ENG.txt"_s, "Berlin\r\n"_ba}};
}

bool isOld(const QByteArray &bytes)
{
    return bytes.mid(4, 15) == "Standard Jet DB";
}

/// The folder for the old files, "" without one.
QString oldFolderIn(const QString &folder)
{
    return QDir(folder).entryList({u"Old files *"_s}, QDir::Dirs).value(0);
}

} // namespace

/// Old desks, on their way into ours.
class tst_DeskConversion : public QObject
{
    Q_OBJECT

    support::TestDesk m_desk;
    const QDate today{2026, 11, 22};
    const QString m_folder = m_desk.folder.filePath(u"desk"_s);
    Files m_old = oldDesk();

    QString path(const QString &name) const { return m_folder + u'/' + name; }
    void makeDesk(const Files &files) const
    {
        QDir(m_folder).removeRecursively();
        for (auto file = files.begin(); file != files.end(); ++file) {
            QVERIFY(QDir().mkpath(QFileInfo(path(file.key())).path()));
            m_desk.writeFile(path(file.key()), *file);
        }
    }
    Files filesNow() const
    {
        Files files = support::filesBelow(m_folder);
        files.remove(u"Conversion.lock"_s);
        return files;
    }

    /// How calldesk-mkdesk ended, -1 when it was killed.
    int convertWith(const QString &fault) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (!fault.isEmpty()) {
            environment.insert(u"LD_PRELOAD"_s, QStringLiteral(FAULTS));
            environment.insert(u"FAULT"_s, fault);
            environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
        }
        return runTool(PROGRAM, u"desk --convert"_s, m_desk.folder.path(), environment).status;
    }
    /// Of fewer files, which have the same kinds of moments.
    int callsOfAConversion()
    {
        m_old.removeIf(
            [](const auto &file) { return file.key().contains("Lan"_L1) || file.key().endsWith(".mdb"_L1); });
        makeDesk(m_old);
        const QString count = m_desk.folder.filePath(u"count"_s);
        return convertWith(u"count "_s + count) == 0 ? m_desk.fileBytes(count).toInt() : 0;
    }
    void verifyConverted(const QString &when) const
    {
        Files now = filesNow();
        Files expected;
        for (auto file = m_old.begin(); file != m_old.end(); ++file) {
            const bool old = isOld(*file);
            expected.insert(old ? oldFolderIn(m_folder) + u'/' + file.key() : file.key(), *file);
            QVERIFY2(!old || now.take(file.key()).startsWith("SQLite format 3"),
                     qPrintable(when + file.key()));
        }
        QVERIFY2(now == expected, qPrintable(when + now.keys().join(u", "_s)));
    }

    bool isTidy() const { return QDir(m_folder).entryList({u"Conversion*"_s}).isEmpty(); }

private Q_SLOTS:
    void everythingComesOverAsItWas()
    {
        makeDesk(m_old);
        const ToolRun before = runTool(PROGRAM, u"desk --check"_s, m_desk.folder.path());
        QVERIFY2(before.status == 1 && before.output.contains(u"--convert"_s), qPrintable(before.output));
        const conversion::Report report = conversion::convertDesk(m_folder, today);
        verifyConverted({});
        QVERIFY(isTidy());
        const ToolRun after = runTool(PROGRAM, u"desk --check"_s, m_desk.folder.path());
        QVERIFY2(after.status == 0 && after.output.count(u": ok\n"_s) == 6, qPrintable(after.output));
        QCOMPARE(report.oldFiles, u"Old files 2026-11-22"_s);
        QCOMPARE(report.files.at(1).tables.at(0).rows, 3);

        const QString customer = path(u"Customer.ccsm"_s);
        for (const auto &[select, found] :
             {std::pair(u"SN,CustomerName,ifinblacklist,Geburtstag,[credit limit],rate from customer"_s,
                        u"7|客户|1|2006-05-15 18:00:00|123.45|0.1\n9|007|0|Null|Null|0\n"
                        "12|Null|Null|Null|Null|nan"_s),
              {u"note,hex(photo) from customer where SN=7"_s, u"line one\r\nline \U0001F4DE|000102"_s},
              {u"CallID,IfResolved from CustomerRequest"_s, u"1|true\n1|false"_s},
              {u"* from [Our own list]"_s, u"kept\nKEPT"_s}}) {
            QCOMPARE(support::rowsOf(customer, u"select "_s + select), found);
        }

        store::Database database(customer);
        store::Recordset rows = database.OpenRecordset(u"customer"_s);
        rows.setIndex(u"SN"_s);
        QVERIFY(rows.Seek(9) && !rows.Seek(8));
        rows.AddNew(); // the number of a customer who was deleted is not given again
        QCOMPARE(rows.value(u"SN"_s).toInt(), 41);

        QVERIFY(conversion::convertDesk(m_folder, today).files.isEmpty());
        m_desk.writeFile(path(u"Lang.mdb"_s), m_old.value(u"Lang.mdb"_s)); // another old file on the same day
        QCOMPARE(conversion::convertDesk(m_folder, today).oldFiles, u"Old files 2026-11-22 (2)"_s);
    }

    void whatCannotBeConvertedLeavesTheDeskAsItWas()
    {
        const QString phoneBook = u"SimplePhoneBook.cpbk"_s;
        const JetTable numberTwice = {u"phonebook"_s, {{u"SN"_s, ColumnType::Long, false, true}}, {{1}, {1}}};
        for (const auto &[path, bytes, told] :
             {std::tuple(u"UserLang.lan"_s, m_old.value(u"UserLang.lan"_s).chopped(qsizetype(2) * 4096),
                         u"UserLang.lan: the table"_s),
              {phoneBook, support::encodedJetFile(), u"is encoded"_s},
              {phoneBook, support::jetFile({}), u"no table phonebook"_s},
              {phoneBook, support::jetFile({numberTwice}), u"UNIQUE"_s},
              {u"more.mdb"_s, support::jetFile({{u"a]b"_s, {{u"c"_s}}, {}}}), u"cannot be kept"_s},
              {u"Customer.ldb"_s, "DESK1"_ba, u"is open in another program"_s}}) {
            Files desk = m_old;
            desk.insert(path, bytes);
            makeDesk(desk);
            const QString error = support::errorOf([this] { conversion::convertDesk(m_folder, today); });
            QVERIFY2(error.contains(told), qPrintable(told + u": "_s + error));
            QVERIFY(filesNow() == desk);
            QVERIFY(isTidy() && oldFolderIn(m_folder).isEmpty());
        }
    }

    // Half of the moments among the last calls, when the files change places; the others anywhere before.
    void killedAtAnyMomentItLosesNothingAndIsCompletedNextTime()
    {
        const int calls = callsOfAConversion();
        QVERIFY(calls > 60);
        QRandomGenerator random(50);
        int ready = 0;
        for (int i = 0; i < 50; ++i) {
            const int moment = i < 25 ? calls - i : random.bounded(1, calls - 25);
            const QString when = u"killed before call %1 of %2: "_s.arg(moment).arg(calls);
            makeDesk(m_old);
            QCOMPARE(convertWith(u"kill %1"_s.arg(moment)), -1);
            const Files now = filesNow();
            const QString old = oldFolderIn(m_folder);
            for (auto file = m_old.begin(); file != m_old.end(); ++file) {
                const bool inPlace = now.value(file.key()) == file.value();
                const bool kept = !old.isEmpty() && now.value(old + u'/' + file.key()) == file.value();
                QVERIFY2(inPlace || kept, qPrintable(when + file.key()));
            }
            ready += old.isEmpty() ? 0 : 1;
            QCOMPARE(convertWith({}), 0);
            verifyConverted(when);
            QVERIFY2(isTidy(), qPrintable(when));
        }
        QVERIFY2(ready > 5 && ready < 45, qPrintable(QString::number(ready)));
    }

    void anyCallThatFailsLeavesTheDeskAsItWasOrConverted()
    {
        const int calls = callsOfAConversion();
        QRandomGenerator random(51);
        for (int i = 0; i < 30; ++i) {
            const QString fault =
                i % 2 == 0 ? u"fail %1"_s.arg(calls - i / 2) : u"full %1"_s.arg(random.bounded(1, calls));
            makeDesk(m_old);
            const int status = convertWith(fault);
            if (status == 0) {
                verifyConverted(fault);
            } else {
                QCOMPARE(status, 1);
                QVERIFY2(filesNow() == m_old, qPrintable(fault));
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_DeskConversion)
#include "tst_DeskConversion.moc"
