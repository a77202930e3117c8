#include "NoteDesk.h"
#include "appearance/RecordGrid.h"
#include "notes/frmNotePad.h"
#include "notes/frmNotePadManager.h"

/// The manager of call notes, used as a person does.
class tst_frmNotePadManager : public QObject
{
    Q_OBJECT

    struct Desk : NoteDesk
    {
        Desk()
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
        const QString ids = support::columnOf(*control<appearance::RecordGrid>(form, "DataGrid1")->model());
        return QString(ids).remove(u"Call"_s).remove(u'|');
    }

private Q_SLOTS:
    void conditionsAreTrimmedAndTimesBoundTheWholeRange()
    {
        Desk desk;
        QWidget *form = desk.open();
        QCOMPARE(found(form), u"123"_s);
        for (const auto &[box, typed, ids] :
             {std::tuple("txtCustomerName", u" zet "_s, u"3"_s), {"txtNote", u"note_"_s, u"123"_s}}) {
            type(form, box, typed);
            QTest::keyClick(form->focusWidget(), Qt::Key_Return);
            QCOMPARE(found(form), ids);
            control<QLineEdit>(form, box)->clear();
        }
        control<QDateEdit>(form, "dtpStartDate")->setDate({2005, 3, 1});
        control<QTimeEdit>(form, "dtpStartTime")->setTime({8, 0});
        click(form, "cmdShowResult");
        QCOMPARE(found(form), u"23"_s);
        click(form, "cmdAllDates");
        QCOMPARE(found(form), u"1243"_s); // by customer first
    }

    void theGridIsTranslatedAndOpensTheCustomer()
    {
        Desk desk;
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
        QWidget *editor = support::openForm<notes::frmNotePad>();
        QCOMPARE(control<QTabWidget>(editor, "SSTab1")->currentIndex(), 1);
        QCOMPARE(control<QLineEdit>(editor, "txtCustomerName")->text(), u"Acme"_s);
    }

    void theResultIsPrintedWithOneHeadingPerCustomer()
    {
        Desk desk;
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

    void aFailingSearchLeavesTheGridAndALogLine()
    {
        Desk desk;
        desk.run(u"drop table CustomerRequest"_s);
        QWidget *form = desk.open();
        QVERIFY(desk.desk.logMessages().value(0).startsWith(u"!GetRecordSet "_s));
        QCOMPARE(control<QLabel>(form, "lblTotal")->text(), u"[NotesUnreadable]"_s);
        QTest::keyClick(form, Qt::Key_F1);
        QCOMPARE(desk.navigator.shown, QStringList(u"ShowHelp Popup_Notes_Manager"_s));
        QTest::keyClick(form, Qt::Key_Escape);
        QTRY_COMPARE(desk.openForms.count(), 0);
    }
};

QTEST_MAIN(tst_frmNotePadManager)
#include "tst_frmNotePadManager.moc"
