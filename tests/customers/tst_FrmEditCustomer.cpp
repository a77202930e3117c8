#include "customers/CustomerDesk.h"
#include "customers/forms/FrmEditCustomer.h"
#include "support/TestForms.h"

using customers::FrmEditCustomer;
using Answer = core::Prompts::Answer;

class tst_FrmEditCustomer : public QObject
{
    Q_OBJECT

    struct Forms : support::TestForms
    {
        FakeCustomerEffects effects;
        QPointer<FrmEditCustomer> form;

        Forms()
        {
            deliver(u"Customer"_s, paths.CustomerFile);
            customerSql(*this,
                        u"insert into customer (CustomerName, WorkPhones, T3, note, IfVIP) values ('Acme', "
                        "'5550144', '1', ?, 'G')"_s,
                        {u"one\ntwo\u00A0three"_s});
            numbers.LoadCustomerPhoneNumberSnArray();
            QVERIFY(QDir().mkpath(paths.PopUserDataFolder));
            navigator.available = {core::Window::CallNotes};
            open();
        }
        ~Forms() { delete form; }
        void open()
        {
            delete form;
            form = new FrmEditCustomer({context(), checks, effects});
        }
        template <typename Control = QLineEdit>
        Control *find(const char *name) const
        {
            return form->findChild<Control *>(QLatin1String(name));
        }
        /// Types into a field and leaves it, as the toolkit does it in a window that has the keyboard.
        void type(const char *name, const QString &text) const
        {
            find(name)->selectAll();
            QTest::keyClicks(find(name), text);
            leave(name);
        }
        void leave(const char *name) const
        {
            QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
            QApplication::sendEvent(find(name), &left);
            QCoreApplication::processEvents();
        }
        QString text(const char *name) const { return find(name)->text(); }
        void click(const char *name) const { QTest::mouseClick(find<QAbstractButton>(name), Qt::LeftButton); }
    };

private Q_SLOTS:
    void everyFieldOfTheTableHasItsControlAndALabel()
    {
        Forms forms;
        const QList<QLabel *> labels = forms.form->findChildren<QLabel *>();
        for (const customers::CustomerField &field : customers::customerFields()) {
            const auto *const box = forms.find<QCheckBox>(field.control);
            const auto label = std::ranges::find(labels, forms.find<QWidget>(field.control), &QLabel::buddy);
            const QString caption = box != nullptr          ? box->text()
                                    : label != labels.end() ? (*label)->text()
                                                            : u""_s;
            const QString key = QLatin1String(field.labelKey);
            QVERIFY2(key.isEmpty() ? !caption.isEmpty() : caption == u'[' + key + u']', field.control);
        }
    }

