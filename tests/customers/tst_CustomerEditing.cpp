#include "customers/CustomerDesk.h"
#include "customers/CustomerForwarding.h"

using customers::CustomerField, customers::customerFields, customers::CustomerRecord, customers::fieldOf;

/// A customer's way between the table and the editor, without the editor.
class tst_CustomerEditing : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk, customers::CustomerControls
    {
        support::FakePrompts prompts;
        support::FakeServer server;
        support::KeyTexts texts;
        FakeCustomerEffects effects;
        CustomerRecord shown;
        QString storedWhenSnWasShown;
        customers::CustomerEditing editing{{paths, values, log, texts, prompts, server, effects}, *this};

        Desk()
        {
            values.WordSeparator = u" "_s;
            deliver(u"Customer"_s, paths.CustomerFile);
        }
        CustomerRecord shownCustomer() const override { return shown; }
        void showCustomer(const CustomerRecord &customer) override { shown = customer; }
        void showSN(qint32 sn) override
        {
            shown.SN = sn;
            storedWhenSnWasShown = count();
        }
        void turnTo(QStringView) override {}
        QString &field(QStringView column) { return shown.shown.at(size_t(fieldOf(column))); }
        QString count() const { return customerSql(*this, u"select count(*) from customer"_s); }
    };

private Q_SLOTS:
    void eachOfTheFieldsArrivesWhereItBelongs()
    {
        Desk desk;
        desk.shown = fullCustomer();
        QVERIFY(desk.editing.save());
        QCOMPARE(desk.shown.SN, 1);
        QCOMPARE(desk.storedWhenSnWasShown, u"0"_s);
        CustomerRecord expected = fullCustomer();
        expected.SN = 1;
        expected.shown.at(size_t(fieldOf(u"ContactPersonMessenger"))) =
            expected.text(u"ContactPersonHomePhones");
        const QByteArray image = desk.effects.sent.at(0).toBytes(core::CodePage(1252));
        const auto received = customers::receivedFields(image);
        for (const CustomerField &field : customerFields()) {
            const QString column = QLatin1String(field.column);
            const QString stored = column == "IfVIP"_L1 ? u"Y"_s : fullCustomer().text(column);
            QCOMPARE(customerSql(desk, u"select "_s + column + u" from customer where SN = 1"_s), stored);
            QCOMPARE(QString::fromLatin1(received.at(fieldOf(column)).bytes), stored.left(field.width));
        }
        for (const bool byName : {false, true}) {
            desk.shown = {};
            QVERIFY(byName ? desk.editing.ShowCustomerByName(u"value 0"_s)
                           : desk.editing.ShowCustomerBySN(1));
            QVERIFY(desk.shown == expected);
        }
        customerSql(desk, u"delete from customer"_s); // at another desk
        QVERIFY(desk.editing.save());
        QCOMPARE(customerSql(desk, u"select SN, CustomerName from customer"_s), u"2|VALUE 0"_s);
        QCOMPARE(desk.shown.SN, 2);
    }

    void savingTrimsWhereItIsToldAndAgainEditsTheSameRow()
    {
        Desk desk;
        desk.editing.showNewCustomer(u"5550144"_s);
        desk.field(u"CustomerName") = u"  O\u2019Hara "_s;
        desk.field(u"CustomerID") = u"ab-1"_s;
        desk.field(u"city") = u" ' Łódź "_s;
        desk.field(u"Country") = u" \" 中国 "_s;
        QVERIFY(desk.editing.hasUnsavedChanges());
        QVERIFY(desk.editing.save());
        QVERIFY(!desk.editing.hasUnsavedChanges());
        QCOMPARE(customerSql(desk, u"select CustomerName, CustomerID, city, Country, WorkPhones, IfVIP,"
                                   " ifinblacklist, T3 from customer"_s),
                 u"O\u2019Hara|AB-1| ' Łódź |\" 中国|5550144|N|0|1"_s);
        desk.field(u"CustomerName") = u"Ms Hara"_s; // the later save wins, and takes the notes along
        customerSql(desk, u"update customer set CustomerName = 'Renamed', city = 'x'"_s);
        QVERIFY(desk.editing.save());
        QCOMPARE(customerSql(desk, u"select SN, CustomerName, city from customer"_s),
                 u"1|Ms Hara| ' Łódź "_s);
        QCOMPARE(desk.effects.called.join(u'|'), u"refreshCustomerList|customerSaved 1  O\u2019Hara|"
                                                 "refreshCustomerList|customerSaved 1 Renamed Ms Hara"_s);
        QCOMPARE(desk.server.sent, QStringList(2, u"REFRESHCUSTOMERLIST"_s));
    }

    void aNameIsNeededAndACustomerIdIsNobodyElses()
    {
        Desk desk;
        desk.field(u"CustomerID") = u"x"_s;
        desk.prompts.expect();
        QVERIFY(!desk.editing.save());
        desk.field(u"CustomerName") = u"One"_s;
        QVERIFY(desk.editing.save());
        desk.shown.SN = 0;
        desk.field(u"CustomerID") = u"X"_s;
        desk.prompts.expect();
        QVERIFY(!desk.editing.save());
        QCOMPARE(desk.count(), u"1"_s);
        desk.field(u"CustomerID").clear();
        QVERIFY(desk.editing.save() && (desk.shown.SN = 0, desk.editing.save()));
        QCOMPARE(desk.prompts.asked,
                 QStringList({u"[PlsInputCustomerName]"_s, u"[CustomerID] [CustomerIDexisted]"_s}));
    }

    void flagsKeepTheirEncodings()
    {
        Desk desk;
        customerSql(desk, u"insert into customer (CustomerName, T3) values ('A', '1')"_s);
        for (const auto &[column, stored, shown, savedAs] : {std::tuple(u"IfVIP"_s, u"'y'"_s, u"1"_s, u"Y"_s),
                                                             {u"IfVIP"_s, u"'G'"_s, u"2"_s, u"G"_s}, // grey
                                                             {u"IfVIP"_s, u"'1'"_s, u"0"_s, u"N"_s},
                                                             {u"IfVIP"_s, u"Null"_s, u"0"_s, u"N"_s},
                                                             {u"ifinblacklist"_s, u"1"_s, u"1"_s, u"1"_s},
                                                             {u"ifinblacklist"_s, u"Null"_s, u"0"_s, u"0"_s},
                                                             {u"T3"_s, u"'0'"_s, u"0"_s, u"0"_s}, // no pop-up
                                                             {u"T3"_s, u"' 1 '"_s, u"1"_s, u"1"_s},
                                                             {u"note"_s, u"Null"_s, u""_s, u""_s}}) {
            customerSql(desk, u"update customer set "_s + column + u" = "_s + stored);
            QVERIFY(desk.editing.ShowCustomerBySN(1));
            QCOMPARE(desk.shown.text(column), shown);
            QVERIFY(desk.editing.save());
            QCOMPARE(customerSql(desk, u"select "_s + column + u" from customer"_s), savedAs);
        }
    }

    void whatCannotBeShownIsToldAndLeavesTheEditorAsItWas()
    {
        Desk desk;
        desk.shown = fullCustomer();
        QVERIFY(desk.editing.save());
        const CustomerRecord before = desk.shown;
        for (const QString &statement : {u"update customer set T3 = 'yes'"_s,
                                         u"update customer set T3 = null"_s, u"delete from customer"_s}) {
            customerSql(desk, statement);
            desk.prompts.expect();
            QVERIFY(!desk.editing.ShowCustomerBySN(1));
            QVERIFY(desk.shown == before);
        }
        QCOMPARE(desk.prompts.asked.join(u' '),
                 u"[CustomerNotShown] [CustomerNotShown] [CustomerNotFound]"_s);
        QCOMPARE(desk.logMessages().join(u'|'),
                 u"!ShowCustomerBySN 13 T3 is no number|!ShowCustomerBySN 94 T3 is Null"_s);
    }

    // The first match decides, so a duplicate behind the edited row itself goes unnoticed.
    void onlyTheFirstCustomerWithAValueCounts()
    {
        Desk desk;
        customerSql(desk, u"insert into customer (CustomerID) values ('Ł'),('ł'),('straße'),(''''),(null)"_s);
        for (const auto &[sn, value, repeats] : {std::tuple(0, u"ł"_s, true),
                                                 {1, u"ł"_s, false},
                                                 {2, u"Ł"_s, true},
                                                 {0, u"STRASSE"_s, true},
                                                 {0, u"'"_s, true},
                                                 {0, u"Ł "_s, false},
                                                 {0, u""_s, false}}) {
            QCOMPARE(desk.editing.IfRepeatCustomerField(sn, u"customerid"_s, value), repeats);
        }
        QVERIFY(!desk.editing.IfRepeatCustomerField(0, u"x from customer; --"_s, u"AB"_s));
        QVERIFY(desk.logMessages().constLast().startsWith("!IfRepeatCustomerField "_L1));
    }

    void aFailedSaveKeepsWhatWasTypedAndASecondTrySucceeds()
    {
        Desk desk;
        desk.shown = fullCustomer();
        const auto fails = [&desk] {
            desk.prompts.expect();
            QVERIFY(!desk.editing.save());
            QVERIFY(desk.shown.shown == fullCustomer().shown);
            QCOMPARE(desk.prompts.asked.takeLast(), u"[CustomerNotSaved]"_s);
            QCOMPARE(desk.effects.called.size() + desk.effects.sent.size() + desk.server.sent.size(), 0);
            QVERIFY(desk.logMessages().constLast().startsWith("SaveCustomer "_L1));
        };
        const QString file = desk.paths.CustomerFile;
        store::Database(file).transaction(fails); // of another desk
        const QString away = file + u".away"_s;   // the folder is lost
        QVERIFY(QFile::rename(file, away) && QDir().mkpath(file));
        fails();
        QVERIFY(QDir().rmdir(file) && QFile::rename(away, file));
        QVERIFY(desk.editing.save());
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
