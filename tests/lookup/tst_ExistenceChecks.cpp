#include "lookup/ExistenceChecks.h"
#include "support/TestDesk.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

class WarningText : public core::TextLookup
{
public:
    QString Lms(const QString &key) const override
    {
        return key == u"ThePhoneNumberExists"_s ? u"already on file"_s : QString();
    }
};

} // namespace

class tst_ExistenceChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aKnownNumberIsToldAndItsOwnerShown();
    void unknownNumbersAreNo();
    void aCustomerIsFoundByPartOfTheName_data();
    void aCustomerIsFoundByPartOfTheName();

private:
    struct Desk : support::TestDesk
    {
        lookup::NumberIndex index{paths, log};
        WarningText texts;
        support::FakePrompts prompts;
        support::FakeNavigator navigator;
        lookup::ExistenceChecks checks{{paths, log, index, texts, prompts, navigator}};
    };
    std::unique_ptr<Desk> m_desk;
};

void tst_ExistenceChecks::init()
{
    m_desk = std::make_unique<Desk>();
    m_desk->runSql(m_desk->paths.PhoneBookFile,
                   {u"create table phonebook (SN counter, Telno text)"_s,
                    u"insert into phonebook values (5, '0533-1234567'), (6, '222')"_s});
    m_desk->runSql(m_desk->paths.CustomerFile,
                   {u"create table customer (SN counter, CustomerName text, WorkPhones text, "
                    "ContactPersonMobile text, Fax text, ContactPersonHomePhones text)"_s,
                    u"insert into customer (SN, CustomerName, Fax) values (70000, 'Harbour Ltd', '333')"_s});
    m_desk->index.LoadPhoneNumberSNArray();
    m_desk->index.LoadCustomerPhoneNumberSnArray();
}

void tst_ExistenceChecks::aKnownNumberIsToldAndItsOwnerShown()
{
    m_desk->prompts.expect();
    QCOMPARE(m_desk->checks.IfNumbersExistInSimplePhoneBook(u"999, 05331-234567 222"_s), u""_s);
    m_desk->prompts.expect();
    QCOMPARE(m_desk->checks.IfThePhoneNumberExistInCustomer(u"(333)"_s), u""_s);
    QCOMPARE(m_desk->prompts.asked, QStringList(2, u"already on file"_s));
    const QStringList shown{u"showPhoneBook Select * from phonebook where sn = 5"_s,
                            u"showCustomerList Select * from customer where sn = 70000"_s};
    QCOMPARE(m_desk->navigator.shown, shown);
}

void tst_ExistenceChecks::unknownNumbersAreNo()
{
    QCOMPARE(m_desk->checks.IfNumbersExistInSimplePhoneBook(u"333, 22"_s), u"NO"_s);
    QCOMPARE(m_desk->checks.IfThePhoneNumberExistInCustomer(u"222"_s), u"NO"_s);
    QCOMPARE(m_desk->checks.IfNumbersExistInSimplePhoneBook(u""_s), u""_s);
    QCOMPARE(m_desk->checks.IfThePhoneNumberExistInCustomer(u""_s), u""_s);
    QCOMPARE(m_desk->navigator.shown, QStringList());
}

void tst_ExistenceChecks::aCustomerIsFoundByPartOfTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("logged");
    QTest::newRow("part, by any case")
        << u"BOUR"_s << u"Select * from customer where  customername like '*BOUR*'"_s << false;
    QTest::newRow("unknown") << u"Harbor"_s << u"NO"_s << false;
    QTest::newRow("percent is no wildcard") << u"H%r"_s << u"NO"_s << false;
    QTest::newRow("empty") << u""_s << u""_s << false;
    QTest::newRow("an apostrophe breaks the query") << u"O'Brien"_s << u""_s << true;
}

void tst_ExistenceChecks::aCustomerIsFoundByPartOfTheName()
{
    QFETCH(const QString, name);
    QTEST(m_desk->checks.IfTheCustumerExist(name), "answer");
    QTEST(m_desk->logMessages().join(u'\n').startsWith(u"!IfTheCustumerExist "_s), "logged");
}

QTEST_GUILESS_MAIN(tst_ExistenceChecks)
#include "tst_ExistenceChecks.moc"
