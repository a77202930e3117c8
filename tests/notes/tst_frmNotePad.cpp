#include "NoteDesk.h"
#include "notes/ReportBox.h"
#include "notes/frmNotePad.h"

#include <QSignalSpy>

using core::Prompts;

/// The call note editor, used as a person does.
class tst_frmNotePad : public QObject
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
        QCOMPARE(desk.rows(u"select * from callinfo"_s),
                 u"Call20261121093015|O'Brien's|2026-11-21 09:30:15|Ann|Delivery"_s);
        QCOMPARE(desk.rows(u"select Request,IfResolved from customerrequest"_s),
                 u"can't wait|true\nMore|false"_s);

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
};

QTEST_MAIN(tst_frmNotePad)
#include "tst_frmNotePad.moc"
