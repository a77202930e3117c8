#include "NoteDesk.h"
#include "notes/ReportRun.h"
#include "notes/forms/ReportBox.h"
#include "notes/forms/frmNotePad.h"
#include "notes/forms/frmNotePadManager.h"
#include "support/Ui.h"

using core::Prompts;

/// The editor and the manager of call notes, used as a person does.
class tst_NoteForms : public QObject
{
    Q_OBJECT

    using Editor = support::Ui<notes::frmNotePad>;
    using Manager = support::Ui<notes::frmNotePadManager>;

    static void typeEntry()
    {
        Editor::type("txtConsultant", u"Ann"_s);
        Editor::type("txtContent", u"Delivery"_s);
        Editor::type("txtRequest", u"can't wait"_s);
        Editor::type("txtResponse", u"Sent today"_s);
    }
    static notes::ReportBox *report() { return Editor::find<notes::ReportBox>("txtReport"); }

    struct FilledDesk : NoteDesk
    {
        FilledDesk()
        {
            run(u"insert into callinfo values('Call1','Acme','2005-03-01 07:59:59','Ann','Invoice'),"
                "('Call2','Acme','2005-03-01 08:00:00','Bob','Invoice'),"
                "('Call3','Zeta','2005-03-02 07:00:00','Ann','Order'),"
                "('Call4','Acme','2026-11-21 09:00:00','Ann','New');"
                "insert into customerrequest values('Call1','Pay','Done',1,'Note 1'),"
                "('Call2','Wait','',0,'Note 2'),('Call3','Ship','',0,'Note 3'),('Call4','Ask','',0,'')"_s);
            windowsOfNotes.showManager();
            Manager::activate();
            Manager::rows();
        }
    };
    static QString found() { return Manager::rows().remove(u"Call"_s); }

private Q_SLOTS:
    void twoEntriesOfOneCallAreSaved()
    {
        NoteDesk desk;
        QVERIFY(desk.windowsOfNotes.ShowNotePad(u" O'Brien's "_s, 1));
        Editor::activate();
        support::key(Qt::Key_Tab, Qt::ControlModifier);
        support::key(Qt::Key_Tab, Qt::ControlModifier);
        QVERIFY(Editor::hasFocus("txtConsultant"));
        QCOMPARE(Editor::text("txtCallID"), u"Call20261121093015"_s);
        typeEntry();
        Editor::key("chkIfResolved", Qt::Key_Space);
        Editor::key("txtNote", Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(Editor::text("txtRequest"), QString());
        QVERIFY(!Editor::find<QCheckBox>("chkIfResolved")->isChecked());
        QCOMPARE(Editor::text("lblMessage"), u"[EntrySaved]"_s);
        Editor::type("txtRequest", u"More"_s);
        QCOMPARE(Editor::text("lblMessage"), QString());
        Editor::type("txtResponse", u"Yes"_s);
        support::key(Qt::Key_Return, Qt::ShiftModifier);
        support::keys(u"No"_s);
        Editor::press("cmdSave");
        QCOMPARE(desk.rows(u"select CustomerName,Request,Response,IfResolved from CallInfo as c,"
                           "CustomerRequest as r where c.CallID=r.CallID"_s),
                 u"O'Brien's|can't wait|Sent today|true\nO'Brien's|More|Yes\r\nNo|false"_s);
    }

    void theReportOfTwoEntriesIsOnlyReadPrintedAndExported()
    {
        NoteDesk desk;
        desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
        for (int entry = 0; entry < 2; ++entry) {
            typeEntry();
            Editor::press("cmdSave");
        }
        Editor::find<QTabWidget>("SSTab1")->setCurrentIndex(0);
        Editor::press("cmdRefreshReport");
        QTRY_COMPARE(report()->report().count(u"can't wait\r\n"_s), 2);
        QCOMPARE(report()->report().count(u"CallID:"_s), 1);
        QTRY_COMPARE(report()->textCursor().position(), report()->toPlainText().size());
        QTest::keyClicks(report(), u"typed"_s);
        QCOMPARE(report()->toPlainText().size(), QString(report()->report()).remove(u'\r').size());
        Editor::press("cmdPrint");
        QTRY_COMPARE(desk.printer.printed.value(0).text, report()->report());
        const QString file = desk.folder.filePath(u"out.txt"_s);
        for (const QString &target : {file, QString()}) { // opens the editor even so
            desk.prompts.expectFile(target);
            Editor::press("cmdExport");
            QCOMPARE(desk.shell.opened.takeLast(), u"editText "_s + target);
        }
        QCOMPARE(desk.fileBytes(file), report()->report().toUtf8() + "\r\n");
        desk.prompts.expectFile(desk.folder.path()); // no file can stand there
        desk.prompts.expect();
        Editor::press("cmdExport");
    }

    void typedTextIsNotLostUnaskedNorByAFailedSave()
    {
        NoteDesk desk;
        desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
        Editor::type("txtRequest", u"half"_s);
        desk.prompts.expectSave(Prompts::Answer::Cancel);
        QVERIFY(!desk.windowsOfNotes.ShowNotePad(u"O'Brien's"_s, 0));
        desk.prompts.expectSave(Prompts::Answer::Save);
        desk.prompts.expect(); // the consultant is missing
        QTest::keyClick(Editor::form(), Qt::Key_Escape);
        QVERIFY(Editor::hasFocus("txtConsultant"));
        typeEntry();
        desk.prompts.expectSave(Prompts::Answer::Save);
        QTest::keyClick(Editor::form(), Qt::Key_Escape);
        QTRY_COMPARE(desk.openForms.count(), 0);
        QCOMPARE(desk.rows(u"select Request from customerrequest"_s), u"can't wait"_s);
        for (const char *box : {"txtCustomerName", "txtConsultant"}) {
            desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
            Editor::type(box, u"Ann"_s);
            desk.prompts.expectSave(Prompts::Answer::Discard);
            Editor::form()->close();
        }

        desk.run(u"drop table customerrequest"_s);
        desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
        typeEntry();
        desk.prompts.expect();
        Editor::press("cmdSave");
        QCOMPARE(desk.prompts.asked.last(), u"[NoteNotSaved]"_s);
        QCOMPARE(Editor::text("txtResponse"), u"Sent today"_s);
    }

    void aSecondEditorTakesTheFirstOnesPlaceAndARenamedCustomerIsFollowed()
    {
        NoteDesk desk;
        desk.run(u"insert into callinfo values('Call1','Acme','2005-03-01 08:00:00','Ann','c');"
                 "insert into customerrequest values('Call1','Old one','',0,'')"_s);
        desk.windowsOfNotes.ShowNotePad(u"O'Brien's"_s, 0);
        QVERIFY(desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 0));
        QTRY_COMPARE(desk.openForms.count(), 1);
        desk.windowsOfNotes.showManager();
        Manager::type("txtCustomerName", u"Acme"_s);
        Manager::press("cmdShowResult");
        QCOMPARE(found(), u"1"_s);
        desk.windowsOfNotes.RefreshNotePad(u"Acme"_s, u"O'Brien's"_s);
        QTRY_COMPARE(Manager::rows(1), u"O'Brien's"_s);
        QCOMPARE(Manager::text("txtCustomerName"), u"O'Brien's"_s);
        QCOMPARE(Editor::text("txtCustomerName"), u"O'Brien's"_s);
        QCOMPARE(Editor::form()->findChildren<notes::ReportRun *>().size(), 1); // not the old name's as well
        QTRY_VERIFY(report()->report().contains(u"Old one"_s));
        QTest::keyClick(Editor::form(), Qt::Key_F1);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowHelp Popup_Notes"_s));
    }

