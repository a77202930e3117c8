#include "CustomerDesk.h"
#include "customers/forms/CustomerWindows.h"
#include "customers/forms/frmAddDataToExcel_Tarn20050921.h"
#include "customers/forms/frmCopiedCustomers.h"
#include "support/Ui.h"

#include <QScrollBar>

/// The list of customers, what opens from it, and what every list of this kind does.
class tst_FrmCustomer : public QObject
{
    Q_OBJECT

    using List = support::Ui<customers::FrmCustomer>;
    using Editor = support::Ui<customers::FrmEditCustomer>;
    using Export = support::Ui<customers::frmAddDataToExcel_Tarn20050921>;

    /// The windows over three customers.
    struct Forms : support::TestForms
    {
        FakeCustomerEffects effects;
        appearance::FormContext formContext = context();
        customers::CustomerWindows windowsOfCustomers{{formContext, checks, effects}};

        Forms()
        {
            deliver(u"Customer"_s, paths.CustomerFile);
            run(u"insert into customer(SN,CustomerName,CustomerID,customertype,note,WorkPhones,T3) values"
                "(1,'Zoë Łódź','3','b','','111','1'),(2,'anna','2','c','wants TEA','222','1'),"
                "(3,'Bay','1','a','','333','1')"_s);
            effects.refreshes = [this] { windowsOfCustomers.refreshCustomerList(); };
            windowsOfCustomers.showList();
            List::activate();
            QCOMPARE(List::rows(), u"anna|Bay|Zoë Łódź"_s);
        }
        void run(const QString &sql) const { customerSql(*this, sql); }
        /// Customers whose SN are those numbers, and whose names are made of them by an expression.
        void addMany(int first, int last, const QString &name) const
        {
            run(u"insert into customer(SN,CustomerName,CustomerID,CustomerType) with recursive counted(i) as "
                "(select %1 union all select i + 1 from counted where i < %2) select i, %3, case when i < "
                "60000 then null else 'x' end, 'type ' || (i / 50000) from counted"_s.arg(first)
                    .arg(last)
                    .arg(name));
        }
    };

