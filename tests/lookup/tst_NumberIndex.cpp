#include "lookup/NumberEntries.h"
#include "lookup/NumberIndex.h"
#include "support/TestDesk.h"

#include <QRandomGenerator>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

namespace {

const auto phoneBookTable = u"create table phonebook (SN counter, Telno text);"_s;
const auto customerTable = u"create table customer (SN counter, WorkPhones text, "
                           "ContactPersonMobile text, Fax text, ContactPersonHomePhones text);"_s;

struct Desk : support::TestDesk
{
    lookup::NumberIndex index{paths, log};
};

} // namespace

class tst_NumberIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Few digits make many duplicates and many numbers that differ in one place only.
    void theFirstOfEqualNumbersIsFoundAndNoneThatDiffers()
    {
        QRandomGenerator random(4711);
        lookup::NumberEntries entries;
        std::map<QString, qint32> first;
        for (qint32 sn = 1; sn <= 20000; ++sn) {
            const QString number =
                QString::number(random.bounded(10000)).rightJustified(random.bounded(4, 42), u'0');
            entries.append(u'(' + number.left(3) + u")-"_s + number.mid(3), sn);
            first.try_emplace(number, sn);
        }
        entries.finish();
        for (const auto &[number, sn] : first) {
            QCOMPARE(entries.find(number), sn);
            for (const QString &other :
                 {QString(number + u' '), QString(u'1' + number), number.chopped(1) + u'-',
                  number.chopped(1) + QChar(number.back().unicode() + 0x100)}) {
                QCOMPARE(entries.find(other), -1);
            }
        }
    }

    // The index on the numbers would put row 8 before row 3, were it read instead of the table.
    void numbersLeadToTheFirstRowThatHoldsThem()
    {
        Desk desk;
        desk.runSql(desk.paths.PhoneBookFile,
                    phoneBookTable + u"create index Telno on phonebook (Telno);"
                                     "insert into phonebook values (3, '9533-1234567, 13900000000'),"
                                     " (8, '13900000000 word')"_s);
        desk.runSql(desk.paths.CustomerFile,
                    customerTable + u"insert into customer values (40000, '11', null, '33 22', '44'),"
                                    " (40001, null, '22', '', '13900000000')"_s);
        desk.index.LoadPhoneNumberSNArray();
        desk.index.LoadCustomerPhoneNumberSnArray();
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"95331234567"), 3);
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"13900000000"), 3);
        QCOMPARE(desk.index.GetSnByPhoneNumber(u""), 8); // the word, which holds no digit
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"11"), -1);
        for (const QString &number : {u"11"_s, u"22"_s, u"33"_s, u"44"_s}) {
            QCOMPARE(desk.index.GetCustomerSnByPhoneNumber(number), 40000);
        }
        QCOMPARE(desk.index.FindCustomerSnOfCaller(u"13900000000"), 40001);
        QCOMPARE(desk.index.FindCustomerSnOfCaller(u"1-1"), -1);
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void anEmptyTableGivesOneBlankEntryAndNoTableIsLogged()
    {
        Desk desk;
        desk.runSql(desk.paths.PhoneBookFile, phoneBookTable);
        desk.index.LoadPhoneNumberSNArray();
        QCOMPARE(desk.index.GetSnByPhoneNumber(u""), 0);
        QCOMPARE(desk.index.GetSnByPhoneNumber(u"0"), -1);
        QCOMPARE(desk.logMessages(), QStringList());
        QCOMPARE(desk.index.FindCustomerSnOfCaller(u"1"), -1);
        QCOMPARE(desk.logMessages(), QStringList());
        QCOMPARE(desk.index.GetCustomerSnByPhoneNumber(u"1"), -1);
        QVERIFY(desk.logMessages().join(u'|').startsWith(u"!GetCustomerSnByPhoneNumber "_s));
    }

    void aFailedLoadKeepsTheOldIndex()
    {
        for (const QString &spoil : {u"update customer set WorkPhones = ' ,'"_s, u"drop table customer"_s,
                                     u"alter table customer drop column Fax"_s}) {
            Desk desk;
            desk.runSql(desk.paths.CustomerFile,
                        customerTable + u"insert into customer (WorkPhones) values ('55')"_s);
            desk.index.LoadCustomerPhoneNumberSnArray();
            desk.runSql(desk.paths.CustomerFile, spoil);
            desk.index.LoadCustomerPhoneNumberSnArray();
            QCOMPARE(desk.index.FindCustomerSnOfCaller(u"55"), 1);
            QVERIFY(desk.logMessages().join(u'|').startsWith(u"!LoadCustomerPhoneNumberSnArray "_s));
        }
    }
};

QTEST_GUILESS_MAIN(tst_NumberIndex)
#include "tst_NumberIndex.moc"
