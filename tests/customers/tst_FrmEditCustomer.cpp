#include "customers/CustomerDesk.h"
#include "customers/CustomerForwarding.h"
#include "customers/forms/FrmEditCustomer.h"
#include "support/Row.h"
#include "support/Ui.h"

using customers::FrmEditCustomer, customers::fieldOf;
using Answer = core::Prompts::Answer;
using Editor = support::Ui<FrmEditCustomer>;

class tst_FrmEditCustomer : public QObject
{
    Q_OBJECT

    /// The editor, which shows the one customer on file.
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
            form->ShowCustomerBySN(1);
            Editor::activate();
        }
        QString onFile(const QString &fields) const
        {
            return customerSql(*this, u"select %1 from customer"_s.arg(fields));
        }
    };

    static void leave(const char *name)
    {
        QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(Editor::find(name), &left);
        QCoreApplication::processEvents();
    }
    static void typeAndLeave(const char *name, const QString &text)
    {
        Editor::type(name, text);
        leave(name);
    }
    static void save() { QTest::keyClick(Editor::form(), Qt::Key_S, Qt::ControlModifier); }

    inline static const QString nameIsOnFile = u"[CustomerExisted]\n[NameOnFile]"_s;

private Q_SLOTS:
    void everyFieldIsSavedAsItIsShown()
    {
        Forms forms;
        forms.form->addCustomer({});
        customers::CustomerRecord customer = fullCustomer();
        customer.shown.at(size_t(fieldOf(u"Address"))) = QString(40000, u'x');
        customers::CustomerControlSet(*forms.form).setTexts(customer.shown);
        Editor::set("txtCustomerName", {});
        Editor::find<QTabWidget>("SSTab1")->setCurrentIndex(2);
        forms.prompts.expect();
        save();
        QVERIFY(Editor::hasFocus("txtCustomerName"));
        Editor::set("txtCustomerName", u"VALUE 0"_s);
        save();
        QCOMPARE(Editor::text("txtSN") + Editor::text("lblMessage"), u"2[EntrySaved]"_s);
        const QByteArray image = forms.effects.sent.at(0).toBytes(forms.codePage);
        const auto sent = customers::receivedFields(image);
        for (const customers::CustomerField &field : customers::customerFields()) {
            const QString column = QLatin1String(field.column);
            const QString stored = column == "IfVIP"_L1 ? u"Y"_s : customer.text(column);
            QCOMPARE(customerSql(forms, u"select %1 from customer where SN = 2"_s.arg(column)), stored);
            QCOMPARE(QString::fromLatin1(sent.at(fieldOf(column)).bytes), stored.left(field.width));
        }
        forms.open();
        QVERIFY(forms.form->ShowCustomerByName(u"value 0"_s));
        customer.shown.at(size_t(fieldOf(u"ContactPersonMessenger"))) =
            customer.text(u"ContactPersonHomePhones");
        QCOMPARE(customers::CustomerControlSet(*forms.form).texts(), customer.shown);
    }

    void whatIsOnlyLookedAtStaysAsItIsOnFile()
    {
        const Forms forms;
        QCOMPARE(Editor::find<QCheckBox>("chkYNVIP")->checkState(), Qt::PartiallyChecked);
        Editor::key("chkYNVIP", Qt::Key_Return); // saves
        QCOMPARE(forms.onFile(u"note, IfVIP"_s), u"one\ntwo\u00A0three|G"_s);
        Editor::find<QPlainTextEdit>("txtRemark")->appendPlainText(u"four"_s);
        Editor::press("Command2");
        QCOMPARE(forms.onFile(u"note"_s), u"one\r\ntwo\u00A0three\r\nfour"_s);
    }

    void theTwoCopiesOfTheContactStayEqual()
    {
        const Forms forms;
        for (const char *one : {"txtLinkman", "txtLinkmanMobile", "txtLinkmanEmail"}) {
            const QByteArray other = one + "1"_ba;
            Editor::set(one, u"first"_s);
            QCOMPARE(Editor::text(other.constData()), u"first"_s);
            QTest::keyClicks(Editor::find(other.constData()), u"!"_s);
            QCOMPARE(Editor::text(one), u"first!"_s);
        }
    }

    void warningsComeOnlyWhileAddingAndOnlyForWhatHasChanged()
    {
        Forms forms;
        forms.form->addCustomer(u"5550144"_s);
        forms.prompts.expect(); // of the caller's number
        leave("txtCompanyCall");
        Editor::type("txtCustomerName", u"acm"_s);
        const auto *const button = Editor::find("Command2");
        const QPoint place = button->mapTo(forms.form, button->rect().center());
        QTest::mousePress(forms.form->windowHandle(), Qt::LeftButton, {}, place);
        QVERIFY(button->hasFocus() && forms.prompts.asked.size() == 1); // or the click would be swallowed
        forms.prompts.expect();
        QTest::mouseRelease(forms.form->windowHandle(), Qt::LeftButton, {}, place);
        QCOMPARE(Editor::text("txtSN"), u"2"_s);
        QCOMPARE(forms.prompts.asked.at(1), nameIsOnFile);
        leave("txtCustomerName"); // he is edited from now on
        forms.form->addCustomer({});
        for (const char *name : {"txtCompanyCall", "txtCompanyFax", "txtLinkmanMobile"}) {
            forms.prompts.expect();
            typeAndLeave(name, u"555-0144"_s);
            QCOMPARE(forms.navigator.shown.takeLast(),
                     u"showCustomerList Select * from customer where sn = 1"_s);
        }
        forms.prompts.expectSave(Answer::Discard);
        QVERIFY(forms.form->ShowCustomerBySN(1));
        typeAndLeave("txtCompanyFax", u"5550144"_s);
        QCOMPARE(forms.prompts.asked.size(), 6);
    }

    void aCallersNameIsTheNewCustomersAndIsCheckedLikeATypedOne()
    {
        Forms forms;
        forms.form->addCustomer(u"2125550188"_s, u"O'Brien"_s);
        QCOMPARE(Editor::text("txtCustomerName"), u"O\u2019Brien"_s);
        QVERIFY(forms.form->close()); // nothing was typed, nothing is asked
        forms.form->addCustomer({}, u"Acme"_s);
        forms.prompts.expect();
        Editor::press("Command2");
        QCOMPARE(forms.prompts.asked, QStringList{nameIsOnFile});
    }

    // One box for whatever is somebody else's, and none twice; the line stays as long as it is so.
    void anActBringsOneBoxAndTheLineSaysWhoseItIs()
    {
        Forms forms;
        forms.form->addCustomer({});
        Editor::type("txtCustomerName", u"acme"_s);
        Editor::set("txtCompanyFax", u"555-0144"_s);
        Editor::find<QLineEdit>("txtCompanyFax")->setModified(true);
        QTRY_COMPARE(Editor::text("lblOwner"), u"[NumberBelongsTo]"_s);
        forms.prompts.expect();
        save();
        QCOMPARE(forms.prompts.asked, QStringList{nameIsOnFile});
        QVERIFY(Editor::hasFocus("txtCustomerName") && Editor::isVisible("lblOwner"));
        QTest::keyClicks(Editor::find("txtCustomerName"), u"2"_s);
        save(); // not warned about himself
        QCOMPARE(forms.prompts.asked.size(), 1);
        QCOMPARE(Editor::text("lblOwner"), u"[NumberBelongsTo]"_s);
        Editor::press("cmdOpenOwner");
        QCOMPARE(forms.navigator.shown, QStringList(u"Show_Editor CUSTOMER 1"_s));
        Editor::set("txtCompanyFax", {});
        QTRY_VERIFY(!Editor::isVisible("lblOwner"));
    }

    // A name that another program has filed with an apostrophe is his name until it is changed.
    void aNameWithAnApostropheOnFileIsLeftAlone()
    {
        Forms forms;
        customerSql(forms, u"update customer set CustomerName='O''Brien'"_s);
        forms.open();
        leave("txtCustomerName");
        QCOMPARE(Editor::text("txtCustomerName"), u"O'Brien"_s);
        QVERIFY(forms.form->close()); // unasked
        forms.open();
        typeAndLeave("txtCustomerName", u"O'Hara"_s);
        QCOMPARE(Editor::text("txtCustomerName"), u"O\u2019Hara"_s);
        Editor::press("cmdViewNotePad");
        QCOMPARE(forms.navigator.shown, QStringList(u"ShowNotePad O'Brien"_s));
    }

    // By his answer: what stands in the box then, and on file.
    void theOperatorDecidesWhatTwoHaveChanged()
    {
        const QString change = u"update customer set quote='8', city='Rome'"_s;
        const QString deletion = u"delete from customer"_s;
        const QString values = u"\n\n[Quote]\n[ValueMine] \u20689\u2069\n[ValueTheirs] \u20688\u2069"_s;
        for (const auto &[name, elsewhere, answer, box, onFile] :
             {std::tuple("mine", change, Answer::Save, u"9"_s, u"9 Rome"_s),
              {"theirs", change, Answer::Discard, u"8"_s, u"8 Rome"_s},
              {"back", change, Answer::Cancel, u"9"_s, u"8 Rome"_s},
              {"gone, mine", deletion, Answer::Save, u"9"_s, u"9 "_s}}) {
            const support::Row row(name);
            Forms forms;
            Editor::set("txtQuote", u"9"_s);
            customerSql(forms, elsewhere);
            forms.prompts.expectSave(answer);
            Editor::press("Command2");
            QCOMPARE(forms.prompts.asked.first(),
                     u"Acme\n\n"_s +
                         (elsewhere == deletion ? u"[RecordGone]"_s : u"[ChangedElsewhere]"_s + values));
            QCOMPARE(Editor::text("txtQuote"), box);
            QCOMPARE(forms.onFile(u"quote || ' ' || ifnull(city, '')"_s), onFile);
            if (answer == Answer::Cancel) {
                forms.prompts.expectSave(Answer::Discard); // else nothing is left to be asked about
            }
            QVERIFY(forms.form->close());
        }
    }

    void unsavedTextIsAskedAbout()
    {
        Forms forms;
        Editor::set("txtQuote", u"9"_s);
        forms.prompts.expectSave(Answer::Cancel);
        QTest::keyClick(forms.form, Qt::Key_Escape);
        QCOMPARE(forms.prompts.asked, QStringList(u"Acme\n\n[CustomerUnsaved]"_s));
        forms.prompts.expectSave(Answer::Cancel);
        forms.form->addCustomer(u"2"_s);
        QCOMPARE(Editor::text("txtSN"), u"1"_s);
        forms.prompts.expectSave(Answer::Save);
        forms.form->addCustomer(u"2"_s);
        QCOMPARE(forms.onFile(u"quote"_s), u"9"_s);
        QCOMPARE(Editor::text("txtSN") + Editor::text("txtQuote") + Editor::text("txtCompanyCall"), u"2"_s);
        forms.form->appendNumber(u"3"_s);
        QCOMPARE(Editor::text("txtCompanyCall"), u"2,3"_s);
        forms.prompts.expectSave(Answer::Discard);
        Editor::press("Command1");
        QCOMPARE(Editor::text("txtCompanyCall"), QString());
    }

    void addressesReachTheSystemWithTheirPrefix()
    {
        Forms forms;
        for (const auto &[box, typed, opened] :
             {std::tuple("txtHomepage", u" desk.example "_s, u"openPage http://desk.example"_s),
              {"txtHomepage", u"HTTPS://c.example"_s, u"openPage HTTPS://c.example"_s},
              {"txtLinkmanEmail1", u" o@desk.example"_s, u"startMail o@desk.example"_s}}) {
            Editor::set(box, typed);
            QTest::mouseDClick(Editor::find(box), Qt::LeftButton);
            QCOMPARE(forms.shell.opened.takeLast(), opened);
        }
        Editor::press("cmdSendEmail");
        QCOMPARE(forms.shell.opened, QStringList{u"startMail o@desk.example"_s});
        Editor::press("Command4");
        QCOMPARE(forms.navigator.shown, QStringList{u"ShowHelp Popup_CustomerDatabase_Edit"_s});
    }
};

QTEST_MAIN(tst_FrmEditCustomer)
#include "tst_FrmEditCustomer.moc"
