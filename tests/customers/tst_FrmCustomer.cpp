#include "CustomerDesk.h"
#include "customers/forms/CustomerWindows.h"
#include "customers/forms/frmAddDataToExcel_Tarn20050921.h"
#include "support/TestForms.h"

#include <QScrollBar>

using customers::FrmCustomer, customers::FrmEditCustomer, customers::frmAddDataToExcel_Tarn20050921;
using support::find, support::openForm, support::press;

class tst_FrmCustomer : public QObject
{
    Q_OBJECT

    /// The windows over three customers; types and clicks as a person does.
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
            windowsOfCustomers.showList();
            QVERIFY(QTest::qWaitForWindowActive(form())); // or its shortcuts do nothing
            QCOMPARE(names(), u"anna|Bay|Zoë Łódź"_s);
        }
        void run(const QString &sql) const { customerSql(*this, sql); }
        FrmCustomer *form() const { return openForm<FrmCustomer>(); }
        QTableView *grid() const { return find<FrmCustomer, QTableView>("DataGrid1"); }
        QString shown(const char *label) const { return find<FrmCustomer, QLabel>(label)->text(); }
        QString names() const { return support::columnOf(*grid()->model()); }
        void search(const QString &words) const
        {
            find<FrmCustomer, QLineEdit>("txtSearch")->clear();
            find<FrmCustomer, QLineEdit>("txtSearch")->insert(words); // keys are for ASCII only
            press<FrmCustomer>("cmdSearch");
        }
        void clickHeading(int column) const
        {
            QHeaderView *header = grid()->horizontalHeader();
            const QPoint place(header->sectionViewportPosition(column) + 8, header->height() / 2);
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
        }
    };

