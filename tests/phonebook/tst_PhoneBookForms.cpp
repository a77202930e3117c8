#include "PhoneBookRows.h"
#include "phonebook/forms/PhoneBookWindows.h"
#include "support/Ui.h"

using Answer = core::Prompts::Answer;

/// The windows of the phone book; what all lists do is proven by that of the customers.
class tst_PhoneBookForms : public QObject
{
    Q_OBJECT

    using List = support::Ui<phonebook::frmSimplePhoneBook>;
    using Editor = support::Ui<phonebook::frmSimplePhoneBookEdit>;
    using Choice = support::Ui<phonebook::frmChoosePhoneDatabase>;

    struct Desk : support::TestForms
    {
        QStringList known; ///< the numbers that the next call is looked up by
        phonebook::PhoneBookWindows windows{
            {context(), checks,
             [this](const phonebook::PhoneBookEntry &entry) { known.append(entry.Telno); }}};

        explicit Desk(bool withList = true)
        {
            runSql(paths.PhoneBookFile, phoneBookRows);
            numbers.LoadPhoneNumberSNArray();
            if (withList) {
                showList();
            }
        }
        void showList()
        {
            windows.showList();
            List::activate();
            List::rows();
        }
        QString row(int place) const { return tableRows(*this).value(place); }
        void run(const QString &sql) const { runSql(paths.PhoneBookFile, sql); }
    };

    /// A cell goes by its place in sight.
    static void clickCell(int row, int place)
    {
        support::clickCell(List::grid(), row, List::grid()->horizontalHeader()->logicalIndex(place));
    }
    static void typeCell(int row, int place, const QString &text, Qt::Key last)
    {
        clickCell(row, place);
        support::keys(text);
        support::key(last);
    }
    static QString typed()
    {
        const auto *box = List::grid()->viewport()->findChild<QLineEdit *>();
        return box != nullptr ? box->text() : QString();
    }
    static int shownRows() { return List::grid()->model()->rowCount(); }

private Q_SLOTS:
    void aSavedEntryLeavesTheSearch()
    {
        Desk desk;
        List::type("txtSearch", u" 5550 "_s);
        QTRY_COMPARE(List::text("lblCount"), u"[Totalcount]: 2"_s);
        desk.windows.editEntry(9);
        Editor::type("txtSimpleDes", u"Zoe"_s);
        Editor::press("Command2");
        QCOMPARE(List::rows(1), u"Miller|Zoe"_s);
        QCOMPARE(List::grid()->currentIndex().row(), 1);
        List::press("Command4");
        QCOMPARE(desk.navigator.shown, QStringList{u"ShowHelp Popup_SimplePhoneBook"_s});
    }

    void whatIsTypedInTheGridIsWrittenAndSent()
    {
        Desk desk;
        typeCell(1, 0, u"77"_s, Qt::Key_F5); // shows all anew, with what was typed
        QTRY_COMPARE(desk.row(3), u"9|77|Baker|50% off*|N|N"_s);
        clickCell(1, 2);
        support::key(Qt::Key_F2);
        auto *words = List::grid()->viewport()->findChild<QComboBox *>();
        QVERIFY(words != nullptr);
        words->setCurrentText(u"[MarkUndecided]"_s);
        QTest::keyClick(words, Qt::Key_Return);
        QTRY_COMPARE(desk.row(3), u"9|77|Baker|50% off*|N|G"_s);
        QCOMPARE(desk.server.sent, QStringList(2, u"REFRESHSIMPLEPHONEBOOK"_s));
        QCOMPARE(desk.known, QStringList(2, u"77"_s));
        QVERIFY(!Editor::form()); // Enter ended the typing alone
        const QString file = desk.paths.PhoneBookFile;
        QVERIFY(QFile::copy(file, file + u".other"_s) && QFile::remove(file) &&
                QFile::rename(file + u".other"_s, file));
        typeCell(1, 0, u"5"_s, Qt::Key_Return);
        QTRY_COMPARE(List::text("lblNotice"), u"[PhoneBookReplaced]"_s);
        QTRY_COMPARE(typed(), u"5"_s); // stays, to be copied or tried again
        support::key(Qt::Key_Return);  // on the file that is there now
        QTRY_COMPARE(desk.row(3), u"9|5|Baker|50% off*|N|G"_s);
    }