    static void search(const QString &words)
    {
        List::set("txtSearch", words);
        List::press("cmdSearch");
    }
    static void clickHeading(int column)
    {
        QHeaderView *header = List::grid()->horizontalHeader();
        const QPoint place(header->sectionViewportPosition(column) + 8, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }
    static int sortedBy() { return List::grid()->horizontalHeader()->sortIndicatorSection(); }
    static QString name(int row) { return List::grid()->model()->index(row, 0).data().toString(); }
    static int current() { return List::grid()->currentIndex().row(); }

private Q_SLOTS:
    void theListSearchesCountsAndSorts()
    {
        const Forms forms;
        search(u" tea "_s);
        QCOMPARE(List::rows(), u"anna"_s);
        QCOMPARE(List::text("lblCount"), u"[Totalcount]:1"_s);
        search(u"nobody"_s);
        QCOMPARE(List::rows(), u""_s);
        QVERIFY(!List::isEnabled("Command4") && !List::isEnabled("Command5"));
        QVERIFY(!List::isVisible("lblCount")); // it is of the search before
        List::key("txtSearch", Qt::Key_Escape);
        QCOMPARE(List::rows(), u"Zoë Łódź|anna|Bay"_s); // in the order of the table
        for (const auto &[column, sorted, order] : {std::tuple(0, 0, u"anna|Bay|Zoë Łódź"_s),
                                                    {1, 1, u"Bay|anna|Zoë Łódź"_s},
                                                    {2, 1, u"Bay|anna|Zoë Łódź"_s},
                                                    {3, 3, u"Bay|Zoë Łódź|anna"_s}}) {
            clickHeading(column);
            QCOMPARE(List::rows(), order);
            QCOMPARE(sortedBy(), sorted);
        }
        List::type("txtSearch", u"ann"_s);
        QTRY_COMPARE(List::rows(), u"anna"_s); // as one types
        support::key(Qt::Key_Return);
        QVERIFY(List::grid()->hasFocus() && current() == 0);
        support::key(Qt::Key_Escape); // leaves the search first; the order stays, and so does who was found
        QTRY_COMPARE(List::rows(), u"Bay|Zoë Łódź|anna"_s);
        QVERIFY(List::grid()->hasFocus());
        QTRY_COMPARE(current(), 2);
        List::form()->setLayoutDirection(Qt::RightToLeft);
        search(u"a"_s);
        QCOMPARE(List::grid()->horizontalScrollBar()->value(), 0); // does not move sideways
    }

    void sortingAndSavingKeepTheSearch()
    {
        Forms forms;
        forms.run(u"insert into customer(SN,CustomerName,CustomerID) values(4,'O''Brien b','9'),"
                  "(5,'O\u2019Brien a',null),(6,'o\u2018brien c','8')"_s);
        for (const QString &apostrophe : {u"'"_s, u"\u2019"_s}) {
            search(u"O"_s + apostrophe + u"Brien"_s);
            QCOMPARE(List::rows(), u"O'Brien b|O\u2019Brien a|o\u2018brien c"_s);
        }
        clickHeading(1); // who has no ID comes first
        QCOMPARE(List::rows(), u"O\u2019Brien a|o\u2018brien c|O'Brien b"_s);
        List::standOn(1);
        forms.run(u"update customer set CustomerID='A' where SN=6"_s);
        forms.windowsOfCustomers.refreshCustomerList();
        QCOMPARE(List::rows(), u"O\u2019Brien a|O'Brien b|o\u2018brien c"_s);
        QCOMPARE(std::pair(current(), sortedBy()), std::pair(2, 1));
        QCOMPARE(List::text("lblCount"), u"[Totalcount]:3"_s);
        QCOMPARE(forms.checks.IfTheCustumerExist(u"nobody's"_s), u"NO"_s);
        QVERIFY(forms.checks.IfTheCustumerExist(u"o'brien c"_s).startsWith(u"Select"_s));
    }

    void aSearchThatFailsIsNoHit()
    {
        Forms forms;
        support::Lock other(forms.paths.CustomerFile);
        forms.windowsOfCustomers.addCustomer(u"4444"_s, u"Bay"_s);
        QCOMPARE(List::text("txtAddToExist") + List::text("lblMessage"), u"[FileInUse]"_s);
        QCOMPARE(name(0), u"anna"_s);
        other.release();
        QTRY_COMPARE(List::rows(), u"Bay"_s); // by itself
        QCOMPARE(List::text("lblMessage"), u""_s);
    }

    void aBrokenFileLeavesTheListAndSaysSo()
    {
        Forms forms;
        forms.run(u"delete from customer where SN=2"_s); // at another desk
        forms.prompts.expect();
        QTest::keyClick(List::grid(), Qt::Key_Return);
        QCOMPARE(forms.prompts.asked, QStringList(u"[CustomerNotFound]"_s));
        const QByteArray file = forms.fileBytes(forms.paths.CustomerFile);
        forms.writeFile(forms.paths.CustomerFile, "no database");
        search(u"Bay"_s);
        QCOMPARE(List::rows(), u"anna|Bay|Zoë Łódź"_s);
        QCOMPARE(List::text("lblMessage"), u"[CustomerListUnavailable]"_s);
        List::key("txtSearch", Qt::Key_Return);
        QVERIFY(!List::grid()->hasFocus()); // it shows something else
        forms.writeFile(forms.paths.CustomerFile, file);
        QTest::keyClick(List::form(), Qt::Key_F5);
        QCOMPARE(List::rows(), u"Bay|Zoë Łódź"_s);
        QCOMPARE(List::text("lblMessage"), u""_s);
    }

    void deletingAsksInTheFixedWords()
    {
        Forms forms;
        forms.prompts.expect(false);
        QTest::keyClick(List::grid(), Qt::Key_Delete);
        QCOMPARE(List::rows(), u"anna|Bay|Zoë Łódź"_s);
        List::standOn(1);
        forms.prompts.expect();
        List::press("Command5");
        QCOMPARE(forms.prompts.asked,
                 QStringList({u"真的要删当前客户信息吗？\n\nanna"_s, u"真的要删当前客户信息吗？\n\nBay"_s}));
        QCOMPARE(List::rows(), u"anna|Zoë Łódź"_s);
        QCOMPARE(current(), 0);
        QCOMPARE(List::text("lblCount"), u"[Totalcount] 2"_s);
        QCOMPARE(forms.server.sent, QStringList(u"REFRESHCUSTOMERLIST"_s));
        QCOMPARE(forms.effects.called, QStringList(u"customerDeleted 3"_s));
        support::Lock other(forms.paths.CustomerFile);
        forms.prompts.expect();
        List::press("Command5");
        QCOMPARE(List::text("lblMessage"), u"[CustomerNotDeleted]"_s);
        QCOMPARE(forms.server.sent.size(), 1);
    }

    void severalAreDeletedAtOnceAndPutBackAsTheyWere()
    {
        Forms forms;
        const QString whole = u"select * from customer order by SN"_s;
        const QString before = customerSql(forms, whole);
        List::grid()->selectAll();
        forms.prompts.expect();
        List::press("Command5");
        QTRY_COMPARE(forms.server.sent.size(), 1);
        QCOMPARE(forms.prompts.asked, QStringList(u"真的要删当前客户信息吗？\n\n[RowsSelected]"_s));
        QCOMPARE(customerSql(forms, whole), QString());
        List::press("cmdUndo");
        QTRY_COMPARE(forms.server.sent.size(), 2);
        QCOMPARE(List::rows(), u"anna|Bay|Zoë Łódź"_s);
        QCOMPARE(customerSql(forms, whole), before);
        QCOMPARE(forms.effects.called.mid(3).join(u'|'),
                 u"customerSaved 1  Zoë Łódź|customerSaved 3  Bay|customerSaved 2  anna"_s);
        QVERIFY(!List::isVisible("cmdUndo"));

        forms.run(u"create table kept as select * from customer where SN=3"_s);
        List::grid()->selectAll();
        forms.prompts.expect();
        List::press("Command5");
        QTRY_COMPARE(forms.server.sent.size(), 3);
        forms.run(u"insert into customer select * from kept"_s); // as from a copy of the desk
        forms.run(u"insert into customer(SN,CustomerName) values(2,'Abe')"_s);
        List::press("cmdUndo");
        QTRY_COMPARE(forms.server.sent.size(), 4);
        QCOMPARE(customerSql(forms, u"select SN,CustomerName from customer order by SN"_s),
                 u"1|Zoë Łódź\n2|Abe\n3|Bay\n4|anna"_s);
    }

    // The list may be read anew while the question stands.
    void theRowThatWasAskedAboutIsDeleted()
    {
        Forms forms;
        forms.prompts.expect(true, [&forms] { // meanwhile another one comes into its place
            forms.run(u"insert into customer(SN,CustomerName) values(9,'Abe')"_s);
            QTest::keyClick(List::form(), Qt::Key_F5);
        });
        List::press("Command5");
        QCOMPARE(List::rows(), u"Abe|Bay|Zoë Łódź"_s);
    }

    void aRowOpensTheEditorAndTakesTheCallersNumber()
    {
        Forms forms;
        const auto phones = [] { return Editor::text("txtCompanyCall"); };
        List::press("Command4");
        QCOMPARE(phones(), u"222"_s);
        forms.windowsOfCustomers.addCustomer(u"4444"_s, u"Bay"_s);
        QCOMPARE(List::rows(), u"Bay"_s);
        QCOMPARE(phones(), u"4444"_s);
        QTRY_VERIFY(List::form()->isActiveWindow()); // the record would hide who was found
        QCOMPARE(List::text("lblMessage"), u"[CallerNumberWaits]"_s);
        forms.windowsOfCustomers.addCustomer(u"5555"_s, {});
        QCOMPARE(List::text("lblMessage") + List::text("txtAddToExist"), u""_s);
        Editor::set("txtCustomerName", u"Zed"_s);
        forms.prompts.expectSave(core::Prompts::Answer::Save);
        forms.windowsOfCustomers.addCustomer(u"4444"_s, u"Bay"_s);
        QCOMPARE(List::rows(), u"Bay"_s);
        support::clickCell(List::grid(), 0, 0, true);
        QCOMPARE(phones(), u"333,4444"_s); // although the saving has dropped the number before
        QCOMPARE(Editor::text("lblMessage"), u"[NumberAddedUnsaved]"_s);
        QCOMPARE(List::text("txtAddToExist"), u""_s);
        List::set("txtAddToExist", u"5"_s);
        forms.windowsOfCustomers.refreshCustomerList();
        QCOMPARE(List::text("txtAddToExist"), u""_s);
        forms.windowsOfCustomers.showList(u"Select * from customer where sn = 1"_s, nullptr);
        QCOMPARE(List::rows(), u"Zoë Łódź"_s);
        List::press("Command3");
        QCOMPARE(forms.navigator.shown, QStringList(u"ShowHelp Popup_CustomerDatabase"_s));
    }

    void theExportFormWritesOpensAndTells()
    {
        Forms forms;
        List::press("cmdExport");
        const QString target = forms.folder.filePath(u"list.xlsx"_s);
        const auto outcome = [&] {
            forms.prompts.expectFile(target);
            forms.prompts.expect();
            Export::press("cmdAddToExcel");
            const bool ended = QTest::qWaitFor([] { return Export::isEnabled("cmdClose"); }, 60000);
            return ended ? forms.prompts.asked.last() : u"still at work"_s;
        };
        QCOMPARE(outcome(), u"Success!"_s);
        QCOMPARE(forms.shell.opened, QStringList(u"openFile "_s + target));
        QVERIFY(forms.fileBytes(target).startsWith("PK"));
        Export::press("cmdUnCheckAll");
        QCOMPARE(outcome(), u"Error!"_s);
        forms.prompts.expectFile({}); // and thinks better of it
        Export::press("cmdAddToExcel");
        Export::press("cmdClose");
        QTRY_COMPARE(forms.openForms.count(), 1);
    }

    void aLongSearchShowsItsRowsAsTheyAreFound()
    {
        const Forms forms;
        forms.addMany(10, 150'000, u"'many ' || i"_s);
        const QSignalSpy moreFound(List::grid()->model(), &QAbstractItemModel::rowsInserted);
        search(u"many"_s);
        QTRY_COMPARE(List::text("lblCount"), u"[Totalcount]:149991"_s);
        QVERIFY(!moreFound.isEmpty());
        clickHeading(0);
        QTRY_COMPARE(name(149'990), u"many 99999"_s); // as a text
        const QModelIndex first = List::grid()->model()->index(0, 0);
        List::grid()->selectionModel()->select({first, first.siblingAtRow(4999)},
                                               QItemSelectionModel::Select | QItemSelectionModel::Rows);
        const auto copied = [] { return QApplication::clipboard()->text().count(u'\n'); };
        QTest::keyClick(List::grid(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(copied(), 0); // at once they would hold up the calls
        QTRY_COMPARE(copied(), 4999);
    }

    void aLongListIsCountedBeforeItsRowsAreFoundAndStaysWhileItIsReadAgain()
    {
        const Forms forms;
        forms.run(u"delete from customer"_s);
        forms.addMany(10, 60'000, u"printf('many %05d', i)"_s);
        const QAbstractItemModel *model = List::grid()->model();
        bool countedFirst = false;
        connect(model, &QAbstractItemModel::rowsInserted, List::form(),
                [&] { countedFirst = model->rowCount() == 59'991 && name(59'990).isEmpty(); });
        clickHeading(0);
        QTRY_COMPARE(List::text("lblCount"), u"[Totalcount] 59991"_s);
        QVERIFY(countedFirst);
        QCOMPARE(name(59'990), u"many 60000"_s);

        const QSignalSpy reset(model, &QAbstractItemModel::modelReset);
        const QPersistentModelIndex held = model->index(40'000, 0);
        const QString holder = held.data().toString();
        QStringList others;
        const auto look = [&] { others += held.data().toString(); };
        connect(model, &QAbstractItemModel::rowsInserted, List::form(), look);
        connect(model, &QAbstractItemModel::rowsRemoved, List::form(), look);
        connect(model, &QAbstractItemModel::dataChanged, List::form(), look);
        forms.run(u"delete from customer where SN=50000"_s);
        forms.run(u"insert into customer(SN,CustomerName) values(70000,'many 00009')"_s);
        forms.run(u"update customer set CustomerName='many 99999' where SN=20000"_s);
        List::standOn(59'000);
        QTest::keyClick(List::form(), Qt::Key_F5);
        QCOMPARE(name(current()), u"many 59010"_s); // at once
        QTRY_COMPARE(name(59'990), u"many 99999"_s);
        QTRY_COMPARE(List::text("lblCount"), u"[Totalcount] 59991"_s);
        others.removeAll(holder);
        QCOMPARE(others, QStringList()); // no row has become another
        QCOMPARE(held.data().toString(), holder);
        QCOMPARE(std::pair(name(current()), current()), std::pair(u"many 59010"_s, 58'999));
        QCOMPARE(reset.size(), 0);
    }

    void aLockedFileIsAskedOnceAndReadWhenItIsFree()
    {
        const Forms forms;
        forms.addMany(10, 200, u"'Zz'"_s);
        QTest::keyClick(List::form(), Qt::Key_F5);
        support::Lock other(forms.paths.CustomerFile);
        List::grid()->scrollToBottom();
        List::grid()->viewport()->repaint();
        QCOMPARE(forms.logMessages().size(), 1);
        other.release();
        QTRY_COMPARE(name(190), u"Zz"_s);
    }

    // As he was, with columns that no control shows, and under his own number where that is free.
    void aCustomerOfACopyIsBroughtBack()
    {
        using Copied = support::Ui<customers::frmCopiedCustomers>;
        Forms forms;
        const QString copy = forms.folder.filePath(u"copy"_s);
        forms.run(u"alter table customer add column own text(20)"_s);
        forms.run(u"update customer set own='kept', ContactPersonMessenger='m' where SN=2"_s);
        QVERIFY(QFile::copy(forms.paths.CustomerFile, copy));
        forms.run(u"delete from customer where SN=2"_s);
        forms.windowsOfCustomers.showCopied(copy, u"2026-11-21 12:00"_s);
        Copied::activate();
        QVERIFY(Copied::form()->windowTitle().startsWith(u"2026-11-21 12:00"_s));
        QCOMPARE(Copied::rows(), u"anna|Bay|Zoë Łódź"_s);
        Copied::type("txtSearch", u"ann"_s);
        support::key(Qt::Key_Return);
        QCOMPARE(Copied::rows(), u"anna"_s);
        Copied::press("cmdBringBack");
        const auto names = [&] {
            return customerSql(forms, u"select SN,CustomerName,own,ContactPersonMessenger from customer"_s);
        };
        const QString back = u"1|Zoë Łódź|Null|Null\n2|anna|kept|m\n3|Bay|Null|Null"_s;
        QCOMPARE(names(), back);
        QVERIFY(Copied::text("lblMessage").contains(u"[CustomerBroughtBack]"_s));
        QCOMPARE(forms.effects.called, QStringList({u"refreshCustomerList"_s, u"customerSaved 2  anna"_s}));

        forms.prompts.expect(); // he would be there twice
        Copied::press("cmdBringBack");
        QVERIFY(Copied::text("lblMessage").contains(u"[CustomerIDexisted]"_s));
        QCOMPARE(names(), back);
        forms.run(u"update customer set CustomerID='4' where SN=2"_s);
        forms.prompts.expect();
        Copied::press("cmdBringBack");
        QCOMPARE(names(), back + u"\n4|anna|kept|m"_s);
    }
};

QTEST_MAIN(tst_FrmCustomer)
#include "tst_FrmCustomer.moc"