private Q_SLOTS:
    void theListSearchesCountsAndSorts()
    {
        const Forms forms;
        QApplication::sendEvent(forms.form(), std::make_unique<QEvent>(QEvent::WindowActivate).get());
        QCOMPARE(forms.shown("lblCount"), u"[Totalcount] 3"_s);
        forms.search(u" tea "_s);
        QCOMPARE(forms.names(), u"anna"_s);
        QCOMPARE(forms.shown("lblCount"), u"[Totalcount]:1"_s);
        QVERIFY(find<FrmCustomer>("Command4")->isEnabled());
        forms.search(u"nobody"_s);
        QCOMPARE(forms.names(), u""_s);
        QVERIFY(!find<FrmCustomer>("Command4")->isEnabled());
        QCOMPARE(forms.shown("lblCount"), u"[Totalcount]:1"_s); // of the search before, so it is not shown
        QVERIFY(!(find<FrmCustomer, QLabel>("lblCount")->isVisible()));
        find<FrmCustomer, QLineEdit>("txtSearch")->setFocus();
        QTest::keyClick(find<FrmCustomer, QLineEdit>("txtSearch"), Qt::Key_Escape);
        QCOMPARE(forms.names(), u"Zoë Łódź|anna|Bay"_s); // in the order of the table
        for (const auto &[column, order] : {std::pair(0, u"anna|Bay|Zoë Łódź"_s),
                                            {1, u"Bay|anna|Zoë Łódź"_s},
                                            {2, u"Bay|anna|Zoë Łódź"_s},
                                            {3, u"Bay|Zoë Łódź|anna"_s}}) {
            forms.clickHeading(column);
            QCOMPARE(forms.names(), order);
            QCOMPARE(forms.grid()->horizontalHeader()->sortIndicatorSection(), column == 2 ? 1 : column);
        }
        QTest::keyClicks(find<FrmCustomer, QLineEdit>("txtSearch"), u"ann"_s);
        QTRY_COMPARE(forms.names(), u"anna"_s); // as one types
        QTest::keyClick(find<FrmCustomer, QLineEdit>("txtSearch"), Qt::Key_Return);
        QVERIFY(forms.grid()->hasFocus() && forms.grid()->currentIndex().row() == 0);
        forms.form()->setLayoutDirection(Qt::RightToLeft);
        forms.search(u"a"_s);
        QCOMPARE(forms.grid()->horizontalScrollBar()->value(), 0); // does not move sideways
        QCOMPARE(forms.logMessages(), QStringList());
    }

    void sortingAndSavingKeepTheSearch()
    {
        Forms forms;
        forms.run(u"insert into customer(SN,CustomerName,CustomerID) values(4,'O''Brien b','9'),"
                  "(5,'O\u2019Brien a',null),(6,'o\u2018brien c','8')"_s);
        for (const QString &apostrophe : {u"'"_s, u"\u2019"_s}) {
            forms.search(u"O"_s + apostrophe + u"Brien"_s);
            QCOMPARE(forms.names(), u"O'Brien b|O\u2019Brien a|o\u2018brien c"_s);
        }
        forms.clickHeading(0);
        QCOMPARE(forms.names(), u"O'Brien b|o\u2018brien c|O\u2019Brien a"_s);
        forms.clickHeading(1); // who has no ID comes first
        QCOMPARE(forms.names(), u"O\u2019Brien a|o\u2018brien c|O'Brien b"_s);
        forms.grid()->setCurrentIndex(forms.grid()->model()->index(1, 0));
        forms.run(u"update customer set CustomerID='A' where SN=6"_s);
        forms.windowsOfCustomers.refreshCustomerList();
        QCOMPARE(forms.names(), u"O\u2019Brien a|O'Brien b|o\u2018brien c"_s);
        QCOMPARE(forms.grid()->currentIndex().row(), 2);
        QCOMPARE(forms.grid()->horizontalHeader()->sortIndicatorSection(), 1);
        QCOMPARE(forms.shown("lblCount"), u"[Totalcount]:3"_s);
        QCOMPARE(forms.checks.IfTheCustumerExist(u"nobody's"_s), u"NO"_s);
        QVERIFY(forms.checks.IfTheCustumerExist(u"o'brien c"_s).startsWith(u"Select"_s));
        QCOMPARE(forms.logMessages(), QStringList());
    }

    void aSearchThatFailsIsNoHit()
    {
        Forms forms;
        std::optional<store::Database> other(forms.paths.CustomerFile);
        other->Execute(u"begin exclusive"_s);
        forms.windowsOfCustomers.addCustomer(u"4444"_s, u"Bay"_s);
        QCOMPARE(forms.names().section(u'|', 0, 0), u"anna"_s);
        QCOMPARE((find<FrmCustomer, QLineEdit>("txtAddToExist")->text()), u""_s);
        QCOMPARE(forms.shown("lblMessage"), u"[FileInUse]"_s);
        other.reset();
        QTRY_COMPARE(forms.names(), u"Bay"_s); // by itself
        QCOMPARE(forms.shown("lblMessage"), u""_s);
    }

    void aBrokenQueryOrFileLeavesTheListAndSaysSo()
    {
        Forms forms;
        forms.run(u"alter table customer rename to elsewhere"_s);
        forms.search(u"Bay"_s);
        QTest::keyClick(find<FrmCustomer, QLineEdit>("txtSearch"), Qt::Key_Return);
        QTest::keyClick(find<FrmCustomer, QLineEdit>("txtSearch"), Qt::Key_Return);
        QVERIFY(!forms.grid()->hasFocus()); // it shows something else
        forms.run(u"alter table elsewhere rename to customer"_s);
        QCOMPARE(forms.names(), u"anna|Bay|Zoë Łódź"_s);
        QCOMPARE(forms.shown("lblMessage"), u"[CustomerListUnavailable]"_s);
        QVERIFY(forms.logMessages().value(0).startsWith(u"!Ado1 "_s));
        forms.run(u"delete from customer where SN=2"_s); // at another desk
        forms.prompts.expect();
        QTest::keyClick(forms.grid(), Qt::Key_Return);
        QCOMPARE(forms.prompts.asked, QStringList(u"[CustomerNotFound]"_s));
        QFile::rename(forms.paths.CustomerFile, forms.paths.CustomerFile + u".away"_s);
        forms.writeFile(forms.paths.CustomerFile, "no database");
        forms.search(u"Bay"_s);
        QCOMPARE(forms.shown("lblMessage"), u"[CustomerListUnavailable]"_s);
        QFile::remove(forms.paths.CustomerFile);
        QFile::rename(forms.paths.CustomerFile + u".away"_s, forms.paths.CustomerFile);
        QTest::keyClick(forms.form(), Qt::Key_F5);
        QCOMPARE(forms.names(), u"Bay|Zoë Łódź"_s);
        QCOMPARE(forms.shown("lblMessage"), u""_s);
    }

    void deletingAsksInTheFixedWords()
    {
        Forms forms;
        forms.prompts.expect(false);
        QTest::keyClick(forms.grid(), Qt::Key_Delete);
        QCOMPARE(forms.names(), u"anna|Bay|Zoë Łódź"_s);
        forms.grid()->setCurrentIndex(forms.grid()->model()->index(1, 0));
        forms.prompts.expect();
        QString lastRow;
        connect(forms.grid()->model(), &QAbstractItemModel::rowsAboutToBeRemoved, forms.grid(),
                [&] { lastRow = forms.grid()->model()->index(2, 0).data().toString(); });
        press<FrmCustomer>("Command5");
        QCOMPARE(lastRow, u"Zoë Łódź"_s);
        QCOMPARE(forms.logMessages(), QStringList());
        QCOMPARE(forms.prompts.asked, QStringList(2, u"真的要删当前客户信息吗？"_s));
        QCOMPARE(forms.names(), u"anna|Zoë Łódź"_s);
        QCOMPARE(forms.grid()->currentIndex().row(), 0);
        QCOMPARE(forms.shown("lblCount"), u"[Totalcount] 2"_s);
        QCOMPARE(forms.server.sent, QStringList(u"REFRESHCUSTOMERLIST"_s));
        QCOMPARE(forms.effects.called, QStringList(u"customerDeleted 3"_s));
        store::Database other(forms.paths.CustomerFile);
        other.Execute(u"begin immediate"_s);
        forms.prompts.expect();
        press<FrmCustomer>("Command5");
        QCOMPARE(forms.shown("lblMessage"), u"[CustomerNotDeleted]"_s);
        other.Execute(u"rollback"_s);
        forms.search(u"nobody"_s);
        QVERIFY(!find<FrmCustomer>("Command5")->isEnabled());
        QCOMPARE(forms.server.sent.size(), 1);
        forms.search(u""_s);
        QTest::keyClicks(find<FrmCustomer, QLineEdit>("txtSearch"), u"anna"_s);
        forms.prompts.expect(true, [&forms] { // the rows stay while they are asked about
            QVERIFY(!QTest::qWaitFor([&forms] { return forms.names() == "anna"_L1; }, 500));
        });
        press<FrmCustomer>("Command5");
        QVERIFY(!find<FrmCustomer>("Command5")->isEnabled()); // the list stands before its first row
        QCOMPARE(customerSql(forms, u"select CustomerName from customer"_s), u"anna"_s);
        QTRY_COMPARE(forms.grid()->currentIndex().row(), 0); // of the search
    }

    void aRowOpensTheEditorAndTakesTheCallersNumber()
    {
        Forms forms;
        const auto phones = [] { return find<FrmEditCustomer, QLineEdit>("txtCompanyCall")->text(); };
        press<FrmCustomer>("Command4");
        QCOMPARE(phones(), u"222"_s);
        forms.windowsOfCustomers.addCustomer(u"4444"_s, u"Bay"_s);
        QCOMPARE(forms.names(), u"Bay"_s);
        QCOMPARE(phones(), u"4444"_s);
        QTRY_VERIFY(forms.form()->isActiveWindow()); // the record would hide who was found
        QCOMPARE(forms.shown("lblMessage"), u"[CallerNumberWaits]"_s);
        forms.windowsOfCustomers.addCustomer(u"5555"_s, {});
        QCOMPARE((forms.shown("lblMessage") + find<FrmCustomer, QLineEdit>("txtAddToExist")->text()), u""_s);
        find<FrmEditCustomer, QLineEdit>("txtCustomerName")->setText(u"Zed"_s);
        forms.prompts.expectSave(core::Prompts::Answer::Save);
        forms.windowsOfCustomers.addCustomer(u"4444"_s, u"Bay"_s);
        QCOMPARE(forms.names(), u"Bay"_s); // although the saving has shown all
        support::clickCell(forms.grid(), 0, 0, true);
        QCOMPARE(phones(), u"333,4444"_s);
        QCOMPARE((find<FrmEditCustomer, QLabel>("lblMessage")->text()), u"[NumberAddedUnsaved]"_s);
        QCOMPARE((find<FrmCustomer, QLineEdit>("txtAddToExist")->text()), u""_s);
        forms.run(u"insert into customer(SN,CustomerName) values(9,'New')"_s);
        find<FrmCustomer, QLineEdit>("txtAddToExist")->setText(u"5"_s);
        find<FrmCustomer, QLineEdit>("txtSearch")->setFocus();
        QTest::keyClick(find<FrmCustomer, QLineEdit>("txtSearch"), Qt::Key_Escape);
        forms.grid()->setCurrentIndex(forms.grid()->model()->index(2, 0));
        forms.windowsOfCustomers.refreshCustomerList();
        QCOMPARE((find<FrmCustomer, QLineEdit>("txtAddToExist")->text()), u""_s);
        QCOMPARE(forms.names(), u"Zoë Łódź|anna|Bay|Zed|New"_s);
        QCOMPARE(forms.grid()->currentIndex().row(), 2);
        forms.windowsOfCustomers.showList(u"Select * from customer where sn = 1"_s, nullptr);
        QCOMPARE(forms.names(), u"Zoë Łódź"_s);
        press<FrmCustomer>("Command3");
        QCOMPARE(forms.navigator.shown, QStringList(u"ShowHelp Popup_CustomerDatabase"_s));
        QTest::keyClick(forms.form(), Qt::Key_Escape);
        QCOMPARE(forms.form(), nullptr);
    }

    void theExportFormWritesOpensAndTells()
    {
        Forms forms;
        press<FrmCustomer>("cmdExport");
        auto *fields = find<frmAddDataToExcel_Tarn20050921, QListWidget>("lstDataFields");
        QCOMPARE(fields->count(), 27);
        QCOMPARE((find<frmAddDataToExcel_Tarn20050921, QLabel>("lblCount")->text()),
                 u"[AllCustomersExported]"_s);
        QCOMPARE(fields->item(14)->text(), u"[SpecifiedSalesMan]"_s);
        forms.prompts.expectFile({});
        press<frmAddDataToExcel_Tarn20050921>("cmdAddToExcel"); // and thinks better of it
        const QString target = forms.folder.filePath(u"list.xlsx"_s);
        forms.prompts.expectFile(target);
        forms.prompts.expect();
        press<frmAddDataToExcel_Tarn20050921>("cmdAddToExcel");
        QVERIFY(!find<frmAddDataToExcel_Tarn20050921>("cmdAddToExcel")->isEnabled() &&
                !find<frmAddDataToExcel_Tarn20050921>("cmdClose")->isEnabled());
        QTRY_COMPARE(forms.prompts.asked.last(), u"Success!"_s);
        QCOMPARE(forms.shell.opened, QStringList(u"openFile "_s + target));
        QVERIFY(forms.fileBytes(target).startsWith("PK"));
        find<frmAddDataToExcel_Tarn20050921>("cmdUnCheckAll")->setFocus();
        QTest::keyClick(find<frmAddDataToExcel_Tarn20050921>("cmdUnCheckAll"), Qt::Key_Return);
        forms.prompts.expectFile(target);
        forms.prompts.expect();
        press<frmAddDataToExcel_Tarn20050921>("cmdAddToExcel");
        QTRY_COMPARE(forms.prompts.asked.last(), u"Error!"_s);
        QVERIFY(find<frmAddDataToExcel_Tarn20050921>("cmdClose")->isEnabled());
        press<frmAddDataToExcel_Tarn20050921>("cmdClose");
        QTRY_COMPARE(forms.openForms.count(), 1);
    }

    void aLongSearchShowsItsRowsAsTheyAreFound()
    {
        const Forms forms;
        forms.run(
            u"insert into customer(SN,CustomerName,CustomerID,CustomerType) with recursive counted(i) as "
            "(select 10 union all select i + 1 from counted where i < 150000) select i, 'many ' || i, "
            "case when i < 60000 then null else 'x' end, 'type ' || (i / 50000) from counted"_s);
        const QSignalSpy moreFound(forms.grid()->model(), &QAbstractItemModel::rowsInserted);
        forms.search(u"many"_s);
        QTRY_COMPARE(forms.shown("lblCount"), u"[Totalcount]:149991"_s);
        QVERIFY(!moreFound.isEmpty());
        QCOMPARE(forms.grid()->model()->index(149990, 0).data().toString(), u"many 150000"_s);
        const auto row = [&forms](int place, int column) {
            return forms.grid()->model()->index(place, column).data().toString();
        };
        for (const auto &[column, place, name] : {std::tuple(0, 149990, u"many 99999"_s), // as a text
                                                  {1, 59990, u"many 60000"_s}, // the first that has one
                                                  {3, 99990, u"many 100000"_s},
                                                  {3, 149990, u"many 150000"_s}}) {
            forms.clickHeading(column);
            QTRY_COMPARE(forms.grid()->model()->rowCount(), 149991);
            QCOMPARE(row(place, 0), name);
        }
        const QModelIndex first = forms.grid()->model()->index(0, 0);
        forms.grid()->selectionModel()->select({first, first.siblingAtRow(4999)},
                                               QItemSelectionModel::Select | QItemSelectionModel::Rows);
        const auto copied = [] { return QApplication::clipboard()->text().count(u'\n'); };
        QTest::keyClick(forms.grid(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(copied(), 0); // at once they would hold up the calls
        QTRY_COMPARE(copied(), 4999);
    }

    void aLongListIsCountedBeforeItsRowsAreFoundAndStaysWhileItIsReadAgain()
    {
        const Forms forms;
        forms.run(u"delete from customer"_s);
        forms.run(u"insert into customer(SN,CustomerName) with recursive counted(i) as "
                  "(select 10 union all select i + 1 from counted where i < 60000) select i, "
                  "printf('many %05d', i) from counted"_s);
        const QAbstractItemModel *model = forms.grid()->model();
        QList<std::pair<int, bool>> counted;
        connect(model, &QAbstractItemModel::rowsInserted, forms.form(), [&] {
            const QModelIndex last = model->index(model->rowCount() - 1, 0);
            counted.append(
                {model->rowCount(), last.flags() == Qt::NoItemFlags && last.data().toString().isEmpty()});
        });
        forms.clickHeading(0);
        QTRY_COMPARE(forms.shown("lblCount"), u"[Totalcount] 59991"_s);
        QCOMPARE(counted, (QList<std::pair<int, bool>>{{59991, true}}));
        QCOMPARE(model->index(59990, 0).data().toString(), u"many 60000"_s);
        QVERIFY(model->index(59990, 0).flags() != Qt::NoItemFlags);

        const QSignalSpy reset(model, &QAbstractItemModel::modelReset);
        const QPersistentModelIndex held = model->index(40000, 0);
        const QString holder = held.data().toString();
        QStringList others;
        const auto look = [&] {
            if (held.data() != holder) {
                others.append(held.data().toString());
            }
        };
        connect(model, &QAbstractItemModel::rowsInserted, forms.form(), look);
        connect(model, &QAbstractItemModel::rowsRemoved, forms.form(), look);
        connect(model, &QAbstractItemModel::dataChanged, forms.form(), look);
        forms.run(u"delete from customer where SN=50000"_s);
        forms.run(u"insert into customer(SN,CustomerName) values(70000,'many 00009')"_s);
        forms.run(u"update customer set CustomerName='many 99999' where SN=20000"_s);
        forms.grid()->setCurrentIndex(model->index(59000, 0));
        QTest::keyClick(forms.form(), Qt::Key_F5);
        QCOMPARE(forms.grid()->currentIndex().siblingAtColumn(0).data().toString(),
                 u"many 59010"_s); // at once
        QTRY_COMPARE(model->index(59990, 0).data().toString(), u"many 99999"_s);
        QTRY_COMPARE(forms.shown("lblCount"), u"[Totalcount] 59991"_s);
        QCOMPARE(others, QStringList()); // no row has become another
        QCOMPARE(held.data().toString(), holder);
        QCOMPARE(forms.grid()->currentIndex().siblingAtColumn(0).data().toString(), u"many 59010"_s);
        QCOMPARE(forms.grid()->currentIndex().row(), 58999);
        QCOMPARE(reset.size(), 0);
    }

    void aLockedFileIsAskedOnceAndReadWhenItIsFree()
    {
        const Forms forms;
        forms.run(u"insert into customer(CustomerName) with recursive counted(i) as (select 1 union all "
                  "select i + 1 from counted where i < 200) select 'Zz' from counted"_s);
        QTest::keyClick(forms.form(), Qt::Key_F5);
        store::Database other(forms.paths.CustomerFile);
        other.Execute(u"begin exclusive"_s);
        forms.grid()->scrollToBottom();
        forms.grid()->viewport()->repaint();
        QCOMPARE(forms.logMessages().size(), 1);
        other.Execute(u"rollback"_s);
        QTRY_COMPARE(forms.grid()->model()->index(190, 0).data(), u"Zz"_s);
    }

    void aListOpenedWithoutItsFileGetsItsColumnsLater()
    {
        Forms forms;
        const auto hidden = [&] { return forms.grid()->horizontalHeader()->hiddenSectionCount(); };
        const int usual = hidden();
        QTest::keyClick(forms.form(), Qt::Key_Escape);
        forms.windows.setGeometry(u"FrmCustomer.DataGrid1"_s, {});
        const QString file = forms.paths.CustomerFile;
        QFile::rename(file, file + u".away"_s);
        forms.windowsOfCustomers.showList();
        QFile::rename(file + u".away"_s, file);
        QVERIFY(QTest::qWaitForWindowActive(forms.form()));
        QTest::keyClick(forms.form(), Qt::Key_F5);
        QCOMPARE(hidden(), usual);
    }
};

QTEST_MAIN(tst_FrmCustomer)
#include "tst_FrmCustomer.moc"
