#include "lookup/ExistenceChecks.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_ExistenceChecks : public QObject
{
    Q_OBJECT

    support::TestDesk m_desk;
    lookup::NumberIndex m_index{m_desk.paths, m_desk.log};
    support::KeyTexts m_texts;
    support::FakePrompts m_prompts;
    support::FakeNavigator m_navigator;
    lookup::ExistenceChecks m_checks{{m_desk.paths, m_desk.log, m_index, m_texts, m_prompts, m_navigator}};

private Q_SLOTS:
    void initTestCase()
    {
        m_desk.runSql(m_desk.paths.PhoneBookFile,
                      u"create table phonebook (SN counter, Telno text);"
                      "insert into phonebook values (5, '0533-1234567'), (6, '222')"_s);
        m_desk.runSql(m_desk.paths.CustomerFile,
                      u"create table customer (SN counter, CustomerName text, WorkPhones text, "
                      "ContactPersonMobile text, Fax text, ContactPersonHomePhones text);"
                      "insert into customer (SN, CustomerName, Fax) values (70000, 'Harbour Ltd', '333')"_s);
        m_index.LoadPhoneNumberSNArray();
        m_index.LoadCustomerPhoneNumberSnArray();
    }

    void aKnownNumberIsToldAndItsOwnerShown()
    {
        QCOMPARE(m_checks.IfNumbersExistInSimplePhoneBook(u"333, 22"_s), u"NO"_s);
        QCOMPARE(m_checks.IfThePhoneNumberExistInCustomer(u"222"_s), u"NO"_s);
        QCOMPARE(m_checks.IfNumbersExistInSimplePhoneBook(u""_s), u""_s);
        QCOMPARE(m_navigator.shown, QStringList());
        m_prompts.expect();
        QCOMPARE(m_checks.IfNumbersExistInSimplePhoneBook(u"999, 05331-234567 222"_s), u""_s);
        m_prompts.expect();
        QCOMPARE(m_checks.IfThePhoneNumberExistInCustomer(u"(333)"_s), u""_s);
        QCOMPARE(m_prompts.asked, QStringList(2, u"[ThePhoneNumberExists]"_s));
        QCOMPARE(m_navigator.shown,
                 QStringList({u"showPhoneBook Select * from phonebook where sn = 5"_s,
                              u"showCustomerList Select * from customer where sn = 70000"_s}));
    }

    void aCustomerIsFoundByPartOfTheName()
    {
        QCOMPARE(m_checks.IfTheCustumerExist(u"BOUR"_s),
                 u"Select * from customer where  customername like '*BOUR*'"_s);
        for (const QString &unknown : {u"Harbor"_s, u"H%r"_s}) {
            QCOMPARE(m_checks.IfTheCustumerExist(unknown), u"NO"_s);
        }
        QCOMPARE(m_checks.IfTheCustumerExist(u""_s), u""_s);
        QCOMPARE(m_desk.logMessages(), QStringList());
        QCOMPARE(m_checks.IfTheCustumerExist(u"O'Brien"_s), u""_s); // the apostrophe breaks the query
        QVERIFY(m_desk.logMessages().join(u'|').startsWith(u"!IfTheCustumerExist "_s));
    }
};

QTEST_GUILESS_MAIN(tst_ExistenceChecks)
#include "tst_ExistenceChecks.moc"
