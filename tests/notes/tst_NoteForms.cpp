#include "NoteDesk.h"
#include "appearance/RecordGrid.h"
#include "notes/ReportBox.h"
#include "notes/ReportRun.h"
#include "notes/frmNotePad.h"
#include "notes/frmNotePadManager.h"

using core::Prompts;

/// The editor and the manager of call notes, used as a person does.
class tst_NoteForms : public QObject
{
    Q_OBJECT

    static QWidget *editor() { return support::openForm<notes::frmNotePad>(); }
    static void typeEntry(QWidget *form)
    {
        type(form, "txtConsultant", u"Ann"_s);
        type(form, "txtContent", u"Delivery"_s);
        type(form, "txtRequest", u"can't wait"_s);
        type(form, "txtResponse", u"Sent today"_s);
    }

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
        }
        QWidget *open()
        {
            windowsOfNotes.showManager();
            return support::openForm<notes::frmNotePadManager>();
        }
    };
    static QString found(QWidget *form)
    {
        return support::columnOf(*control<QTableView>(form, "DataGrid1")->model()).remove(u"Call"_s);
    }

private Q_SLOTS:
    void twoEntriesOfOneCallShowInTheReport()
    {
        NoteDesk desk;
        QVERIFY(desk.windowsOfNotes.ShowNotePad(u" O'Brien's "_s, 1));
        QVERIFY(desk.desk.values.NotePadOpen);
        QWidget *form = editor();
        QCOMPARE(control<QLineEdit>(form, "txtCallID")->text(), u"Call20261121093015"_s);
        typeEntry(form);
        control<QCheckBox>(form, "chkIfResolved")->click();
        QTest::keyClick(control<QWidget>(form, "txtNote"), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(control<QPlainTextEdit>(form, "txtRequest")->toPlainText(), QString());
        QVERIFY(!control<QCheckBox>(form, "chkIfResolved")->isChecked());
        type(form, "txtRequest", u"More"_s);
        type(form, "txtResponse", u"Yes"_s);
        click(form, "cmdSave");
        QCOMPARE(desk.rows(u"select CustomerName,Request,IfResolved from CallInfo as c,CustomerRequest as r "
                           "where c.CallID=r.CallID"_s),
                 u"O'Brien's|can't wait|true\nO'Brien's|More|false"_s);
        control<QTabWidget>(form, "SSTab1")->setCurrentIndex(0);
        click(form, "cmdRefreshReport");
        auto *box = control<notes::ReportBox>(form, "txtReport");
        QTRY_VERIFY(box->report().contains(u"can't wait\r\n"_s));
        QTRY_COMPARE(box->textCursor().position(), box->toPlainText().size());
        QTest::keyClicks(box, u"typed"_s);
        QTest::keyClick(box, Qt::Key_Backspace);
        QCOMPARE(box->toPlainText().size(), QString(box->report()).remove(u'\r').size());
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QVERIFY(box->textCursor().hasSelection());
        click(form, "cmdPrint");
        QTRY_COMPARE(desk.printer.printed.value(0).text, box->report());
        QCOMPARE(desk.printer.printed.first().heading, u"[438]"_s);
        const QString file = desk.desk.folder.filePath(u"out.txt"_s);
        desk.prompts.expectFile(file);
        click(form, "cmdExport");
        QCOMPARE(desk.desk.fileBytes(file), box->report().toUtf8() + "\r\n");
    }

    void typedTextIsNotLostUnaskedNorByAFailedSave()
    {
        NoteDesk desk;
        desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
        QPointer<QWidget> form = editor();
        type(form, "txtRequest", u"half"_s);
        desk.prompts.expectSave(Prompts::Answer::Cancel);
        QVERIFY(!desk.windowsOfNotes.ShowNotePad(u"O'Brien's"_s, 0));
        desk.prompts.expectSave(Prompts::Answer::Save);
        desk.prompts.expect(); // the consultant is missing
        QTest::keyClick(form, Qt::Key_Escape);
        QVERIFY(form->isVisible());
        typeEntry(form);
        desk.prompts.expectSave(Prompts::Answer::Save);
        QTest::keyClick(form, Qt::Key_Escape);
        QTRY_VERIFY(form.isNull());
        QVERIFY(!desk.desk.values.NotePadOpen);
        QCOMPARE(desk.rows(u"select Request from customerrequest"_s), u"can't wait"_s);
        QCOMPARE(desk.openForms.count(), 0);

        desk.run(u"drop table customerrequest"_s);
        desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
        typeEntry(editor());
        desk.prompts.expect();
        click(editor(), "cmdSave");
        QCOMPARE(desk.prompts.asked.last(), u"[NoteNotSaved]"_s);
        QCOMPARE(control<QPlainTextEdit>(editor(), "txtResponse")->toPlainText(), u"Sent today"_s);
        QTRY_VERIFY(desk.desk.logMessages().last().startsWith(u"!GetExportContent "_s)); // shown as no report
        desk.prompts.expectSave(Prompts::Answer::Discard);
        editor()->close();
    }

    void aSecondEditorTakesTheFirstOnesPlaceAndARenamedCustomerIsFollowed()
    {
        NoteDesk desk;
        desk.run(u"insert into callinfo values('Call1','Acme','2005-03-01 08:00:00','Ann','c');"
                 "insert into customerrequest values('Call1','Old one','',0,'')"_s);
        desk.windowsOfNotes.ShowNotePad(u"O'Brien's"_s, 0);
        QVERIFY(desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 0));
        QVERIFY(desk.desk.values.NotePadOpen);
        QCOMPARE(desk.openForms.count(), 1);
        desk.windowsOfNotes.RefreshNotePad(u"Acme"_s, u"O'Brien's"_s);
        QCOMPARE(editor()->findChildren<notes::ReportRun *>().size(), 1); // not that of the old name as well
        QCOMPARE(control<QLineEdit>(editor(), "txtCustomerName")->text(), u"O'Brien's"_s);
        QTRY_VERIFY(control<notes::ReportBox>(editor(), "txtReport")->report().contains(u"Old one"_s));
        desk.windowsOfNotes.RefreshNotePad(u"O'Brien's"_s, QString(10'000, u'x'));
        QCOMPARE(control<QLineEdit>(editor(), "txtCustomerName")->text().size(), 10'000);
        QTest::keyClick(editor(), Qt::Key_F1);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowHelp Popup_Notes"_s));
    }

    void aReportOfManyPiecesIsFilledInWhole()
    {
        notes::ReportBox box;
        QSignalSpy filled(&box, &notes::ReportBox::filled);
        const QString report = (QString(70'000, u'x') + u"\r\n"_s).repeated(2) + u"a\r\n"_s.repeated(60'000);
        box.setReport(u"old\r\n"_s);
        box.setReport(report);
        QTRY_COMPARE(filled.size(), 2);
        QCOMPARE(box.toPlainText(), QString(report).remove(u'\r'));
        QCOMPARE(box.report(), report);
    }

    void conditionsAreTrimmedAndTimesBoundTheWholeRange()
    {
        FilledDesk desk;
        QWidget *form = desk.open();
        QCOMPARE(found(form), u"1|2|3"_s);
        for (const auto &[box, typed, ids] :
             {std::tuple("txtCustomerName", u" zet "_s, u"3"_s), {"txtNote", u"note_"_s, u"1|2|3"_s}}) {
            type(form, box, typed);
            QTest::keyClick(form->focusWidget(), Qt::Key_Return);
            QCOMPARE(found(form), ids);
            control<QLineEdit>(form, box)->clear();
        }
        control<QDateEdit>(form, "dtpStartDate")->setDate({2005, 3, 1});
        control<QTimeEdit>(form, "dtpStartTime")->setTime({8, 0});
        click(form, "cmdShowResult");
        QCOMPARE(found(form), u"2|3"_s);
        click(form, "cmdAllDates");
        QCOMPARE(found(form), u"1|2|4|3"_s); // by customer first
    }

    void theGridIsTranslatedAndOpensTheCustomer()
    {
        FilledDesk desk;
        QWidget *form = desk.open();
        auto *grid = control<appearance::RecordGrid>(form, "DataGrid1");
        QStringList cells;
        for (int column = 0; column < grid->model()->columnCount(); ++column) {
            cells.append(grid->model()->headerData(column, Qt::Horizontal).toString() +
                         grid->model()->index(0, column).data().toString());
        }
        QCOMPARE(cells.join(u' '),
                 u"[CallID]Call1 [CustomerName]Acme [DateAndTime]2005-03-01 07:59:59 [Consultant]Ann "
                 "[CallContent]Invoice [Request]Pay [Response]Done [IfResolved][Yes] [Note]Note 1"_s);
        support::clickCell(grid, 2, 1, true);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowCustomerByName Zeta"_s));
        desk.run(u"delete from callinfo"_s); // nobody waits for the open window
        type(form, "txtCustomerName", u"Acme"_s);
        click(form, "cmdAddNew");
        QCOMPARE(control<QTabWidget>(editor(), "SSTab1")->currentIndex(), 1);
        QCOMPARE(control<QLineEdit>(editor(), "txtCustomerName")->text(), u"Acme"_s);
    }

    void theResultIsPrintedWithOneHeadingPerCustomerAndALostTableTold()
    {
        FilledDesk desk;
        QWidget *form = desk.open();
        click(form, "cmdPrintOut");
        QTRY_COMPARE(desk.printer.printed.size(), 1);
        const QString text = desk.printer.printed.first().text;
        QCOMPARE(text.count(u"CustomerName:"_s), 2);
        QCOMPARE(text.count(u"CallID:"_s), 3);
        type(form, "txtCallID", u"none"_s);
        click(form, "cmdShowResult");
        click(form, "cmdExport"); // nothing to export: no dialog comes
        QTRY_VERIFY(control<QWidget>(form, "cmdExport")->isEnabled());
        desk.run(u"drop table CustomerRequest"_s);
        desk.prompts.expect();
        click(form, "cmdExport"); // no file with a part of the report
        QTRY_COMPARE(desk.prompts.asked, QStringList(u"[NotesUnreadable]"_s));
        click(form, "cmdShowResult");
        QVERIFY(desk.desk.logMessages().last().startsWith(u"!GetRecordSet "_s));
        QCOMPARE(control<QLabel>(form, "lblTotal")->text(), u"[NotesUnreadable]"_s);
        QTest::keyClick(form, Qt::Key_F1);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowHelp Popup_Notes_Manager"_s));
        QTest::keyClick(form, Qt::Key_Escape);
        QTRY_COMPARE(desk.openForms.count(), 0);
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
        QWidget *form = support::openForm<notes::frmNotePadManager>();
        const QAbstractItemModel *model = control<appearance::RecordGrid>(form, "DataGrid1")->model();
        QTRY_COMPARE(model->rowCount(), 6000);
        QString expected =
            desk.rows(u"select c.CustomerName,r.CallID,r.IfResolved from CustomerRequest as r,CallInfo as c "
                      "where c.CallID=r.CallID order by c.CustomerName,r.CallID,r.IfResolved"_s);
        expected.remove(u"Null"_s).replace(u"true"_s, u"[Yes]"_s).replace(u"false"_s, u"[No]"_s);
        QStringList shown;
        for (int row = 0; row < model->rowCount(); ++row) {
            const auto cell = [&](int column) { return model->index(row, column).data().toString(); };
            shown.append(cell(1) + u'|' + cell(0) + u'|' + cell(7));
        }
        QCOMPARE(shown.join(u'\n'), expected);
    }
};

QTEST_MAIN(tst_NoteForms)
#include "tst_NoteForms.moc"
