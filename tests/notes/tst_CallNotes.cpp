#include "NoteDesk.h"
#include "core/ReportPages.h"
#include "notes/CallNotes.h"
#include "notes/ExportText.h"
#include "notes/NoteConditions.h"
#include "notes/NoteReport.h"

#include <QPrinter>
#include <QProcess>

using namespace notes;

namespace {

NoteEntry entryOf(const QString &customer, const QString &consultant, const QString &request,
                  const QString &response)
{
    const QDateTime time({2026, 11, 21}, {9, 30, 15});
    return {u"Call1"_s, customer, time, consultant, u"can't"_s, request, response, {}, 1};
}

} // namespace

/// Call notes without their windows: statements, rules, report, export and the printed pages.
class tst_CallNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyConditionStandsInItsPlace()
    {
        support::TestDesk desk;
        const QDateTime first({2001, 1, 1}, {0, 0});
        const QDateTime last({2009, 12, 31}, {23, 59, 59});
        const QString condition = MakeCondition(
            desk.log, {u"F'x"_s, u" id "_s, u"n"_s, u"c"_s, first, last, u"t"_s, u"r"_s, u"s"_s, u"o"_s, 2});
        QCOMPARE(condition,
                 u"select CustomerRequest.[CallID],CallInfo.[CustomerName],CallInfo.[DateAndTime],"
                 "CallInfo.[Consultant],CallInfo.[CallContent],CustomerRequest.[Request],"
                 "CustomerRequest.[Response],CustomerRequest.[IfResolved],CustomerRequest.[Note] "
                 "from CustomerRequest,CallInfo where CallInfo.CallID = CustomerRequest.CallID and "
                 "[CustomerName]='F''x' and CustomerRequest.[CallID] like '%id%' and [CustomerName] like "
                 "'%n%' and [Consultant] like '%c%' and [DateAndTime]>='2001-01-01 00:00:00' and "
                 "[DateAndTime]<='2009-12-31 23:59:59' and [CallContent] like '%t%' and [Request] like "
                 "'%r%' and [Response] like '%s%' and [Note] like '%o%' and [IfResolved] = False order by "
                 "CallInfo.[CustomerName],CustomerRequest.[CallID],CallInfo.[DateAndTime],"
                 "CustomerRequest.[IfResolved]"_s);
    }

    void valuesAreCheckedInTheirOrder()
    {
        NoteDesk desk;
        CallNotes calls(desk.desk.log, desk.desk.paths, desk.prompts, desk.texts);
        for (const auto &[customer, consultant, request, response, told] :
             {std::tuple(u""_s, u""_s, u""_s, u""_s, u"CustomerName can not be empty!"_s),
              {u"Nobody"_s, u""_s, u""_s, u""_s, u"the customer is not exists!"_s},
              {u"Acme"_s, u""_s, u""_s, u""_s, u"Consultant can not be empty!"_s},
              {u"Acme"_s, u"Ann"_s, u""_s, u""_s, u"the request can not be empty!"_s},
              {u"Acme"_s, u"Ann"_s, u"r"_s, u""_s, u"your response can not be empty!"_s}}) {
            desk.prompts.expect();
            QVERIFY(!calls.CheckValues(entryOf(customer, consultant, request, response)));
            QCOMPARE(desk.prompts.asked.last(), told);
        }
        QVERIFY(calls.CheckValues(entryOf(u"O'Brien's"_s, u"Ann"_s, u"r"_s, u"s"_s)));
    }

    void theReportCutsNothingAndReadsNullAsEmpty()
    {
        NoteDesk desk;
        desk.run(u"insert into callinfo values('Call1','A company with a long name',null,'Ann','One\ntwo');"
                 "insert into customerrequest values('Call1','Ask','Tell',1,null)"_s);
        NoteReport report(desk.desk.log, desk.desk.paths.CustomerFile,
                          noteQuery(u"A company with a long name"_s), u"A company with a long name"_s);
        while (report.GetExportContent()) {
        }
        for (const QString &part :
             {u"\r\nCustomerName:       A company with a long name\r\n***"_s,
              u"\r\nCallID:             Call1               Date/Time:"_s + QString(30, u' ') + u"\r\n"_s,
              u"\r\nOne\ntwo\r\n---"_s, u"\r\nTell\r\n< Note     >                  \r\n\r\n"_s}) {
            QVERIFY2(report.text().contains(part), qPrintable(part));
        }
    }

    void savingAgainAddsAnEntryAndLeavesTheTimeAlone()
    {
        NoteDesk desk;
        CallNotes calls(desk.desk.log, desk.desk.paths, desk.prompts, desk.texts);
        NoteEntry entry = entryOf(u"O'Brien's"_s, u"Ann"_s, QString(100'000, u'\''), u"line\nline"_s);
        QVERIFY(calls.save(entry));
        entry.dateAndTime = entry.dateAndTime.addDays(1);
        entry.consultant = u"Bob"_s;
        QVERIFY(calls.save(entry));
        QCOMPARE(desk.rows(u"select DateAndTime,Consultant,CallContent from callinfo"_s),
                 u"2026-11-21 09:30:15|Bob|can't"_s);
        QCOMPARE(desk.rows(u"select length(Request),Response,IfResolved from customerrequest"_s),
                 u"100000|line\nline|true\n100000|line\nline|true"_s);
        QVERIFY(calls.RefreshNotePad(u"O'Brien's"_s, u"Acme"_s)); // a name that exists takes the notes in
        QCOMPARE(desk.rows(u"select CustomerName from callinfo"_s), u"Acme"_s);
        QCOMPARE(desk.desk.logMessages(), QStringList());
    }

    void failuresAreLoggedUnderTheirNames()
    {
        NoteDesk desk;
        desk.run(u"drop table CallInfo; drop table CustomerRequest; drop table customer"_s);
        CallNotes calls(desk.desk.log, desk.desk.paths, desk.prompts, desk.texts);
        const NoteEntry entry = entryOf(u"Acme"_s, u"Ann"_s, u"r"_s, u"s"_s);
        desk.prompts.expect();
        QVERIFY(!calls.CheckValues(entry) && !calls.IfCallIDExists(u"x"_s) && !calls.AddNewCall(entry) &&
                !calls.UpdateCall(entry) && !calls.AddRR(entry) && !calls.RefreshNotePad(u"a"_s, u"b"_s));
        NoteReport report(desk.desk.log, desk.desk.paths.CustomerFile, noteQuery(u"Acme"_s), u"Acme"_s);
        QVERIFY(!report.GetExportContent());
        QCOMPARE(desk.desk.logMessages().replaceInStrings(QRegularExpression(u" .*"_s), u""_s).join(u' '),
                 u"!CheckValues !IfCallIDExists !AddNewCall !UpdateCall !AddRR !RefreshNotePad "
                 "!GetExportContent"_s);
    }

    void exportWritesTheTextAndOpensTheEditorEvenWhenCancelled()
    {
        NoteDesk desk;
        const auto exportText = [&](const QString &text) {
            ExportText(desk.desk.log, desk.desk.paths, desk.prompts, desk.shell, desk.texts, text);
        };
        const QString file = desk.desk.folder.filePath(u"out.txt"_s);
        exportText(u" \r\n"_s);
        QCOMPARE(desk.shell.opened, QStringList());
        desk.prompts.expectFile(file);
        exportText(u"Zażółć\r\n"_s);
        QCOMPARE(desk.desk.fileBytes(file), "Zażółć\r\n\r\n");
        desk.prompts.expectFile({});
        exportText(u"x"_s);
        QCOMPARE(desk.shell.opened, QStringList({u"editText "_s + file, u"editText "_s}));
        desk.prompts.expectFile(desk.desk.folder.path()); // no file can stand there
        desk.prompts.expect();
        exportText(u"x"_s);
        QVERIFY(desk.desk.logMessages().value(0).startsWith(u"!ExportText "_s));
    }

    void printedPagesReadBackWithNumbersHeadingAndWrappedLines()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"out.pdf"_s);
        const QString text = u"line\r\n"_s.repeated(120) + u"word "_s.repeated(100) + u"end-word"_s;
        int turns = 0; // of the event loop, which may have one behind each page
        {
            QPrinter pdf(QPrinter::HighResolution);
            pdf.setOutputFileName(file);
            pdf.setPageSize(QPageSize(QPageSize::A4));
            core::drawPages(pdf, {u"Call notes"_s, text, {}, false}, [&turns] { ++turns; });
        }
        QProcess reader;
        reader.start(u"pdftotext"_s, {u"-layout"_s, file, u"-"_s});
        QVERIFY(reader.waitForFinished());
        const QStringList pages =
            QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f', Qt::SkipEmptyParts);
        QVERIFY(turns > 0);
        QCOMPARE(pages.size(), turns + 1);
        for (int i = 0; i < pages.size(); ++i) {
            const QStringList lines = pages.at(i).split(u'\n', Qt::SkipEmptyParts);
            QCOMPARE(lines.first().trimmed(), u"Call notes"_s);
            QCOMPARE(lines.last().trimmed(), QString::number(i + 1));
        }
        QCOMPARE(pages.join(QString()).count(u"line\n"_s), 120);
        QVERIFY(pages.last().contains(u"end-word"_s));
    }
};

QTEST_MAIN(tst_CallNotes)
#include "tst_CallNotes.moc"
