#include "ProgramDesk.h"
#include "copies/CopyFolder.h"
#include "support/Rows.h"
#include "support/Ui.h"

#include <QNetworkDatagram>

using customers::FrmEditCustomer;
using Import = support::Ui<imports::frmImport>;
using phonebook::frmChoosePhoneDatabase;

/// From a call to the customer's record and back: what is typed reaches the file, the unit and the next call.
class tst_CustomerRoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anUnknownCallerIsFiledForwardedAndPopsUpTheNextTime()
    {
        const QString number = u"2125550188"_s;
        ProgramDesk desk;
        core::SettingsRecord record;
        record.ListUnpoppedCalls = 1;
        record.PopupDetail = 1;
        desk.writeFile(desk.paths.SettingsFile, record.toBytes());
        QUdpSocket forwarded;
        QVERIFY(forwarded.bind(QHostAddress::LocalHost, reception::Forwarding::remotePort));
        QVERIFY(desk.start());
        desk.send(call(number, {}, {}, {}, {}));
        QTRY_COMPARE(desk.window().calls().rowCount(), 1);
        QCOMPARE(openForm<lookup::frmPopUp>(), nullptr);

        support::clickCell(find<mainwindow::FrmMain, QTableView>("gridCallerId"), 0, 2, true);
        press<frmChoosePhoneDatabase>("Option2");
        press<frmChoosePhoneDatabase>("OKButton");
        QCOMPARE((find<FrmEditCustomer, QLineEdit>("txtCompanyCall")->text()), number);
        type<FrmEditCustomer>("txtCustomerName", u"Old Mill's Cheese"_s);
        press<FrmEditCustomer>("Command2");
        const QString sn = find<FrmEditCustomer, QLineEdit>("txtSN")->text();
        QVERIFY(sn.toInt() > 0);
        QTRY_VERIFY(desk.unit.hasPendingDatagrams());
        QCOMPARE(desk.unit.receiveDatagram().data(), "REFRESHCUSTOMERLIST");
        QTRY_VERIFY(forwarded.hasPendingDatagrams());
        QVERIFY(forwarded.receiveDatagram().data().startsWith("Old Mill\x92s Cheese"));
        QVERIFY(openForm<FrmEditCustomer>()->close());

        desk.send(call(number, {}, {}, {}, {}));
        QVERIFY(desk.card().contains(u"Old Mill\u2019s Cheese"_s));
        desk.program->windows().Show_Editor({core::RowKey::Table::Customer, sn.toInt()});
        type<FrmEditCustomer>("txtCustomerName", u"New Mill"_s);
        press<FrmEditCustomer>("Command2");
        QVERIFY(desk.card().contains(u"New Mill"_s));
        press<lookup::frmPopUp>("Command2");
        QCOMPARE((find<FrmEditCustomer, QLineEdit>("txtCustomerName")->text()), u"New Mill"_s);
    }

    void importedRowsAreListedAndKnownAtOnce()
    {
        ProgramDesk desk;
        QVERIFY(desk.start());
        desk.showsACall();
        const copies::CopyFolder copies(desk.paths);
        QTRY_COMPARE(copies.copies().size(), 1); // the day's
        const QString list = desk.folder.filePath(u"new.csv"_s);
        desk.writeFile(list, "Company;Phone\nNew Mill;(212) 555-0188\nWithout a number;\n;5550000\n");
        desk.choose("Command1");
        const int before = find<customers::FrmCustomer, QTableView>("DataGrid1")->model()->rowCount();
        press<customers::FrmCustomer>("cmdImport");
        desk.prompts.expectFile(list);
        Import::key("cmdChoose", Qt::Key_Space);
        QTRY_VERIFY(Import::isEnabled("cmdImport"));
        Import::key("cmdCheck", Qt::Key_Space);
        QTRY_COMPARE(Import::text("lblResult"),
                     u"This would be imported. New: 2, changed: 0, left as they are: "
                     "0, refused: 1."_s);
        const QString refused = desk.folder.filePath(u"refused.txt"_s);
        desk.prompts.expectFile(refused);
        Import::press("cmdSaveList");
        QCOMPARE(desk.fileBytes(refused), "Row 4: no name\r\n");
        QVERIFY(!desk.unit.hasPendingDatagrams());
        Import::key("cmdImport", Qt::Key_Return);
        QTRY_VERIFY(Import::text("lblResult").startsWith(u"Imported. New: 2,"_s));
        QCOMPARE(copies.copies().first().reason, copies::Reason::BeforeImport);
        QVERIFY(!Import::isEnabled("cmdImport")); // or the same rows would be added again
        const auto *grid = find<customers::FrmCustomer, QTableView>("DataGrid1");
        QTRY_COMPARE(grid->model()->rowCount(), before + 2);
        QTRY_VERIFY(desk.unit.hasPendingDatagrams());
        QCOMPARE(desk.unit.receiveDatagram().data(), "REFRESHCUSTOMERLIST");
        QTRY_VERIFY2(
            (desk.send(call(u"2125550188"_s, {}, {}, {}, {})), desk.lastCaller().contains(u"New Mill"_s)),
            qPrintable(desk.lastCaller()));
        desk.prompts.expectFile(desk.paths.CustomerFile);
        Import::press("cmdChoose");
        QTRY_VERIFY(Import::text("lblResult").startsWith(u"The file cannot be read."_s));
        QVERIFY(!Import::isEnabled("cmdImport") && Import::form()->close());
        desk.choose("Command4");
        press<phonebook::frmSimplePhoneBook>("cmdImport");
        desk.prompts.expectFile(list);
        Import::press("cmdChoose");
        QTRY_VERIFY(Import::isEnabled("cmdImport"));
        Import::press("cmdImport");
        QTRY_COMPARE(Import::text("lblResult"),
                     u"Imported. New: 2, changed: 0, left as they are: 0, refused: 1."_s);
        QTRY_VERIFY(
            support::columnOf(*find<phonebook::frmSimplePhoneBook, QTableView>("DbgPhoneBook")->model())
                .contains(u"(212)555-0188"_s));
        QTRY_VERIFY(desk.unit.hasPendingDatagrams());
        QCOMPARE(desk.unit.receiveDatagram().data(), "REFRESHSIMPLEPHONEBOOK");
    }

    void aDeletedCustomerIsUnknownToTheNextCall()
    {
        ProgramDesk desk;
        QVERIFY(desk.start());
        desk.program->windows().showCustomerList(
            u"select * from customer where CustomerName='厦门鼓浪书咖'"_s, nullptr);
        QCOMPARE(support::columnOf(*find<customers::FrmCustomer, QTableView>("DataGrid1")->model()),
                 u"厦门鼓浪书咖"_s);
        desk.prompts.expect(true);
        press<customers::FrmCustomer>("Command5");
        desk.send(call(u"059255500130"_s, u"Deleted"_s));
        desk.showsACall();
        QCOMPARE(desk.window().calls().rowCount(), 1);
    }

    void typedTextIsNotLostByEndingTheProgram()
    {
        ProgramDesk desk;
        QVERIFY(desk.start());
        desk.program->windows().Show_Editor({core::RowKey::Table::Customer, 1});
        type<FrmEditCustomer>("txtCustomerName", u"Changed"_s);
        desk.prompts.expect(false, [&] { desk.choose("mnuTrayClose"); }); // waits for the answer, unasked
        desk.choose("Command2");
        desk.prompts.expect(true);
        desk.prompts.expectSave(core::Prompts::Answer::Cancel);
        desk.choose("Command2");
        QVERIFY(!desk.ended);
        desk.runSql(desk.paths.CustomerFile, u"drop table CallInfo"_s); // his notes cannot follow the name
        desk.choose("cmdSendSMS");
        type<messages::frmSendSMS>("txtSMS", u"on my way"_s);
        for (const bool dropsMessage : {false, true}) {
            desk.prompts.expect(true);
            if (!dropsMessage) {
                desk.prompts.expectSave(core::Prompts::Answer::Save);
                desk.prompts.expect(); // told of the notes
            }
            desk.prompts.expect(dropsMessage);
            desk.choose("Command2");
            QCOMPARE(desk.ended, dropsMessage);
        }
        QCOMPARE(
            support::rowsOf(desk.paths.CustomerFile, u"select CustomerName from customer where SN = 1"_s),
            u"Changed"_s);
    }
};

QTEST_MAIN(tst_CustomerRoad)
#include "tst_CustomerRoad.moc"
