#include "lookup/NumberIndex.h"
#include "lookup/PhoneNumbers.h"
#include "support/CustomerOnFile.h"
#include "support/TestDesk.h"

#include <QRandomGenerator>

#include <map>

/// The road of a number: out of a text, into the index, and to the row that holds it.
class tst_PhoneNumbers : public QObject
{
    Q_OBJECT

    /// A desk whose index on the numbers would put row 8 before row 3, were it read instead of the table.
    struct Desk : support::TestDesk
    {
        core::CodePage codePage{1252};
        lookup::NumberIndex index{paths, log, codePage};

        Desk()
        {
            runSql(paths.PhoneBookFile, u"create table phonebook (SN counter, Telno text);"
                                        "create index Telno on phonebook (Telno);"
                                        "insert into phonebook values (3, '9533-1234567, 13900000000'),"
                                        " (8, '13900000000，word')"_s);
            runSql(paths.CustomerFile,
                   u"create table customer (SN counter, CustomerName text, WorkPhones text,"
                   " ContactPersonMobile text, Fax text, ContactPersonHomePhones text, note memo, IfVIP text,"
                   " ifinblacklist integer, T3 text);"
                   "insert into customer (SN, CustomerName, WorkPhones, ContactPersonMobile, Fax,"
                   " ContactPersonHomePhones) values (70000, 'Harbour Ltd', '11', null, '33 22', '44'),"
                   " (70001, 'Bay', null, '22', '', '13900000000')"_s);
            index.LoadPhoneNumberSNArray();
            index.LoadCustomerPhoneNumberSnArray();
        }
    };

private Q_SLOTS:
    // What is one byte of the desk's own code page belongs to a number.
    void aTextIsCutAtItsSeparators()
    {
        support::TestDesk desk;
        const std::optional<QString> builtIn;
        const auto split = [&desk](int page, const QString &text, const std::optional<QString> &separator) {
            const auto list = lookup::SplitPhoneNumber(desk.log, core::CodePage(page), text, separator);
            return QStringList(list.Items.begin(), list.Items.begin() + list.Count);
        };
        for (const auto &[page, separator, text, pieces] :
             {std::tuple(1252, builtIn, u""_s, u""_s),
              {1252, builtIn, u",,1,2:3.4 5|6\r\n7\r8\n"_s, u"1/2/3/4/5/6/7/8"_s},
              {1252, builtIn, u"0533-1234;4\t5"_s, u"0533-1234;4\t5"_s},
              {1252, builtIn, u"1，2　3４5"_s, u"1/2/3/5"_s},
              {1252, builtIn, u"电话123号😀4"_s, u"123/4"_s},
              {936, builtIn, u"617–555·01°01"_s, u"617/555/01/01"_s},
              {1254, builtIn, u"617–555ş01"_s, u"617–555ş01"_s},
              {1256, builtIn, u"\u200E617–5550101"_s, u"\u200E617–5550101"_s},
              {1252, builtIn, u"617ş5550101"_s, u"617/5550101"_s},
              {1252, builtIn, u"7 "_s.repeated(101), u"7/"_s.repeated(101).chopped(1)},
              {1252, u";"_s, u"123;4 5,6"_s, u"123/4 5,6"_s},
              {1252, builtIn, u"617–555—01•01"_s, u"617–555—01•01"_s},
              {1252, u"a"_s, u"1a2A3"_s, u"1/2A3"_s}}) {
            QCOMPARE(split(page, text, separator).join(u'/'), pieces);
        }
        QCOMPARE(desk.logMessages(), QStringList());
        for (const QString &tooMuch : {u"7 "_s.repeated(101) + u'7', QString(32768, u'7')}) {
            QCOMPARE(split(1252, tooMuch, builtIn), QStringList());
            QVERIFY(desk.logMessages().last().startsWith(u"!SplitPhoneNumber "_s));
        }
    }

    // Few digits make many duplicates, which are held in the order of their SN.
    void everyRowThatHoldsANumberIsFoundAndRowsAreReplacedAsByARebuild()
    {
        QRandomGenerator random(815);
        std::map<qint32, QStringList> rows = {{100, {u"7"_s}}, {1000, {u"9"_s}}};
        lookup::NumberEntries entries;
        for (int edit = 0; edit <= 100000; ++edit) {
            if (edit == 0 || edit == 50000) {
                entries = {};
                for (const auto &[sn, numbers] : rows) {
                    for (const QString &number : numbers) {
                        entries.append(u'(' + number + u")-"_s, sn);
                    }
                }
                while (!entries.finishSome()) {
                }
            }
            if (edit < 500 || edit % 250 == 0) {
                std::map<QString, std::vector<qint32>> holders;
                for (const auto &[sn, numbers] : rows) {
                    for (const QString &number : numbers) {
                        holders[number].push_back(sn);
                    }
                }
                for (QString number; number != u"700"; number.setNum(number.toInt() + 1)) {
                    QCOMPARE(entries.findAll(number), holders[number]);
                    QCOMPARE(entries.find(number + QChar(0x130)), std::nullopt); // its last byte is a digit
                }
            }
            const qint32 sn = random.bounded(1, 150);
            QStringList numbers;
            for (int i = random.bounded(5); i > 0; --i) {
                numbers.append(QString::number(random.bounded(700)).left(random.bounded(4)));
            }
            QVERIFY(entries.replace(sn, QList<QStringView>(numbers.cbegin(), numbers.cend())));
            rows[sn] = numbers;
        }
        lookup::NumberEntries unordered;
        unordered.append(u"1", 2);
        unordered.append(u"1", 1);
        QVERIFY(!unordered.replace(2, {}));
    }

