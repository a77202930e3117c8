#include "NoteDesk.h"
#include "core/qt/ReportPages.h"
#include "notes/CallNotes.h"
#include "notes/NoteConditions.h"
#include "notes/NoteReport.h"
#include "support/Row.h"
#include "tools/ToolRun.h"

#include <QPrinter>

using namespace notes;

/// Call notes without their windows: statements, rules, report, export and the printed pages.
class tst_CallNotes : public QObject
{
    Q_OBJECT

    struct Desk : NoteDesk
    {
        CallNotes calls{log, paths, texts};
    };
    static NoteEntry entryOf(const QString &customer, const QString &consultant = u"Ann"_s,
                             const QString &request = u"r"_s, const QString &response = u"s"_s)
    {
        const QDateTime time({2026, 11, 21}, {9, 30, 15});
        return {u"Call1"_s, customer, time, consultant, u"can't"_s, request, response, {}, 1};
    }

private Q_SLOTS:
    void aSearchKeepsToTheCustomerOfItsWindow()
    {
        support::TestDesk desk;
        const QString query = MakeCondition(desk.log, {u"F'x"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}, 0});
        QVERIFY2(query.contains(u" and [CustomerName]='F''x' and "_s), qPrintable(query));
    }

    void valuesAreCheckedInTheirOrder()
    {
        const Desk desk;
        const auto told = [&](const QString &customer, const QString &consultant = {},
                              const QString &request = {}) {
            return desk.calls.save({}, entryOf(customer, consultant, request, {})).message;
        };
        QCOMPARE(told(u""_s), u"CustomerName can not be empty!"_s);
        QCOMPARE(told(u"Nobody"_s), u"the customer is not exists!"_s);
        QCOMPARE(told(u"Acme"_s), u"Consultant can not be empty!"_s);
        QCOMPARE(told(u"Acme"_s, u"Ann"_s), u"the request can not be empty!"_s);
        QCOMPARE(told(u"Acme"_s, u"Ann"_s, u"r"_s), u"your response can not be empty!"_s);
        QCOMPARE(desk.rows(u"select count(*) from callinfo"_s), u"0"_s);
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
        for (const QString &piece :
             {u"\r\nCustomerName:       A company with a long name\r\n***"_s,
              u"Date/Time:"_s + QString(30, u' ') + u"\r\n"_s, u"\r\nOne\ntwo\r\n---"_s}) {
            QVERIFY2(report.text().contains(piece), qPrintable(piece));
        }
    }

    void savingAgainAddsAnEntryAndLeavesTheTimeAlone()
    {
        const Desk desk;
        NoteEntry entry = entryOf(u"O'Brien's"_s, u"Ann"_s, QString(100'000, u'\''), u"line\nline"_s);
        const SavedNote first = desk.calls.save({}, entry);
        QVERIFY(first.written);
        entry.dateAndTime = entry.dateAndTime.addDays(1);
        entry.consultant = u"Bob"_s;
        QVERIFY(desk.calls.save(first.call, entry).written);
        QCOMPARE(desk.rows(u"select DateAndTime,Consultant,CallContent from callinfo"_s),
                 u"2026-11-21 09:30:15|Bob|can't"_s);
        QCOMPARE(desk.rows(u"select length(Request),Response,IfResolved from customerrequest"_s),
                 u"100000|line\nline|true\n100000|line\nline|true"_s);
        desk.calls.RefreshNotePad(u"O'Brien's"_s, u"Acme"_s); // a name that exists takes the notes in
        QCOMPARE(desk.rows(u"select CustomerName from callinfo"_s), u"Acme"_s);
    }

    // What another desk does to the call between two of its entries.
    void twoDesksLoseNothingOfEachOther()
    {
        const QString update = u"update callinfo set "_s;
        for (const auto &[name, elsewhere, refused, call] : // the disputed column; the call when theirs hold
             {std::tuple("renamed customer", update + u"CustomerName='O''Brien''s'"_s, u""_s,
                         u"O'Brien's|Bob|can't"_s),
              {"other content", update + u"CallContent='new'"_s, u""_s, u"Acme|Bob|new"_s},
              {"other consultant", update + u"Consultant='Cid'"_s, u"Consultant"_s, u"Acme|Cid|can't"_s},
              {"deleted", u"delete from callinfo"_s, u"gone"_s, u"Acme|Bob|can't"_s}}) {
            const support::Row row(name);
            const Desk desk;
            NoteEntry entry = entryOf(u"Acme"_s);
            std::optional<CallFields> loaded = desk.calls.save({}, entry).call;
            desk.run(elsewhere);
            entry.consultant = u"Bob"_s;
            SavedNote saved = desk.calls.save(loaded, entry);
            const QString column = saved.disputed.isEmpty() ? u""_s : saved.disputed.constFirst().column;
            QCOMPARE(saved.gone ? u"gone"_s : column, refused);
            CallNotes::decide(saved, core::Whose::Theirs, loaded, entry);
            saved = saved.written ? saved : desk.calls.save(loaded, entry);
            QCOMPARE(desk.rows(u"select CustomerName,Consultant,CallContent from callinfo"_s), call);
            QCOMPARE(desk.rows(u"select count(*) from customerrequest"_s), u"2"_s);
        }
    }

    void printedPagesReadBackWithNumbersHeadingAndWrappedLines()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"out.pdf"_s);
        const QString text = u"line\r\n"_s.repeated(120) + u"word "_s.repeated(100) + u"end-word"_s;
        {
            QPrinter pdf(QPrinter::HighResolution);
            pdf.setOutputFileName(file);
            pdf.setPageSize(QPageSize(QPageSize::A4));
            core::drawPages(pdf, {u"Call notes"_s, text, {}, false}, [] {});
        }
        const QString read = runTool("pdftotext", u"-layout \"%1\" -"_s.arg(file)).output;
        const QStringList pages = read.split(u'\f', Qt::SkipEmptyParts);
        for (int i = 0; i < pages.size(); ++i) {
            const QString page = pages.at(i).simplified();
            QVERIFY(page.startsWith("Call notes "_L1) && page.endsWith(u" %1"_s.arg(i + 1)));
        }
        QCOMPARE(read.count(u"line\n"_s), 120);
        QVERIFY(pages.size() > 1 && pages.last().contains(u"end-word"_s));
    }
};

QTEST_MAIN(tst_CallNotes)
#include "tst_CallNotes.moc"
