#include "ProgramDesk.h"
#include "core/qt/QtPrinter.h"
#include "notes/forms/frmNotePad.h"
#include "notes/forms/frmNotePadManager.h"
#include "support/Rows.h"

#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>

using notes::frmNotePad, notes::frmNotePadManager;

/// From a call to its notes, and from the notes onto paper.
class tst_NotesRoad : public QObject
{
    Q_OBJECT

    static void save(const QString &request, const QString &response, const QString &note)
    {
        type<frmNotePad>("txtRequest", request);
        type<frmNotePad>("txtResponse", response);
        type<frmNotePad>("txtNote", note);
        press<frmNotePad>("cmdSave");
    }
    static int found()
    {
        press<frmNotePadManager>("cmdShowResult");
        const QAbstractItemModel &rows = *find<frmNotePadManager, QTableView>("DataGrid1")->model();
        support::columnOf(rows);
        return rows.rowCount();
    }
    static void saveTwoEntries(ProgramDesk &desk)
    {
        press<customers::FrmEditCustomer>("cmdViewNotePad");
        find<frmNotePad, QTabWidget>("SSTab1")->setCurrentIndex(1);
        type<frmNotePad>("txtConsultant", u"Ann O'Dell"_s);
        type<frmNotePad>("txtContent", u"Group booking"_s);
        find<frmNotePad>("chkIfResolved")->click();
        save(u"Ten rooms, can't wait"_s, u"Booked"_s, u"VIP rate"_s);
        desk.clock.time = desk.clock.time.addSecs(60);
        save(u"Breakfast"_s, u"Asking the kitchen"_s, {});
        openForm<frmNotePad>()->close();
    }
    static void eachConditionFinds()
    {
        for (const auto &[box, text, rows] : {std::tuple("txtCallID", u"20261121093015"_s, 2),
                                              {"txtCustomerName", u"lantern"_s, 2},
                                              {"txtConsultant", u"o'dell"_s, 2},
                                              {"txtContent", u"group"_s, 2},
                                              {"txtRequest", u"can't"_s, 1},
                                              {"txtResponse", u"kitchen"_s, 1},
                                              {"txtNote", u"vip"_s, 1}}) {
            type<frmNotePadManager>(box, text);
            QVERIFY2(found() == rows, box);
            find<frmNotePadManager, QLineEdit>(box)->clear();
        }
        auto *resolved = find<frmNotePadManager, QComboBox>("cmbIfResolved");
        for (const auto &[place, rows] : {std::pair(1, 1), {2, 1}, {0, 2}}) {
            resolved->setCurrentIndex(place);
            QCOMPARE(found(), rows);
        }
    }

private Q_SLOTS:
    void notesOfACallAreFoundExportedAndPrinted()
    {
        ProgramDesk desk;
        QVERIFY(desk.start());
        desk.showsACall();
        press<lookup::frmPopUp>("Command2");
        saveTwoEntries(desk);

        desk.choose("cmdCallInfo");
        press<frmNotePadManager>("cmdToday");
        eachConditionFinds();

        const QString text = desk.folder.filePath(u"notes.txt"_s);
        desk.prompts.expectFile(text);
        press<frmNotePadManager>("cmdExport");
        QTRY_COMPARE(desk.shell.opened, QStringList(u"editText "_s + text));
        QCOMPARE(desk.fileBytes(text).replace("\r\n", "\n"),
                 desk.fileBytes(QFINDTESTDATA("../data/notes-report.txt")));
        press<frmNotePadManager>("cmdPrintOut");
        QTRY_COMPARE(desk.printer.printed.size(), 1);
        core::QtPrinter().print(desk.printer.printed.first(), nullptr);
        const auto *preview = openForm<QPrintPreviewDialog>();
        QVERIFY(preview != nullptr);
        QTRY_COMPARE(preview->findChild<QPrintPreviewWidget *>()->pageCount(), 1);
    }
};

QTEST_MAIN(tst_NotesRoad)
#include "tst_NotesRoad.moc"