    void aSavedRowIsTakenOverHoweverTheIndexStandsAndNoLookupSeesHalfOfIt()
    {
        Desk desk;
        const auto save = [&](const QString &sql, qint32 sn) {
            desk.runSql(desk.paths.CustomerFile, sql);
            return desk.index.updateCustomer(sn, support::customerOnFile(desk.paths.CustomerFile, sn));
        };
        const auto ownerOf = [&](QStringView number) {
            return desk.index.FindCustomerSnOfCaller(number).value_or(-1);
        };
        for (const auto &[sql, sn, taken, number, owner] :
             {std::tuple(u"update customer set WorkPhones='5' where SN=70000"_s, 70000, true, u"11"_s, -1),
              {u"update customer set WorkPhones='5,22' where SN=70000"_s, 70000, true, u"22"_s, 70000},
              {u"insert into customer(SN,Fax) values(9,'1 3900000000 22')"_s, 9, true, u"22"_s, 9},
              {u"delete from customer where SN=9"_s, 9, true, u"22"_s, 70000},
              {u"delete from customer where SN=70000"_s, 70000, true, u"22"_s, 70001},
              {u"update customer set ContactPersonMobile='', ContactPersonHomePhones=''"_s, 70001, false,
               u"22"_s, 70001}, // as after a rebuild that finds no number
              {u"delete from customer"_s, 70001, true, u"22"_s, -1},
              {u"insert into customer(SN,Fax) values(4,'44')"_s, 4, true, u""_s,
               -1}}) { // no blank entry left
            QCOMPARE(save(sql, sn), taken);
            QCOMPARE(ownerOf(number), owner);
        }
        desk.runSql(desk.paths.CustomerFile,
                    u"insert into customer (SN, WorkPhones) with recursive counted(i) as (select 5 union "
                    "all select i + 1 from counted where i < 25000) select i, i % 20001 from counted"_s);
        desk.index.LoadCustomerPhoneNumberSnArray();
        QVERIFY(save(u"update customer set Fax='446' where SN=4"_s, 4)); // which was read already
        QVERIFY(desk.index.isLoading());
        QCOMPARE(ownerOf(u"446"), 4); // at once, and again when the rest has been read
        while (desk.index.isLoading()) {
            QVERIFY(desk.index.continueLoading());
        }
        QCOMPARE(ownerOf(u"446"), 4);
        QCOMPARE(ownerOf(u"7"), 7); // and row 20008
    }

    void numbersLeadToTheFirstRowThatHoldsThemAndAFailedLoadKeepsTheOldIndex()
    {
        Desk desk;
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"95331234567"), 3);
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"13900000000"), 3);
        QCOMPARE(desk.index.GetSnByPhoneNumber(u""), 8); // the word, which holds no digit
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"11"), std::nullopt);
        for (const QString &number : {u"11"_s, u"22"_s, u"33"_s, u"44"_s}) {
            QCOMPARE(desk.index.GetCustomerSnByPhoneNumber(number), 70000);
        }
        QCOMPARE(desk.index.FindCustomerSnOfCaller(u"13900000000"), 70001);
        QCOMPARE(desk.index.FindCustomerSnOfCaller(u"1-1"), std::nullopt);
        desk.runSql(desk.paths.PhoneBookFile, u"delete from phonebook"_s);
        desk.index.LoadPhoneNumberSNArray();
        QCOMPARE(desk.index.GetSnByPhoneNumber(u""), 0); // the blank entry of an empty table
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"95331234567"), std::nullopt);
        QCOMPARE(desk.logMessages(), QStringList());
        for (const QString &spoil : {u"alter table customer drop column Fax"_s, u"drop table customer"_s}) {
            desk.runSql(desk.paths.CustomerFile, spoil);
            desk.index.LoadCustomerPhoneNumberSnArray();
            QVERIFY(desk.logMessages().last().startsWith(u"!LoadCustomerPhoneNumberSnArray "_s));
            QCOMPARE(desk.index.FindCustomerSnOfCaller(u"33"), 70000);
        }
    }
};

QTEST_GUILESS_MAIN(tst_PhoneNumbers)
#include "tst_PhoneNumbers.moc"
