#include "PhoneBookRows.h"
#include "phonebook/forms/PhoneBookWindows.h"
#include "support/TestForms.h"

using phonebook::frmChoosePhoneDatabase, phonebook::frmSimplePhoneBook, phonebook::frmSimplePhoneBookEdit;
using support::find, support::openForm, support::press, support::type;

class tst_PhoneBookForms : public QObject
{
    Q_OBJECT

    struct Desk : support::TestForms
    {
        phonebook::PhoneBookWindows windows{
            {context(), checks,
             [this](const phonebook::PhoneBookEntry &entry) { numbers.entrySaved(*entry.SN, entry.Telno); }}};

        Desk()
        {
            runSql(paths.PhoneBookFile, phoneBookRows);
            numbers.LoadPhoneNumberSNArray();
        }
        QString row(int place) const { return tableRows(*this).value(place); }
        void showList()
        {
            windows.showList();
            QVERIFY(QTest::qWaitForWindowActive(openForm<frmSimplePhoneBook>()));
            support::columnOf(*grid()->model());
        }
    };

    static QTableView *grid() { return find<frmSimplePhoneBook, QTableView>("DbgPhoneBook"); }
    static QString label(const char *name) { return find<frmSimplePhoneBook, QLabel>(name)->text(); }
    static void clickCell(int row, int place, bool twice = false)
    {
        support::clickCell(grid(), row, grid()->horizontalHeader()->logicalIndex(place), twice);
    }
    /// Types into what has the keyboard, and leaves it by a key.
    static void keys(const QString &text, Qt::Key last)
    {
        for (const QChar letter : text) { // the first one opens the cell
            QTest::keyClicks(QApplication::focusWidget(), letter);
        }
        QTest::keyClick(QApplication::focusWidget(), last);
    }
    static QString field(const char *name) { return find<frmSimplePhoneBookEdit, QLineEdit>(name)->text(); }

private Q_SLOTS:
    void theListSearchesWhileOneTypes()
    {
        Desk desk;
        desk.showList();
        QStringList headings;
        for (int place = 0; place < 5; ++place) {
            const int section = grid()->horizontalHeader()->logicalIndex(place);
            headings.append(grid()->model()->headerData(section, Qt::Horizontal).toString());
        }
        QCOMPARE(headings.join(u' '), u"[Telno] [SimpleDes] [IfVip] [IfInBlackList] [DetailDes]"_s);
        QVERIFY(grid()->isColumnHidden(5));
        QTRY_COMPARE(label("lblCount"), u"[Totalcount]: 4"_s);
        type<frmSimplePhoneBook>("txtSearch", u" 5550 "_s);
        QTRY_COMPARE(label("lblCount"), u"[Totalcount]: 2"_s);
        type<frmSimplePhoneBook>("txtSearch", u"nobody"_s);
        QTRY_COMPARE(grid()->model()->rowCount(), 0);
        QTRY_COMPARE(label("lblCount"), u"[Totalcount]: 2"_s); // of the search before, so it is not shown
        QVERIFY(!(find<frmSimplePhoneBook, QLabel>("lblCount")->isVisible()));
        QVERIFY(!find<frmSimplePhoneBook>("Command1")->isEnabled());
        QVERIFY(!find<frmSimplePhoneBook>("cmdPhonebook_delete")->isEnabled());
        type<frmSimplePhoneBook>("txtSearch", u"baker"_s);
        press<frmSimplePhoneBook>("Command3");
        QTRY_COMPARE(grid()->model()->rowCount(), 1);
        QVERIFY((find<frmSimplePhoneBook, QLabel>("lblCount")->isVisible()));
        QVERIFY(find<frmSimplePhoneBook>("cmdPhonebook_delete")->isEnabled());
        find<frmSimplePhoneBook, QLineEdit>("txtSearch")->setText(QString(20'000, u'\u6885'));
        press<frmSimplePhoneBook>("Command3");
        QTRY_COMPARE(label("lblNotice"), u"[SearchTextUnusable]"_s);
        QTRY_COMPARE(grid()->model()->rowCount(), 1);
        QVERIFY(desk.logMessages().constLast().startsWith("!DataPhonebook "_L1));
        grid()->setFocus();
        QTest::keyClick(grid(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY((find<frmSimplePhoneBook, QLineEdit>("txtSearch")->hasFocus()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
        QCOMPARE(desk.navigator.shown, QStringList{u"ShowHelp Popup_SimplePhoneBook"_s});
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); // leaves the search first
        QTRY_COMPARE(grid()->model()->rowCount(), 3);                 // those that hold any text
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QVERIFY(grid()->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QCOMPARE(desk.openForms.count(), 1); // until it is gone for good
        QTRY_COMPARE(desk.openForms.count(), 0);
    }

    void whatIsTypedInTheGridIsWrittenAndSent()
    {
        Desk desk;
        desk.showList();
        clickCell(1, 0);
        keys(u"77"_s, Qt::Key_F5); // shows all anew, with what was typed
        QTRY_COMPARE(desk.row(3), u"9|77|Baker|50% off*|N|N"_s);
        QTRY_COMPARE(desk.server.sent.size(), 1);
        clickCell(1, 2);
        QTest::keyClick(grid(), Qt::Key_F2);
        auto *words = grid()->viewport()->findChild<QComboBox *>();
        QVERIFY(words != nullptr);
        words->setCurrentText(u"[MarkUndecided]"_s);
        QTest::keyClick(words, Qt::Key_Return);
        QTRY_COMPARE(desk.row(3), u"9|77|Baker|50% off*|N|G"_s);
        QCOMPARE(desk.server.sent, QStringList(2, u"REFRESHSIMPLEPHONEBOOK"_s));
        desk.runSql(desk.paths.PhoneBookFile, u"delete from phonebook where SN = 3"_s);
        clickCell(2, 1); // of the row that another desk has deleted just now
        desk.prompts.expectSave(core::Prompts::Answer::Cancel);
        keys(u"x"_s, Qt::Key_Return);
        QTRY_COMPARE(desk.prompts.asked.join(u' '), u"Miller\n\n[RecordGone]"_s);
        QVERIFY(openForm<frmSimplePhoneBookEdit>() == nullptr); // Enter ended the typing alone
        QCOMPARE(desk.server.sent.size(), 2);
        const auto typed = [] {
            auto *cellEdit = grid()->viewport()->findChild<QLineEdit *>();
            return cellEdit != nullptr ? cellEdit->text() : QString();
        };
        QTRY_COMPARE(typed(), u"x"_s); // stays, to be copied or tried again
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        const QString file = desk.paths.PhoneBookFile;
        QVERIFY(QFile::copy(file, file + u".other"_s) && QFile::remove(file) &&
                QFile::rename(file + u".other"_s, file));
        clickCell(1, 0);
        keys(u"5"_s, Qt::Key_Return);
        QTRY_COMPARE(label("lblNotice"), u"[PhoneBookReplaced]"_s);
        QTRY_COMPARE(typed(), u"5"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // on the file that is there now
        QTRY_COMPARE(desk.row(2), u"9|5|Baker|50% off*|N|G"_s);
    }

    void aCellThatAnotherDeskHasChangedIsPutBeforeTheOperator()
    {
        using Answer = core::Prompts::Answer;
        for (const auto &[answer, row] : {std::pair(Answer::Save, u"9|7|Baker|50% off*|N|N"_s),
                                          {Answer::Discard, u"9|6|Baker|50% off*|N|N"_s}}) {
            Desk desk;
            desk.showList();
            clickCell(1, 0);
            desk.runSql(desk.paths.PhoneBookFile, u"update phonebook set Telno = '6' where SN = 9"_s);
            desk.prompts.expectSave(answer);
            keys(u"7"_s, Qt::Key_Return);
            QTRY_COMPARE(desk.prompts.asked.size(), 1);
            QVERIFY(desk.prompts.asked.first().startsWith(u"Baker\n\n[ChangedElsewhere]\n\n[Telno]\n"_s));
            QTRY_COMPARE(desk.row(3), row);
            QTRY_COMPARE(grid()->model()->index(1, 0).data().toString(), row.section(u'|', 1, 1));
        }
    }

    void deletingAsksAndTellsTheServer()
    {
        Desk desk;
        desk.showList();
        clickCell(1, 1);
        desk.prompts.expect(false);
        press<frmSimplePhoneBook>("cmdPhonebook_delete");
        QVERIFY(tableRows(desk).size() == 4 && desk.server.sent.isEmpty());
        desk.prompts.expect();
        press<frmSimplePhoneBook>("cmdPhonebook_delete");
        QCOMPARE(desk.server.sent.join(u' '), u"REFRESHCUSTOMERLIST"_s);
        QTRY_COMPARE(label("lblCount"), u"[Totalcount]: 3"_s);
        QCOMPARE(grid()->currentIndex().row(), 0);
        desk.prompts.expect();
        QTest::keyClick(grid(), Qt::Key_Delete);
        QCOMPARE(desk.server.sent.join(u' '), u"REFRESHCUSTOMERLIST REFRESHSIMPLEPHONEBOOK"_s);
        QVERIFY(!find<frmSimplePhoneBook>("cmdPhonebook_delete")->isEnabled()); // before the first row
        QCOMPARE(tableRows(desk).size(), 2);
        clickCell(0, 1);
        desk.prompts.expect(true, [&desk] { // meanwhile another row comes into its place
            desk.runSql(desk.paths.PhoneBookFile,
                        u"insert into phonebook values (11, '1', '', '', '', '')"_s);
            QTest::keyClick(openForm<frmSimplePhoneBook>(), Qt::Key_F5);
        });
        const QString asked = grid()->currentIndex().siblingAtColumn(0).data().toString();
        press<frmSimplePhoneBook>("cmdPhonebook_delete");
        QVERIFY(!tableRows(desk).join(u'\n').contains(asked) && tableRows(desk).size() == 2);
        QCOMPARE(desk.prompts.asked, QStringList(4, u"[DeletePhoneNumberInfo?]"_s));
    }

    void aNewEntryIsCheckedSavedAndThenEdited()
    {
        Desk desk;
        desk.windows.showList(u"Select * from phonebook where sn = 3"_s, nullptr);
        QTRY_COMPARE(grid()->model()->rowCount(), 1);
        press<frmSimplePhoneBook>("cmdPhonebook_Add");
        QVERIFY(QTest::qWaitForWindowActive(openForm<frmSimplePhoneBookEdit>()));
        desk.prompts.expect();
        press<frmSimplePhoneBookEdit>("Command2");
        QCOMPARE(desk.prompts.asked.takeFirst(), u"[PhoneNumbersCantbeBlank]"_s);
        type<frmSimplePhoneBookEdit>("txtTelno", u"1, 5550144"_s);
        desk.prompts.expect();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTRY_COMPARE(desk.prompts.asked.join(u' '), u"[ThePhoneNumberExists]\n[NumberBelongsTo]"_s);
        QVERIFY((find<frmSimplePhoneBookEdit, QLabel>("lblOwner")->isVisible()));
        QCOMPARE(desk.navigator.shown, QStringList{u"showPhoneBook Select * from phonebook where sn = 3"_s});
        type<frmSimplePhoneBookEdit>("txtSimpleDes", u"Zoe"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(desk.row(4), u"10|1, 5550144|Zoe||N|N"_s);
        QTRY_COMPARE(grid()->model()->rowCount(), 5);
        QCOMPARE(grid()->currentIndex().siblingAtColumn(1).data().toString(), u"Zoe"_s);
        QCOMPARE(field("txtSN"), u"10"_s);
        type<frmSimplePhoneBookEdit>("txtTelno", u"5550177"_s); // on file too, but this is no new entry now
        press<frmSimplePhoneBookEdit>("chkVIP");
        press<frmSimplePhoneBookEdit>("Command2");
        QCOMPARE(desk.row(4), u"10|5550177|Zoe||N|G"_s);
        QCOMPARE(desk.server.sent, QStringList(2, u"REFRESHSIMPLEPHONEBOOK"_s));
        press<frmSimplePhoneBookEdit>("Command1");
        QVERIFY(openForm<frmSimplePhoneBookEdit>() == nullptr);
    }

    void aSavedEntryLeavesTheSearch()
    {
        Desk desk;
        desk.showList();
        type<frmSimplePhoneBook>("txtSearch", u"555"_s);
        press<frmSimplePhoneBook>("Command3");
        QCOMPARE(grid()->model()->rowCount(), 2);
        desk.windows.editEntry(9);
        type<frmSimplePhoneBookEdit>("txtSimpleDes", u"Zoe"_s);
        press<frmSimplePhoneBookEdit>("Command2");
        QCOMPARE(support::columnOf(*grid()->model(), 1), u"Miller|Zoe"_s);
        QCOMPARE(grid()->currentIndex().row(), 1);
        QCOMPARE((find<frmSimplePhoneBook, QLineEdit>("txtSearch")->text()), u"555"_s);
    }

    // Although the numbers are read at the start alone.
    void theOwnerLineSaysWhatIsOnFileNow()
    {
        Desk desk;
        const auto lookUp = [](const QString &number) {
            type<frmSimplePhoneBookEdit>("txtTelno", number);
            return find<frmSimplePhoneBookEdit, QLabel>("lblOwner");
        };
        desk.windows.addEntry();
        QVERIFY(QTest::qWaitForWindowActive(openForm<frmSimplePhoneBookEdit>()));
        const QLabel *owned = lookUp(u"5550144"_s);
        QTRY_VERIFY(owned->isVisible());
        desk.runSql(desk.paths.PhoneBookFile, u"update phonebook set Telno = '6' where SN = 3"_s);
        lookUp(u"555-0144"_s);
        QTRY_VERIFY(!owned->isVisible());
        lookUp(u"5550155"_s);
        press<frmSimplePhoneBookEdit>("Command2");
        QVERIFY(!owned->isVisible()); // it is his own
        desk.showList();
        clickCell(2, 0);
        keys(u"77"_s, Qt::Key_Return);
        QTRY_COMPARE(desk.server.sent.size(), 2);
        desk.windows.addEntry();
        for (const auto &[number, sn] : {std::pair(u"5550155"_s, u"10"_s), {u"77"_s, u"9"_s}}) {
            lookUp(u"1"_s);
            QTRY_VERIFY(!owned->isVisible());
            lookUp(number);
            QTRY_VERIFY(owned->isVisible());
            press<frmSimplePhoneBookEdit>("cmdOpenOwner");
            QCOMPARE(desk.navigator.shown.takeLast(), u"Show_Editor PHONEBOOK "_s + sn);
        }
        desk.prompts.expectSave(core::Prompts::Answer::Discard);
        openForm<frmSimplePhoneBookEdit>()->close();
    }

    void nothingTypedIsLost()
    {
        Desk desk;
        desk.runSql(desk.paths.PhoneBookFile,
                    u"update phonebook set detaildes = 'pays\u00A0late' where SN = 3"_s);
        desk.showList();
        clickCell(2, 1, true);
        QVERIFY(QTest::qWaitForWindowActive(openForm<frmSimplePhoneBookEdit>()));
        QCOMPARE(field("txtTelno"), u"5550144"_s);
        type<frmSimplePhoneBookEdit>("txtSimpleDes", u"Mill"_s);
        desk.windows.editEntry(3); // the same again: the change stands
        QCOMPARE(field("txtSimpleDes"), u"Mill"_s);
        const auto answer = [&desk](core::Prompts::Answer choice) {
            desk.prompts.expectSave(choice);
            const bool shown = desk.windows.editEntry(9);
            return field("txtSimpleDes") + (shown ? u""_s : u" stays"_s);
        };
        QCOMPARE(answer(core::Prompts::Answer::Cancel), u"Mill stays"_s);
        const QString file = desk.paths.PhoneBookFile;
        store::Database(file).transaction([&] { // of another desk
            desk.prompts.expectSave(core::Prompts::Answer::Save);
            desk.prompts.expect();
            openForm<frmSimplePhoneBookEdit>()->close();
        });
        QCOMPARE(desk.prompts.asked.constLast(), u"[EntryNotSaved]\n[HeldElsewhere]"_s);
        QCOMPARE(field("txtSimpleDes"), u"Mill"_s);
        QCOMPARE(answer(core::Prompts::Answer::Save), u"Baker"_s);
        QCOMPARE(desk.row(0), u"3|5550144|Mill|pays\u00A0late|Y|G"_s);
        type<frmSimplePhoneBookEdit>("txtTelno", u"6"_s);
        desk.prompts.expectSave(core::Prompts::Answer::Discard);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(openForm<frmSimplePhoneBookEdit>() == nullptr);
        QCOMPARE(desk.row(3), u"9|5550177|Baker|50% off*|N|N"_s);
    }

    void aDeskWithoutItsPhoneBookIsToldSo()
    {
        Desk desk;
        desk.prompts.expect();
        desk.windows.editEntry(4);
        QVERIFY(QFile::remove(desk.paths.PhoneBookFile));
        desk.prompts.expect();
        desk.windows.editEntry(3);
        QCOMPARE(desk.prompts.asked.join(u' '), u"[EntryGone] [PhoneBookMissing]"_s);
        QVERIFY(desk.logMessages().constLast().startsWith("!ShowaSimplePhoneBook "_L1));
        desk.showList();
        QCOMPARE(label("lblNotice"), u"[PhoneBookMissing]"_s);
        press<frmSimplePhoneBook>("Command1");
        QVERIFY(openForm<frmSimplePhoneBookEdit>() == nullptr);
        desk.writeFile(desk.paths.PhoneBookFile, QByteArray(4096, 'x'));
        QTest::keyClick(openForm<frmSimplePhoneBook>(), Qt::Key_F5);
        QCOMPARE(label("lblNotice"), u"[PhoneBookUnusable]"_s);
        QVERIFY(QFile::remove(desk.paths.PhoneBookFile));
        desk.runSql(desk.paths.PhoneBookFile, phoneBookRows);
        QTest::keyClick(openForm<frmSimplePhoneBook>(), Qt::Key_F5);
        QTRY_COMPARE(grid()->model()->rowCount(), 4);
        QVERIFY(label("lblNotice").isEmpty() && grid()->isColumnHidden(5));
    }

    void aCallerIsFiledWhereTheOperatorChooses()
    {
        Desk desk;
        desk.windows.addCaller(u"123"_s, u"Bay"_s);
        QVERIFY(!(find<frmChoosePhoneDatabase, QRadioButton>("Option2")->isEnabled()));
        press<frmChoosePhoneDatabase>("OKButton");
        QVERIFY(openForm<frmChoosePhoneDatabase>() == nullptr);
        QCOMPARE(field("txtTelno"), u"123"_s);
        QCOMPARE(field("txtSimpleDes"), u"Bay"_s);
        press<frmSimplePhoneBookEdit>("Command1"); // nothing was typed, nothing is asked
        QTRY_COMPARE(desk.openForms.count(), 0);
        desk.navigator.available.insert(core::Window::CustomerList);
        desk.windows.addCaller(u"123"_s, u"Bay"_s);
        QVERIFY(QTest::qWaitForWindowActive(openForm<frmChoosePhoneDatabase>()));
        QTest::keyClick(find<frmChoosePhoneDatabase>("Option2"), Qt::Key_Space);
        type<frmChoosePhoneDatabase>("txtKeyWord", u"Port"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(desk.navigator.shown, QStringList{u"addCustomer 123 Port Bay"_s}); // searched for, and named
        QVERIFY(openForm<frmSimplePhoneBookEdit>() == nullptr);
        QTRY_COMPARE(desk.openForms.count(), 0);
        desk.windows.addCaller(u"617-555-0188"_s, u"6175550188"_s); // which is no name
        press<frmChoosePhoneDatabase>("OKButton");
        QCOMPARE(field("txtSimpleDes"), QString());
        press<frmSimplePhoneBookEdit>("Command1");
        QTRY_COMPARE(desk.openForms.count(), 0);
        desk.windows.addCaller(u"123"_s, u""_s);
        press<frmChoosePhoneDatabase>("CancelButton");
        QCOMPARE(desk.navigator.shown.size(), 1);
        QVERIFY(openForm<frmChoosePhoneDatabase>() == nullptr);
    }
};

QTEST_MAIN(tst_PhoneBookForms)
#include "tst_PhoneBookForms.moc"