    void aReportOfManyPiecesIsFilledInWhole()
    {
        notes::ReportBox box;
        QSignalSpy filled(&box, &notes::ReportBox::filled);
        const QString report = (QString(130'000, u'x') + u"\r\n"_s).repeated(2) + u"a\r\n"_s.repeated(60'000);
        box.setReport(u"old\r\n"_s);
        box.setReport(report);
        QTRY_COMPARE(filled.size(), 2);
        QCOMPARE(box.text(), report);
        QVERIFY(box.document()->blockCount() > 2 * 130'000 / notes::ReportBox::longestBlock);
        QCOMPARE(box.report(), report);
    }

    void conditionsAreTrimmedAndTimesBoundTheWholeRange()
    {
        const FilledDesk desk;
        QCOMPARE(found(), u"1|2|3"_s);
        Manager::type("txtCustomerName", u" zet "_s);
        support::key(Qt::Key_Return);
        QCOMPARE(found(), u"3"_s);
        Manager::set("txtCustomerName", {});
        Manager::find<QDateEdit>("dtpStartDate")->setDate({2005, 3, 1});
        Manager::find<QTimeEdit>("dtpStartTime")->setTime({8, 0});
        Manager::press("cmdShowResult");
        QCOMPARE(found(), u"2|3"_s);
        desk.run(u"update callinfo set DateAndTime='2026/11' where CallID='Call4'"_s);
        Manager::press("cmdAllDates");
        QCOMPARE(found(), u"1|2|4|3"_s); // by customer first
        QCOMPARE(Manager::find<QDateEdit>("dtpStartDate")->date(), QDate(2005, 3, 1));
        QCOMPARE(Manager::rows(2).section(u'|', 2, 2), u"2026/11"_s);
    }

    void theGridIsTranslatedAndOpensTheCustomer()
    {
        const FilledDesk desk;
        QStringList cells;
        const QAbstractItemModel *model = Manager::grid()->model();
        for (int column = 0; column < model->columnCount(); ++column) {
            cells.append(model->headerData(column, Qt::Horizontal).toString() +
                         model->index(0, column).data().toString());
        }
        QCOMPARE(cells.join(u' '),
                 u"[CallID]Call1 [CustomerName]Acme [DateAndTime]2005-03-01 07:59:59 [Consultant]Ann "
                 "[CallContent]Invoice [Request]Pay [Response]Done [IfResolved][Yes] [Note]Note 1"_s);
        support::clickCell(Manager::grid(), 2, 1, true);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowCustomerByName Zeta"_s));
        desk.run(u"delete from callinfo"_s); // nobody waits for the open window
        Manager::type("txtCustomerName", u"Acme"_s);
        Manager::press("cmdAddNew");
        QCOMPARE(Editor::text("txtCustomerName"), u"Acme"_s);
    }

    void theResultIsPrintedWithOneHeadingPerCustomerAndALostTableTold()
    {
        FilledDesk desk;
        Manager::press("cmdPrintOut");
        QTRY_COMPARE(desk.printer.printed.size(), 1);
        const QString text = desk.printer.printed.first().text;
        QCOMPARE(text.count(u"CustomerName:"_s), 2);
        QCOMPARE(text.count(u"CallID:"_s), 3);
        Manager::type("txtCallID", u"none"_s);
        Manager::find("cmdExport")->setFocus();
        Manager::find<QAbstractButton>("cmdShowResult")->click(); // by its letter
        QVERIFY(!Manager::isEnabled("cmdExport"));
        QVERIFY(Manager::hasFocus("cmdShowResult")); // not the button that closes
        Manager::set("txtCallID", {});
        Manager::press("cmdShowResult");
        desk.run(u"drop table CustomerRequest"_s);
        desk.prompts.expect();
        Manager::press("cmdExport"); // no file with a part of the report
        QTRY_COMPARE(desk.prompts.asked, QStringList(u"[NotesUnreadable]"_s));
        Manager::press("cmdShowResult");
        QCOMPARE(Manager::text("lblTotal"), u"[NotesUnreadable]"_s);
        QTest::keyClick(Manager::form(), Qt::Key_F1);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowHelp Popup_Notes_Manager"_s));
    }

    void aLongResultComesInOrderAndWhole()
    {
        NoteDesk desk;
        desk.run(u"insert into callinfo with recursive n(i) as (select 1 union all select i+1 from n where "
                 "i<3000) select 'Call'||i, case when i%7=0 then null else 'C'||(i%13) end, '2005-01-01 "
                 "00:00:00', 'Ann', '' from n;"
                 "insert into customerrequest select CallID,'r','s',rowid%2,'' from callinfo;"
                 "insert into customerrequest select CallID,'r','s',rowid%3=0,'' from callinfo"_s);
        desk.windowsOfNotes.showManager();
        for (const auto &[column, field] :
             {std::pair(1, u"c.CustomerName"_s), {0, u"r.CallID"_s}, {7, u"r.IfResolved"_s}}) {
            QString expected =
                desk.rows(u"select %1 from CustomerRequest as r,CallInfo as c where c.CallID=r.CallID "
                          "order by c.CustomerName,r.CallID,r.IfResolved"_s.arg(field));
            expected.remove(u"Null"_s).replace(u"true"_s, u"[Yes]"_s).replace(u"false"_s, u"[No]"_s);
            QCOMPARE(Manager::rows(column), expected.replace(u'\n', u'|'));
            QCOMPARE(expected.count(u'|'), 5999);
        }
    }
};

QTEST_MAIN(tst_NoteForms)
#include "tst_NoteForms.moc"
