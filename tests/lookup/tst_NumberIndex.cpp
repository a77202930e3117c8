#include "lookup/NumberIndex.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const auto phoneBookTable = u"create table phonebook (SN counter, Telno text)"_s;
const auto customerTable = u"create table customer (SN counter, WorkPhones text, "
                           "ContactPersonMobile text, Fax text, ContactPersonHomePhones text)"_s;

} // namespace

class tst_NumberIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersLeadToTheFirstRowThatHoldsThem();
    void anEmptyTableGivesOneBlankEntry();
    void anIndexThatWasNeverLoadedIsLogged();
    void aFailedLoadKeepsTheOldIndex_data();
    void aFailedLoadKeepsTheOldIndex();
};

// The index on the numbers would put row 8 before row 3, were it read instead of the table.
void tst_NumberIndex::numbersLeadToTheFirstRowThatHoldsThem()
{
    support::TestDesk desk;
    desk.runSql(desk.paths.PhoneBookFile, {phoneBookTable, u"create index Telno on phonebook (Telno)"_s,
                                           u"insert into phonebook values (3, '9533-1234567, 13900000000')"_s,
                                           u"insert into phonebook values (8, '13900000000 word')"_s});
    desk.runSql(desk.paths.CustomerFile,
                {customerTable, u"insert into customer values (40000, '11', null, '33 22', '44')"_s,
                 u"insert into customer values (40001, null, '22', '', '13900000000')"_s});
    lookup::NumberIndex index(desk.paths, desk.log);
    index.LoadPhoneNumberSNArray();
    index.LoadCustomerPhoneNumberSnArray();

    QCOMPARE(index.GetSnByPhoneNumber(u"95331234567"), 3);
    QCOMPARE(index.GetSnByPhoneNumber(u"13900000000"), 3);
    QCOMPARE(index.GetSnByPhoneNumber(u""), 8); // the word, which holds no digit
    QCOMPARE(index.GetSnByPhoneNumber(u"11"), -1);
    for (const QString &number : {u"11"_s, u"22"_s, u"33"_s, u"44"_s}) {
        QCOMPARE(index.GetCustomerSnByPhoneNumber(number), 40000);
    }
    QCOMPARE(index.FindCustomerSnOfCaller(u"13900000000"), 40001);
    QCOMPARE(index.FindCustomerSnOfCaller(u"1-1"), -1);
    QCOMPARE(desk.logMessages(), QStringList());
}

void tst_NumberIndex::anEmptyTableGivesOneBlankEntry()
{
    support::TestDesk desk;
    desk.runSql(desk.paths.PhoneBookFile, {phoneBookTable});
    lookup::NumberIndex index(desk.paths, desk.log);
    index.LoadPhoneNumberSNArray();
    QCOMPARE(index.GetSnByPhoneNumber(u""), 0);
    QCOMPARE(index.GetSnByPhoneNumber(u"0"), -1);
    QCOMPARE(desk.logMessages(), QStringList());
}

void tst_NumberIndex::anIndexThatWasNeverLoadedIsLogged()
{
    support::TestDesk desk;
    const lookup::NumberIndex index(desk.paths, desk.log);
    QCOMPARE(index.GetSnByPhoneNumber(u"1"), -1);
    QCOMPARE(index.GetCustomerSnByPhoneNumber(u"1"), -1);
    QCOMPARE(index.FindCustomerSnOfCaller(u"1"), -1);
    const QStringList messages = desk.logMessages();
    QCOMPARE(messages.size(), 2);
    QVERIFY(messages.at(0).startsWith(u"!GetSnByPhoneNumber "_s));
    QVERIFY(messages.at(1).startsWith(u"!GetCustomerSnByPhoneNumber "_s));
}

void tst_NumberIndex::aFailedLoadKeepsTheOldIndex_data()
{
    QTest::addColumn<QStringList>("spoil");
    QTest::newRow("rows without numbers") << QStringList{u"update customer set WorkPhones = ' ,'"_s};
    QTest::newRow("no such table") << QStringList{u"drop table customer"_s};
    QTest::newRow("a column is missing") << QStringList{u"alter table customer drop column Fax"_s};
    QTest::newRow("no such file") << QStringList();
}

void tst_NumberIndex::aFailedLoadKeepsTheOldIndex()
{
    QFETCH(const QStringList, spoil);
    support::TestDesk desk;
    desk.runSql(desk.paths.CustomerFile,
                {customerTable, u"insert into customer (WorkPhones) values ('55')"_s});
    lookup::NumberIndex index(desk.paths, desk.log);
    index.LoadCustomerPhoneNumberSnArray();
    if (spoil.isEmpty()) {
        QVERIFY(QFile::remove(desk.paths.CustomerFile));
    } else {
        desk.runSql(desk.paths.CustomerFile, spoil);
    }
    index.LoadCustomerPhoneNumberSnArray();
    QCOMPARE(index.FindCustomerSnOfCaller(u"55"), 1);
    QCOMPARE(desk.logMessages().size(), 1);
    QVERIFY(desk.logMessages().constFirst().startsWith(u"!LoadCustomerPhoneNumberSnArray "_s));
}

QTEST_GUILESS_MAIN(tst_NumberIndex)
#include "tst_NumberIndex.moc"