    void aCellThatAnotherDeskHasChangedIsPutBeforeTheOperator()
    {
        const QString change = u"update phonebook set Telno = '6' where SN = 9"_s;
        for (const auto &[elsewhere, answer, asked, row] :
             {std::tuple(change, Answer::Save, u"[ChangedElsewhere]"_s, u"9|7|Baker|50% off*|N|N"_s),
              {change, Answer::Discard, u"[ChangedElsewhere]"_s, u"9|6|Baker|50% off*|N|N"_s},
              {u"delete from phonebook where SN = 9"_s, Answer::Save, u"[RecordGone]"_s,
               u"10|7|Baker|50% off*|N|N"_s}}) {
            Desk desk;
            clickCell(1, 0);
            desk.run(elsewhere);
            desk.prompts.expectSave(answer);
            support::keys(u"7"_s);
            support::key(Qt::Key_Return);
            QTRY_COMPARE(desk.prompts.asked.size(), 1);
            QTRY_COMPARE(desk.row(3), row);
            QTRY_COMPARE(List::grid()->model()->index(1, 0).data().toString(), row.section(u'|', 1, 1));
            QVERIFY(desk.prompts.asked.first().startsWith(u"Baker\n\n"_s + asked));
        }
    }

    void deletingAsksAndTellsTheServer()
    {
        Desk desk;
        List::standOn(1);
        desk.prompts.expect(false);
        List::press("cmdPhonebook_delete");
        QVERIFY(tableRows(desk).size() == 4 && desk.server.sent.isEmpty());
        desk.prompts.expect();
        List::press("cmdPhonebook_delete");
        desk.prompts.expect();
        QTest::keyClick(List::grid(), Qt::Key_Delete);
        QCOMPARE(desk.server.sent.join(u' '), u"REFRESHCUSTOMERLIST REFRESHSIMPLEPHONEBOOK"_s);
        QCOMPARE(tableRows(desk).size(), 2);
        const QString question = u"[DeletePhoneNumberInfo?]"_s;
        QCOMPARE(desk.prompts.asked, QStringList(2, question + u"\n\nBaker"_s) + QStringList(question));
        List::press("cmdUndo");
        QCOMPARE(tableRows(desk).size(), 3);
        QVERIFY(List::isVisible("cmdUndo")); // for the other one
    }

    void aNewEntryIsCheckedSavedAndThenEdited()
    {
        Desk desk(false);
        desk.windows.showList(u"Select * from phonebook where sn = 3"_s, nullptr);
        QTRY_COMPARE(shownRows(), 1);
        List::press("cmdPhonebook_Add");
        Editor::activate();
        desk.prompts.expect();
        Editor::press("Command2");
        QCOMPARE(desk.prompts.asked.takeFirst(), u"[PhoneNumbersCantbeBlank]"_s);
        Editor::type("txtTelno", u"1, 5550144"_s);
        desk.prompts.expect();
        support::key(Qt::Key_Tab);
        QTRY_COMPARE(desk.prompts.asked.join(u' '), u"[ThePhoneNumberExists]\n[NumberBelongsTo]"_s);
        QVERIFY(Editor::isVisible("lblOwner"));
        QCOMPARE(desk.navigator.shown, QStringList{u"showPhoneBook Select * from phonebook where sn = 3"_s});
        Editor::type("txtSimpleDes", u"Zoe"_s);
        support::key(Qt::Key_Return);
        QCOMPARE(desk.row(4), u"10|1, 5550144|Zoe||N|N"_s);
        QTRY_COMPARE(shownRows(), 5);
        QCOMPARE(List::grid()->currentIndex().siblingAtColumn(1).data().toString(), u"Zoe"_s);
        Editor::type("txtTelno", u"5550177"_s); // on file too, but this is no new entry now
        Editor::press("chkVIP");
        Editor::press("Command2");
        QCOMPARE(desk.row(4), u"10|5550177|Zoe||N|G"_s);
        QCOMPARE(desk.known, (QStringList{u"1, 5550144"_s, u"5550177"_s}));
        QCOMPARE(desk.server.sent, QStringList(2, u"REFRESHSIMPLEPHONEBOOK"_s));
    }

