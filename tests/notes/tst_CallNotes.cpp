#include "NoteDesk.h"
#include "core/ReportPages.h"
#include "notes/CallNotes.h"
#include "notes/ExportText.h"
#include "notes/NoteConditions.h"
#include "notes/NoteReport.h"
#include "tools/ToolRun.h"

#include <QPrinter>

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
    void aSearchKeepsToTheCustomerOfItsWindow()
    {
        support::TestDesk desk;
        const QString query = MakeCondition(desk.log, {u"F'x"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}, 0});
        QVERIFY2(query.contains(u" and [CustomerName]='F''x' and "_s), qPrintable(query));
    }

    void valuesAreCheckedInTheirOrder()
    {
        NoteDesk desk;
        CallNotes calls(desk.log, desk.paths, desk.prompts, desk.texts);
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
        NoteReport report(desk.log, desk.paths.CustomerFile, noteQuery(u"A company with a long name"_s),
                          u"A company with a long name"_s);
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
        CallNotes calls(desk.log, desk.paths, desk.prompts, desk.texts);
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
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void exportWritesTheTextAndOpensTheEditorEvenWhenCancelled()
    {
        NoteDesk desk;
        const auto exportText = [&](const QString &text) {
            ExportText(desk.log, desk.paths, desk.prompts, desk.shell, desk.texts, text);
        };
        const QString file = desk.folder.filePath(u"out.txt"_s);
        desk.prompts.expectFile(file);
        exportText(u"Zażółć\r\n"_s);
        QCOMPARE(desk.fileBytes(file), "Zażółć\r\n\r\n");
        desk.prompts.expectFile({});
        exportText(u"x"_s);
        QCOMPARE(desk.shell.opened, QStringList({u"editText "_s + file, u"editText "_s}));
        desk.prompts.expectFile(desk.folder.path()); // no file can stand there
        desk.prompts.expect();
        exportText(u"x"_s);
        QVERIFY(desk.logMessages().value(0).startsWith(u"!ExportText "_s));
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
        const QString read = runTool("pdftotext", u"-layout \"%1\" -"_s.arg(file)).output;
        const QStringList pages = read.split(u'\f', Qt::SkipEmptyParts);
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
