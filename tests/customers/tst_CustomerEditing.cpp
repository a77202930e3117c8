#include "customers/CustomerDesk.h"
#include "customers/CustomerForwarding.h"
#include "support/CustomerOnFile.h"

using customers::CustomerField, customers::customerFields, customers::CustomerRecord, customers::fieldOf;

/// A customer's way between the table and the editor, without the editor.
class tst_CustomerEditing : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        support::FakeServer server;
        support::KeyTexts texts;
        FakeCustomerEffects effects;
        customers::LoadedCustomer loaded;
        CustomerRecord shown;
        customers::SavedCustomer saved;
        customers::CustomerEditing editing{{paths, values, log, texts, server, effects}};

        Desk()
        {
            values.WordSeparator = u" "_s;
            deliver(u"Customer"_s, paths.CustomerFile);
        }
        void begin(const customers::LoadedCustomer &customer)
        {
            loaded = customer;
            shown = customer.record;
        }
        void open() { begin(editing.ShowCustomerBySN(1).customer.value()); }
        bool save()
        {
            saved = editing.save(loaded, shown);
            if (saved.written) {
                begin(saved.customer);
            }
            return saved.written;
        }
        QString &field(QStringView column) { return shown.shown.at(size_t(fieldOf(column))); }
        QString count() const { return customerSql(*this, u"select count(*) from customer"_s); }
    };