    void nothingTypedIsLost()
    {
        Desk desk;
        desk.run(u"update phonebook set detaildes = 'pays\u00A0late' where SN = 3"_s);
        support::clickCell(List::grid(), 2, 1, true);
        Editor::activate();
        QCOMPARE(Editor::text("txtTelno"), u"5550144"_s);
        Editor::type("txtSimpleDes", u"Mill"_s);
        desk.windows.editEntry(3); // the same again: the change stands
        QCOMPARE(Editor::text("txtSimpleDes"), u"Mill"_s);
        const auto answer = [&desk](Answer choice) {
            desk.prompts.expectSave(choice);
            return desk.windows.editEntry(9);
        };
        QVERIFY(!answer(Answer::Cancel));
        support::Lock other(desk.paths.PhoneBookFile);
        desk.prompts.expectSave(Answer::Save);
        desk.prompts.expect();
        Editor::form()->close();
        other.release();
        QCOMPARE(desk.prompts.asked.constLast(), u"[EntryNotSaved]\n[HeldElsewhere]"_s);
        QCOMPARE(Editor::text("txtSimpleDes"), u"Mill"_s);
        QVERIFY(answer(Answer::Save));
        QCOMPARE(Editor::text("txtSimpleDes"), u"Baker"_s);
        QCOMPARE(desk.row(0), u"3|5550144|Mill|pays\u00A0late|Y|G"_s);
    }

    void aDeskWithoutItsPhoneBookIsToldSo()
    {
        Desk desk(false);
        QVERIFY(QFile::remove(desk.paths.PhoneBookFile));
        desk.prompts.expect();
        desk.windows.editEntry(3);
        desk.showList();
        QCOMPARE(desk.prompts.asked.join(u' '), u"[PhoneBookMissing]"_s);
        QCOMPARE(List::text("lblNotice"), u"[PhoneBookMissing]"_s);
        desk.run(phoneBookRows);
        QTest::keyClick(List::form(), Qt::Key_F5);
        QTRY_COMPARE(shownRows(), 4);
        QVERIFY(List::text("lblNotice").isEmpty() && List::grid()->isColumnHidden(5));
        desk.prompts.expect();
        desk.windows.editEntry(4);
        QCOMPARE(desk.prompts.asked.last(), u"[EntryGone]"_s);
    }

    void aCallerIsFiledWhereTheOperatorChooses()
    {
        Desk desk(false);
        for (const auto &[number, name, filedAs] :
             {std::tuple(u"123"_s, u"Bay"_s, u"Bay"_s), {u"617-555-0188"_s, u"6175550188"_s, u""_s}}) {
            desk.windows.addCaller(number, name);
            QVERIFY(!Choice::isEnabled("Option2"));
            Choice::press("OKButton");
            QVERIFY(!Choice::form());
            QCOMPARE(Editor::text("txtTelno"), number);
            QCOMPARE(Editor::text("txtSimpleDes"), filedAs); // a number is no name
            Editor::press("Command1");                       // nothing was typed, nothing is asked
            QTRY_COMPARE(desk.openForms.count(), 0);
        }
        desk.navigator.available.insert(core::Window::CustomerList);
        desk.windows.addCaller(u"123"_s, u"Bay"_s);
        Choice::activate();
        Choice::key("Option2", Qt::Key_Space);
        Choice::type("txtKeyWord", u"Port"_s);
        support::key(Qt::Key_Return);
        QCOMPARE(desk.navigator.shown, QStringList{u"addCustomer 123 Port Bay"_s}); // searched for, and named
        QVERIFY(!Editor::form());
    }
};

QTEST_MAIN(tst_PhoneBookForms)
#include "tst_PhoneBookForms.moc"
