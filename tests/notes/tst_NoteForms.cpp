#include "NoteDesk.h"
#include "notes/ReportRun.h"
#include "notes/forms/ReportBox.h"
#include "notes/forms/frmNotePad.h"
#include "notes/forms/frmNotePadManager.h"

using core::Prompts;
using notes::frmNotePad, notes::frmNotePadManager;
using support::find, support::press, support::type;

/// The editor and the manager of call notes, used as a person does.
class tst_NoteForms : public QObject
{
    Q_OBJECT

    static QWidget *editor() { return support::openForm<frmNotePad>(); }
    static QWidget *manager() { return support::openForm<frmNotePadManager>(); }
    static void typeEntry()
    {
        type<frmNotePad>("txtConsultant", u"Ann"_s);
        type<frmNotePad>("txtContent", u"Delivery"_s);
        type<frmNotePad>("txtRequest", u"can't wait"_s);
        type<frmNotePad>("txtResponse", u"Sent today"_s);
    }

    static QTableView *grid() { return find<frmNotePadManager, QTableView>("DataGrid1"); }

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
            support::columnOf(*grid()->model());
        }
    };
    static QString found() { return support::columnOf(*grid()->model()).remove(u"Call"_s); }

private Q_SLOTS:
    void twoEntriesOfOneCallShowInTheReport()
    {
        NoteDesk desk;
        QVERIFY(desk.windowsOfNotes.ShowNotePad(u" O'Brien's "_s, 1));
        QVERIFY(desk.values.NotePadOpen);
        QWidget *form = editor();
        QVERIFY(QTest::qWaitForWindowActive(form));
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(form->focusWidget()->objectName(), u"txtConsultant"_s);
        QCOMPARE(form->windowTitle(), u"O'Brien's - [EditCallNote]"_s);
        QCOMPARE(form->findChild<QLineEdit *>(u"txtCallID"_s)->text(), u"Call20261121093015"_s);
        typeEntry();
        form->findChild<QCheckBox *>(u"chkIfResolved"_s)->click();
        QTest::keyClick(form->findChild<QWidget *>(u"txtNote"_s), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(form->findChild<QPlainTextEdit *>(u"txtRequest"_s)->toPlainText(), QString());
        QVERIFY(!form->findChild<QCheckBox *>(u"chkIfResolved"_s)->isChecked());
        const auto *const message = form->findChild<QLabel *>(u"lblMessage"_s);
        QCOMPARE(message->text(), u"[EntrySaved]"_s);
        type<frmNotePad>("txtRequest", u"More"_s);
        QCOMPARE(message->text(), QString());
        type<frmNotePad>("txtResponse", u"Yes"_s);
        QTest::keyClick(form->focusWidget(), Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(form->focusWidget(), u"No"_s);
        press<frmNotePad>("cmdSave");
        QCOMPARE(desk.rows(u"select Response from CustomerRequest where Request='More'"_s), u"Yes\r\nNo"_s);
        QCOMPARE(desk.rows(u"select CustomerName,Request,IfResolved from CallInfo as c,CustomerRequest as r "
                           "where c.CallID=r.CallID"_s),
                 u"O'Brien's|can't wait|true\nO'Brien's|More|false"_s);
        form->findChild<QTabWidget *>(u"SSTab1"_s)->setCurrentIndex(0);
        press<frmNotePad>("cmdRefreshReport");
        auto *box = form->findChild<notes::ReportBox *>(u"txtReport"_s);
        QTRY_VERIFY(box->report().contains(u"can't wait\r\n"_s));
        QTRY_COMPARE(box->textCursor().position(), box->toPlainText().size());
        QTest::keyClicks(box, u"typed"_s);
        QTest::keyClick(box, Qt::Key_Backspace);
        QCOMPARE(box->toPlainText().size(), QString(box->report()).remove(u'\r').size());
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QVERIFY(box->textCursor().hasSelection());
        press<frmNotePad>("cmdPrint");
        QTRY_COMPARE(desk.printer.printed.value(0).text, box->report());
        QCOMPARE(desk.printer.printed.first().heading, u"[438]"_s);
        const QString file = desk.folder.filePath(u"out.txt"_s);
        desk.prompts.expectFile(file);
        press<frmNotePad>("cmdExport");
        QCOMPARE(desk.fileBytes(file), box->report().toUtf8() + "\r\n");
        desk.prompts.expectFile({}); // opens the editor even so
        press<frmNotePad>("cmdExport");
        QCOMPARE(desk.shell.opened, QStringList({u"editText "_s + file, u"editText "_s}));
        desk.prompts.expectFile(desk.folder.path()); // no file can stand there
        desk.prompts.expect();
        press<frmNotePad>("cmdExport");
        QVERIFY(desk.logMessages().constLast().startsWith(u"!ExportText "_s));
    }

    void typedTextIsNotLostUnaskedNorByAFailedSave()
    {
        NoteDesk desk;
        desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
        QPointer<QWidget> form = editor();
        type<frmNotePad>("txtRequest", u"half"_s);
        desk.prompts.expectSave(Prompts::Answer::Cancel);
        QVERIFY(!desk.windowsOfNotes.ShowNotePad(u"O'Brien's"_s, 0));
        desk.prompts.expectSave(Prompts::Answer::Save);
        desk.prompts.expect(); // the consultant is missing
        QTest::keyClick(form, Qt::Key_Escape);
        QVERIFY(form->isVisible());
        QCOMPARE(form->focusWidget()->objectName(), u"txtConsultant"_s);
        typeEntry();
        desk.prompts.expectSave(Prompts::Answer::Save);
        QTest::keyClick(form, Qt::Key_Escape);
        QTRY_VERIFY(form.isNull());
        QVERIFY(!desk.values.NotePadOpen);
        QCOMPARE(desk.rows(u"select Request from customerrequest"_s), u"can't wait"_s);
        QCOMPARE(desk.openForms.count(), 0);

        desk.run(u"drop table customerrequest"_s);
        desk.windowsOfNotes.ShowNotePad(u"Acme"_s, 1);
        typeEntry();
        desk.prompts.expect();
        press<frmNotePad>("cmdSave");
        QCOMPARE(desk.prompts.asked.last(), u"[NoteNotSaved]"_s);
        QCOMPARE(editor()->findChild<QPlainTextEdit *>(u"txtResponse"_s)->toPlainText(), u"Sent today"_s);
        QTRY_VERIFY(desk.logMessages().last().startsWith(u"!GetExportContent "_s)); // shown as no report
        QVERIFY(!find<frmNotePad>("cmdExport")->isEnabled());
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
        QVERIFY(desk.values.NotePadOpen);
        QTRY_COMPARE(desk.openForms.count(), 1);
        QVERIFY(desk.values.NotePadOpen); // the end of the first editor is not that of the second
        desk.windowsOfNotes.showManager();
        type<frmNotePadManager>("txtCustomerName", u"Acme"_s);
        press<frmNotePadManager>("cmdShowResult");
        QCOMPARE(found(), u"1"_s);
        desk.windowsOfNotes.RefreshNotePad(u"Acme"_s, u"O'Brien's"_s);
        QTRY_COMPARE(grid()->model()->index(0, 1).data().toString(), u"O'Brien's"_s);
        QCOMPARE((find<frmNotePadManager, QLineEdit>("txtCustomerName")->text()), u"O'Brien's"_s);
        QCOMPARE(editor()->findChildren<notes::ReportRun *>().size(), 1); // not that of the old name as well
        QCOMPARE(editor()->findChild<QLineEdit *>(u"txtCustomerName"_s)->text(), u"O'Brien's"_s);
        QTRY_VERIFY(editor()->findChild<notes::ReportBox *>(u"txtReport"_s)->report().contains(u"Old one"_s));
        desk.windowsOfNotes.RefreshNotePad(u"O'Brien's"_s, QString(10'000, u'x'));
        QCOMPARE(editor()->findChild<QLineEdit *>(u"txtCustomerName"_s)->text().size(), 10'000);
        manager()->close();
        editor()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(editor()));
        QTest::keyClick(editor(), Qt::Key_F1);
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
        FilledDesk desk;
        QWidget *form = manager();
        QCOMPARE(found(), u"1|2|3"_s);
        for (const auto &[box, typed, ids] :
             {std::tuple("txtCustomerName", u" zet "_s, u"3"_s), {"txtNote", u"note_"_s, u"1|2|3"_s}}) {
            type<frmNotePadManager>(box, typed);
            QTest::keyClick(form->focusWidget(), Qt::Key_Return);
            QCOMPARE(found(), ids);
            find<frmNotePadManager, QLineEdit>(box)->clear();
        }
        form->findChild<QDateEdit *>(u"dtpStartDate"_s)->setDate({2005, 3, 1});
        form->findChild<QTimeEdit *>(u"dtpStartTime"_s)->setTime({8, 0});
        press<frmNotePadManager>("cmdShowResult");
        QCOMPARE(found(), u"2|3"_s);
        press<frmNotePadManager>("cmdAllDates");
        QCOMPARE(found(), u"1|2|4|3"_s); // by customer first
        QCOMPARE(form->findChild<QDateEdit *>(u"dtpStartDate"_s)->date(), QDate(2005, 3, 1));
        QCOMPARE(form->findChild<QDateEdit *>(u"dtpEndDate"_s)->date(), QDate(2026, 11, 21));
        QVERIFY(QFile::copy(desk.paths.CustomerFile, desk.paths.StartFolder + u"/backup"_s));
        QVERIFY(QFile::remove(desk.paths.CustomerFile));
        QVERIFY(QFile::rename(desk.paths.StartFolder + u"/backup"_s, desk.paths.CustomerFile));
        desk.run(u"update callinfo set DateAndTime='2026/11' where CallID='Call4'"_s);
        press<frmNotePadManager>("cmdAllDates");
        QCOMPARE(form->findChild<QDateEdit *>(u"dtpEndDate"_s)->date(), QDate(9999, 12, 31));
        QTRY_COMPARE(grid()->model()->index(2, 2).data().toString(), u"2026/11"_s);
    }

    void theGridIsTranslatedAndOpensTheCustomer()
    {
        FilledDesk desk;
        QStringList cells;
        for (int column = 0; column < grid()->model()->columnCount(); ++column) {
            cells.append(grid()->model()->headerData(column, Qt::Horizontal).toString() +
                         grid()->model()->index(0, column).data().toString());
        }
        QCOMPARE(cells.join(u' '),
                 u"[CallID]Call1 [CustomerName]Acme [DateAndTime]2005-03-01 07:59:59 [Consultant]Ann "
                 "[CallContent]Invoice [Request]Pay [Response]Done [IfResolved][Yes] [Note]Note 1"_s);
        support::clickCell(grid(), 2, 1, true);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowCustomerByName Zeta"_s));
        desk.run(u"delete from callinfo"_s); // nobody waits for the open window
        type<frmNotePadManager>("txtCustomerName", u"Acme"_s);
        press<frmNotePadManager>("cmdAddNew");
        QCOMPARE(editor()->findChild<QTabWidget *>(u"SSTab1"_s)->currentIndex(), 1);
        QCOMPARE(editor()->findChild<QLineEdit *>(u"txtCustomerName"_s)->text(), u"Acme"_s);
    }

    void theResultIsPrintedWithOneHeadingPerCustomerAndALostTableTold()
    {
        FilledDesk desk;
        QWidget *form = manager();
        press<frmNotePadManager>("cmdPrintOut");
        QTRY_COMPARE(desk.printer.printed.size(), 1);
        const QString text = desk.printer.printed.first().text;
        QCOMPARE(text.count(u"CustomerName:"_s), 2);
        QCOMPARE(text.count(u"CallID:"_s), 3);
        type<frmNotePadManager>("txtCallID", u"none"_s);
        find<frmNotePadManager>("cmdExport")->setFocus();
        find<frmNotePadManager>("cmdShowResult")->click(); // by its letter
        QVERIFY(!find<frmNotePadManager>("cmdExport")->isEnabled());
        QCOMPARE(form->focusWidget()->objectName(), u"cmdShowResult"_s); // not the button that closes
        find<frmNotePadManager, QLineEdit>("txtCallID")->clear();
        press<frmNotePadManager>("cmdShowResult");
        desk.run(u"drop table CustomerRequest"_s);
        desk.prompts.expect();
        press<frmNotePadManager>("cmdExport"); // no file with a part of the report
        QTRY_COMPARE(desk.prompts.asked, QStringList(u"[NotesUnreadable]"_s));
        press<frmNotePadManager>("cmdShowResult");
        QVERIFY(desk.logMessages().last().startsWith(u"!GetRecordSet "_s));
        QCOMPARE(form->findChild<QLabel *>(u"lblTotal"_s)->text(), u"[NotesUnreadable]"_s);
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
        const QAbstractItemModel *model = grid()->model();
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