private Q_SLOTS:
    void savingTrimsWhereItIsToldAndAgainEditsTheSameRow()
    {
        Desk desk;
        desk.begin(customers::CustomerEditing::newCustomer(u"5550144"_s, {}));
        desk.field(u"CustomerName") = u"  O\u2019Hara "_s;
        desk.field(u"CustomerID") = u"ab-1"_s;
        desk.field(u"city") = u" ' Łódź "_s;
        desk.field(u"Country") = u" \" 中国 "_s;
        QVERIFY(desk.save());
        QCOMPARE(customerSql(desk, u"select CustomerName, CustomerID, city, Country, WorkPhones, IfVIP,"
                                   " ifinblacklist, T3 from customer"_s),
                 u"O\u2019Hara|AB-1| ' Łódź |\" 中国|5550144|N|0|1"_s);
        desk.field(u"CustomerName") = u"Ms Hara"_s;
        QVERIFY(desk.save());
        QCOMPARE(customerSql(desk, u"select SN, CustomerName, city from customer"_s),
                 u"1|Ms Hara| ' Łódź "_s);
        QCOMPARE(desk.effects.called.join(u'|'), u"refreshCustomerList|customerSaved 1  O\u2019Hara|"
                                                 "refreshCustomerList|customerSaved 1 O\u2019Hara Ms Hara"_s);
        QCOMPARE(desk.server.sent, QStringList(2, u"REFRESHCUSTOMERLIST"_s));
    }

    void aNameIsNeededAndACustomerIdIsNobodyElses()
    {
        Desk desk;
        desk.field(u"CustomerID") = u"x"_s;
        QVERIFY(!desk.save());
        QCOMPARE(desk.saved.message + desk.saved.wrongField, u"[PlsInputCustomerName]CustomerName"_s);
        desk.field(u"CustomerName") = u"One"_s;
        QVERIFY(desk.save());
        desk.shown.SN.reset();
        desk.field(u"CustomerID") = u"X"_s;
        QVERIFY(!desk.save());
        QCOMPARE(desk.saved.message + desk.saved.wrongField, u"[CustomerID] [CustomerIDexisted]CustomerID"_s);
        QCOMPARE(desk.count(), u"1"_s);
        desk.field(u"CustomerID").clear();
        QVERIFY(desk.save() && (desk.shown.SN.reset(), desk.save()));
    }

    // What another desk does to the row between opening and saving it, and what is on file after that; just
    // that is handed over.
    void twoDesksLoseNothingOfEachOther()
    {
        const QString update = u"update customer set "_s;
        for (const auto &[elsewhere, typed, written, row] :
             {std::tuple(update + u"SN=SN"_s, u"7"_s, true, u"1|7|f|h"_s), // the operator alone
              {update + u"Fax='g'"_s, u"7"_s, true, u"1|7|g|h"_s},
              {update + u"ContactPersonMessenger='m2'"_s, u"7"_s, true,
               u"1|7|f|m2"_s},                                            // a field shown elsewhere
              {update + u"PostalCode='8'"_s, u"5"_s, true, u"1|8|f|h"_s}, // untouched here
              {update + u"PostalCode='8'"_s, u"7"_s, false, u"1|8|f|m"_s},
              {u"delete from customer"_s, u"7"_s, false, u""_s}}) {
            Desk desk;
            customerSql(desk,
                        u"insert into customer (CustomerName, T3, PostalCode, Fax, ContactPersonMessenger,"
                        " ContactPersonHomePhones) values ('A', '1', '5', 'f', 'm', 'h')"_s);
            desk.open();
            customerSql(desk, elsewhere);
            desk.field(u"PostalCode") = typed;
            QCOMPARE(desk.save(), written);
            QCOMPARE(desk.effects.called.isEmpty(), !written);
            QVERIFY(written || desk.saved.gone || desk.saved.disputed.constFirst().column == "PostalCode"_L1);
            QCOMPARE(customerSql(desk, u"select SN, PostalCode, Fax, ContactPersonMessenger from customer"_s),
                     row);
            QVERIFY(!written || desk.shown.text(u"Fax") == row.section(u'|', 2, 2)); // taken over, so shown
            QVERIFY(!written || desk.effects.onFile == support::customerOnFile(desk.paths.CustomerFile, 1));
        }
    }

    void flagsKeepTheirEncodings()
    {
        Desk desk;
        customerSql(desk, u"insert into customer (CustomerName, T3) values ('A', '1')"_s);
        for (const auto &[column, stored, shown, savedAs] : {std::tuple(u"IfVIP"_s, u"'y'"_s, u"1"_s, u"Y"_s),
                                                             {u"IfVIP"_s, u"'G'"_s, u"2"_s, u"G"_s}, // grey
                                                             {u"IfVIP"_s, u"Null"_s, u"0"_s, u"N"_s},
                                                             {u"ifinblacklist"_s, u"1"_s, u"1"_s, u"1"_s},
                                                             {u"T3"_s, u"'0'"_s, u"0"_s, u"0"_s}, // no pop-up
                                                             {u"T3"_s, u"' 1 '"_s, u"1"_s, u"1"_s},
                                                             {u"note"_s, u"Null"_s, u""_s, u""_s}}) {
            customerSql(desk, u"update customer set "_s + column + u" = "_s + stored);
            desk.open();
            QCOMPARE(desk.shown.text(column), shown);
            QVERIFY(desk.save());
            QCOMPARE(customerSql(desk, u"select "_s + column + u" from customer"_s), savedAs);
        }
    }

    void aCustomerWithoutAPopUpFlagIsNotShown()
    {
        const Desk desk;
        customerSql(desk, u"insert into customer (CustomerName) values ('A')"_s);
        const customers::FoundCustomer found = desk.editing.ShowCustomerBySN(1);
        QVERIFY(!found.customer);
        QCOMPARE(found.message, u"[CustomerNotShown]"_s);
    }

    // The first match decides, so a duplicate behind the edited row itself goes unnoticed.
    void onlyTheFirstCustomerWithAValueCounts()
    {
        Desk desk;
        customerSql(desk, u"insert into customer (CustomerID) values ('Ł'),('ł'),('straße'),(''''),(null)"_s);
        for (const auto &[sn, value, repeats] : {std::tuple(std::optional<qint32>(), u"ł"_s, true),
                                                 {1, u"ł"_s, false},
                                                 {2, u"Ł"_s, true},
                                                 {std::nullopt, u"STRASSE"_s, true},
                                                 {std::nullopt, u"'"_s, true},
                                                 {std::nullopt, u""_s, false}}) {
            QCOMPARE(desk.editing.IfRepeatCustomerField(sn, u"customerid"_s, value), repeats);
        }
    }

    void aFailedSaveKeepsWhatWasTypedAndASecondTrySucceeds()
    {
        Desk desk;
        desk.shown = fullCustomer();
        {
            const support::TakenFile other(desk.paths.CustomerFile);
            QVERIFY(!desk.save());
        }
        QCOMPARE(desk.saved.message, u"[CustomerNotSaved]\n[HeldElsewhere]"_s);
        QCOMPARE(desk.effects.called.size() + desk.effects.sent.size() + desk.server.sent.size(), 0);
        QVERIFY(desk.save());
        QCOMPARE(desk.count(), u"1"_s);
    }

    // 5 bytes hold two Chinese characters and a half.
    void aForwardedTextIsCutBetweenCharacters()
    {
        core::CustomerInfo info{.fields = {{5, u"客户资料"_s}, {3, u"€x"_s}, {4, u"\U0001F600ab"_s}},
                                .doNotSend = 0x0102};
        const QByteArray image = info.toBytes(core::CodePage(936));
        QCOMPARE(image.size(), 3265);
        QCOMPARE(image.first(5), QByteArray("\xBF\xCD\xBB\xA7 "));
        QCOMPARE(image.last(3), QByteArray(" \x02\x01"));
        QVERIFY(customers::receivedFields(image.chopped(1)).isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_CustomerEditing)
#include "tst_CustomerEditing.moc"