    void everyFieldIsSavedAsItIsShown()
    {
        Forms forms;
        forms.form->addCustomer(u"1"_s);
        customers::CustomerRecord customer = fullCustomer();
        customer.shown.at(size_t(customers::fieldOf(u"Address"))) = QString(40000, u'x');
        customers::CustomerControlSet(*forms.form).setTexts(customer.shown);
        QVERIFY(QTest::qWaitForWindowActive(forms.form));
        forms.find("txtCustomerName")->clear();
        forms.find<QTabWidget>("SSTab1")->setCurrentIndex(2);
        forms.prompts.expect();
        QTest::keyClick(forms.form, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(forms.find("txtCustomerName")->hasFocus());
        forms.find("txtCustomerName")->setText(u"VALUE 0"_s);
        QCOMPARE(forms.form->windowTitle(), u"VALUE 0 - [EditCustomer]"_s);
        QTest::keyClick(forms.form, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(forms.text("txtSN"), u"2"_s);
        QCOMPARE(forms.find<QLabel>("lblMessage")->text(), u"[EntrySaved]"_s);
        forms.find<QCheckBox>("chkYNVIP")->toggle();
        QCOMPARE(forms.find<QLabel>("lblMessage")->text(), u""_s);
        forms.open();
        QVERIFY(forms.form->ShowCustomerByName(u"VALUE 0"_s));
        customer.shown.at(size_t(customers::fieldOf(u"ContactPersonMessenger"))) =
            customer.text(u"ContactPersonHomePhones");
        QCOMPARE(customers::CustomerControlSet(*forms.form).texts(), customer.shown);
    }

    void whatIsOnlyLookedAtStaysAsItIsOnFile()
    {
        Forms forms;
        QVERIFY(forms.form->ShowCustomerBySN(1));
        QCOMPARE(forms.find<QCheckBox>("chkYNVIP")->checkState(), Qt::PartiallyChecked);
        forms.find<QCheckBox>("chkYNVIP")->setFocus();
        QTest::keyClick(forms.find<QCheckBox>("chkYNVIP"), Qt::Key_Return); // saves
        QCOMPARE(customerSql(forms, u"select note, IfVIP from customer"_s), u"one\ntwo\u00A0three|G"_s);
        forms.find<QPlainTextEdit>("txtRemark")->appendPlainText(u"four"_s);
        forms.click("Command2");
        QCOMPARE(customerSql(forms, u"select note from customer"_s), u"one\r\ntwo\u00A0three\r\nfour"_s);
        forms.form->close();
    }

    void theTwoCopiesOfTheContactStayEqual()
    {
        Forms forms;
        for (const auto &[one, other] : {std::pair("txtLinkman", "txtLinkman1"),
                                         {"txtLinkmanMobile", "txtLinkmanMobile1"},
                                         {"txtLinkmanEmail", "txtLinkmanEmail1"}}) {
            forms.find(one)->setText(u"first"_s);
            QCOMPARE(forms.text(other), u"first"_s);
            QTest::keyClicks(forms.find(other), u"!"_s);
            QCOMPARE(forms.text(one), u"first!"_s);
        }
    }

    void warningsComeOnlyWhileAddingAndOnlyForWhatHasChanged()
    {
        Forms forms;
        forms.form->addCustomer(u"5550144"_s);
        forms.prompts.expect(); // of the caller's number
        forms.leave("txtCompanyCall");
        QVERIFY(QTest::qWaitForWindowActive(forms.form));
        QTest::keyClicks(forms.find("txtCustomerName"), u"acm"_s);
        const auto *const save = forms.find<QWidget>("Command2");
        const QPoint place = save->mapTo(forms.form, save->rect().center());
        QTest::mousePress(forms.form->windowHandle(), Qt::LeftButton, {}, place);
        QVERIFY(save->hasFocus() && forms.prompts.asked.size() == 1); // or the click would be swallowed
        forms.prompts.expect();
        QTest::mouseRelease(forms.form->windowHandle(), Qt::LeftButton, {}, place);
        QCOMPARE(forms.text("txtSN"), u"2"_s);
        forms.leave("txtCustomerName"); // he is edited from now on
        forms.form->addCustomer({});
        for (const char *name : {"txtCompanyCall", "txtCompanyFax", "txtLinkmanMobile"}) {
            forms.prompts.expect();
            forms.type(name, u"555-0144"_s);
            QCOMPARE(forms.navigator.shown.takeLast(),
                     u"showCustomerList Select * from customer where sn = 1"_s);
        }
        QCOMPARE(forms.prompts.asked.at(1), u"[CustomerExisted]\n[NameOnFile]"_s);
        forms.prompts.expectSave(Answer::Discard);
        QVERIFY(forms.form->ShowCustomerBySN(1));
        forms.type("txtCustomerName", u"Acme's"_s);
        forms.type("txtCompanyFax", u"5550144"_s);
        QCOMPARE(forms.text("txtCustomerName"), u"Acme\u2019s"_s);
        QCOMPARE(forms.prompts.asked.size(), 6);
    }

    void aCallersNameIsTheNewCustomersAndIsCheckedLikeATypedOne()
    {
        Forms forms;
        forms.form->addCustomer(u"2125550188"_s, u"O'Brien"_s);
        QCOMPARE(forms.text("txtCustomerName"), u"O\u2019Brien"_s);
        QVERIFY(forms.form->close()); // nothing was typed, nothing is asked
        forms.form->addCustomer({}, u"Acme"_s);
        forms.prompts.expect();
        forms.click("Command2");
        QCOMPARE(forms.prompts.asked, QStringList{u"[CustomerExisted]\n[NameOnFile]"_s});
        QCOMPARE(forms.text("txtSN"), u"2"_s);
    }

    void aNameThatCouldNotBeLookedUpIsLookedUpOnceItCan()
    {
        for (const bool saves : {true, false}) {
            Forms forms;
            forms.form->addCustomer({});
            std::optional<store::Database> other(forms.paths.CustomerFile);
            other->Execute(u"begin exclusive"_s);
            forms.type("txtCustomerName", u"acme"_s);
            QCOMPARE(forms.logMessages().filter(u"IfTheCustumerExist"_s).size(), 1);
            other.reset();
            forms.prompts.expect();
            saves ? forms.click("Command2") : forms.leave("txtCustomerName");
            QCOMPARE(forms.prompts.asked, QStringList{u"[CustomerExisted]\n[NameOnFile]"_s});
        }
    }

    // One box for whatever is somebody else's, and none twice; the line stays as long as it is so.
    void anActBringsOneBoxAndTheLineSaysWhoseItIs()
    {
        Forms forms;
        forms.form->addCustomer({});
        QVERIFY(QTest::qWaitForWindowActive(forms.form));
        forms.find("txtCustomerName")->setFocus();
        QTest::keyClicks(forms.find("txtCustomerName"), u"acme"_s);
        forms.find("txtCompanyFax")->setText(u"555-0144"_s);
        forms.find("txtCompanyFax")->setModified(true);
        const auto *const owner = forms.find<QLabel>("lblOwner");
        QTRY_COMPARE(owner->text(), u"[NumberBelongsTo]"_s);
        forms.prompts.expect();
        QTest::keyClick(forms.form, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(forms.prompts.asked, QStringList(u"[CustomerExisted]\n[NameOnFile]"_s));
        QCOMPARE(forms.text("txtSN"), u"2"_s);
        QVERIFY(forms.find("txtCustomerName")->hasFocus() && owner->isVisible());
        QTest::keyClicks(forms.find("txtCustomerName"), u"2"_s);
        QTest::keyClick(forms.form, Qt::Key_S, Qt::ControlModifier); // not warned about himself
        QCOMPARE(forms.prompts.asked.size(), 1);
        QCOMPARE(owner->text(), u"[NumberBelongsTo]"_s);
        forms.click("cmdOpenOwner");
        QCOMPARE(forms.navigator.shown, QStringList(u"Show_Editor CUSTOMER 1"_s));
        forms.find("txtCompanyFax")->clear();
        QTRY_VERIFY(!owner->isVisible());
    }

    // A name that another program has filed with an apostrophe is his name until it is changed.
    void aNameWithAnApostropheOnFileIsLeftAlone()
    {
        Forms forms;
        customerSql(forms, u"update customer set CustomerName='O''Brien'"_s);
        QVERIFY(forms.form->ShowCustomerBySN(1));
        Q_EMIT forms.find("txtCustomerName")->editingFinished();
        forms.click("cmdViewNotePad");
        QVERIFY(forms.form->close()); // unasked
        forms.open();
        QVERIFY(forms.form->ShowCustomerBySN(1));
        forms.type("txtCustomerName", u"O'Hara"_s);
        QCOMPARE(forms.text("txtCustomerName"), u"O\u2019Hara"_s);
        forms.click("cmdViewNotePad");
        QCOMPARE(forms.navigator.shown, QStringList(2, u"ShowNotePad O'Brien"_s));
    }

    void theOperatorDecidesWhatTwoHaveChanged_data()
    {
        QTest::addColumn<QString>("elsewhere");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("box"); // what stands in it, and on file
        QTest::addColumn<QString>("onFile");
        const QString change = u"update customer set quote='8', city='Rome'"_s;
        QTest::newRow("mine") << change << int(Answer::Save) << u"9"_s << u"9 Rome"_s;
        QTest::newRow("theirs") << change << int(Answer::Discard) << u"8"_s << u"8 Rome"_s;
        QTest::newRow("back") << change << int(Answer::Cancel) << u"9"_s << u"8 Rome"_s;
        const QString deletion = u"delete from customer"_s;
        QTest::newRow("gone, mine") << deletion << int(Answer::Save) << u"9"_s << u"9 "_s;
        QTest::newRow("gone, theirs") << deletion << int(Answer::Discard) << u""_s << u""_s;
    }
    void theOperatorDecidesWhatTwoHaveChanged()
    {
        QFETCH(const QString, elsewhere);
        QFETCH(const int, answer);
        Forms forms;
        QVERIFY(forms.form->ShowCustomerBySN(1));
        forms.find("txtQuote")->setText(u"9"_s);
        customerSql(forms, elsewhere);
        forms.prompts.expectSave(Answer(answer));
        forms.click("Command2");
        const bool gone = elsewhere.startsWith(u"delete"_s);
        const QString values = u"\n\n[Quote]\n[ValueMine] \u20689\u2069\n[ValueTheirs] \u20688\u2069"_s;
        QCOMPARE(forms.prompts.asked.first(),
                 u"Acme\n\n"_s + (gone ? u"[RecordGone]"_s : u"[ChangedElsewhere]"_s + values));
        QTEST(forms.text("txtQuote"), "box");
        QTEST(customerSql(forms, u"select quote || ' ' || ifnull(city, '') from customer"_s), "onFile");
        if (Answer(answer) != Answer::Cancel) {
            QVERIFY(forms.form->close()); // nothing is left to be asked about
            return;
        }
        forms.prompts.expectSave(Answer::Discard);
        forms.form->close();
    }

    void unsavedTextIsAskedAbout()
    {
        Forms forms;
        QVERIFY(forms.form->ShowCustomerBySN(1));
        QVERIFY(!forms.find<QWidget>("Command1")->isEnabled());
        forms.find("txtQuote")->setText(u"9"_s);
        forms.prompts.expectSave(Answer::Cancel);
        QTest::keyClick(forms.form, Qt::Key_Escape);
        QVERIFY(forms.form->isVisible());
        QCOMPARE(forms.prompts.asked, QStringList(u"Acme\n\n[CustomerUnsaved]"_s));
        forms.prompts.expectSave(Answer::Cancel);
        forms.form->addCustomer(u"2"_s);
        QCOMPARE(forms.text("txtSN"), u"1"_s);
        forms.prompts.expectSave(Answer::Save);
        forms.form->addCustomer(u"2"_s);
        QCOMPARE(customerSql(forms, u"select quote from customer"_s), u"9"_s);
        QCOMPARE(forms.text("txtSN") + forms.text("txtQuote") + forms.text("txtCompanyCall"), u"2"_s);
        forms.form->appendNumber(u"3"_s);
        QCOMPARE(forms.text("txtCompanyCall"), u"2,3"_s);
        forms.prompts.expectSave(Answer::Discard);
        forms.click("Command1");
        QCOMPARE(forms.text("txtCompanyCall"), QString());
        forms.form->close();
        QTRY_VERIFY(forms.form.isNull());
    }

    void addressesReachTheSystemWithTheirPrefix()
    {
        Forms forms;
        forms.form->addCustomer({});
        for (const QString &address : {u" desk.example "_s, u"http://a.example"_s, u"HTTP://B.example"_s,
                                       u"HTTPS://c.example"_s, u" "_s}) {
            forms.find("txtHomepage")->setText(address);
            QTest::mouseDClick(forms.find("txtHomepage"), Qt::LeftButton);
        }
        forms.find("txtLinkmanEmail")->setText(u" o@desk.example"_s);
        QTest::mouseDClick(forms.find("txtLinkmanEmail1"), Qt::LeftButton);
        forms.click("cmdSendEmail");
        const QString mail = u"startMail o@desk.example"_s;
        QCOMPARE(forms.shell.opened,
                 QStringList({u"openPage http://desk.example"_s, u"openPage http://a.example"_s,
                              u"openPage http://HTTP://B.example"_s, u"openPage HTTPS://c.example"_s, mail,
                              mail}));
        forms.click("Command4");
        forms.find("txtCustomerName")->setText(u"Acme"_s);
        forms.click("cmdViewNotePad");
        QCOMPARE(forms.navigator.shown,
                 QStringList({u"ShowHelp Popup_CustomerDatabase_Edit"_s, u"ShowNotePad Acme"_s}));
    }

    void combosRememberWhatWasTyped()
    {
        Forms forms;
        auto *city = forms.find<QComboBox>("txtCity");
        QTest::keyClicks(city->lineEdit(), u"Paris"_s);
        QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(city, &left);
        QTRY_COMPARE(city->count(), 1);
        forms.open();
        QCOMPARE(forms.find<QComboBox>("txtCity")->itemText(0), u"Paris"_s);
        QCOMPARE(forms.find<QComboBox>("txtCity")->currentText(), QString());
        QCOMPARE(forms.find<QComboBox>("txtContactPersonSex")->itemText(1), u"FeMale"_s);
    }
};

QTEST_MAIN(tst_FrmEditCustomer)
#include "tst_FrmEditCustomer.moc"
