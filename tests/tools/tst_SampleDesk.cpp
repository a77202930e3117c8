#include "DeskSources.h"
#include "Scene.h"

#include "core/TextUtilities.h"
#include "lookup/PhoneNumbers.h"
#include "support/TestDesk.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

/// The sample desk hangs together: its numbers can be found, and the scene speaks of its customers.
class tst_SampleDesk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyNumberLeadsToOneCustomer();
    void flagsAndTextsFitTheProgram();
    void theSceneCallsTheCustomersThatItNames();

private:
    QStringList numbersOf(const QStringList &customer);

    support::TestDesk m_desk;
    const mkdesk::TsvTable m_customers = mkdesk::DeskSources().table(u"sample/customers.tsv"_s);
};

QStringList tst_SampleDesk::numbersOf(const QStringList &customer)
{
    QStringList numbers;
    for (const QString &column :
         {u"WorkPhones"_s, u"ContactPersonMobile"_s, u"Fax"_s, u"ContactPersonHomePhones"_s}) {
        const auto list = lookup::SplitPhoneNumber(m_desk.log, m_customers.field(customer, column));
        for (int i = 0; i < list.Count; ++i) {
            numbers.append(core::DigitsOnly(list.Items[size_t(i)]));
        }
    }
    return numbers;
}

void tst_SampleDesk::everyNumberLeadsToOneCustomer()
{
    QSet<QString> seen;
    for (const QStringList &customer : m_customers.rows) {
        for (const QString &number : numbersOf(customer)) {
            QVERIFY2(number.size() >= 7 && !seen.contains(number),
                     qPrintable(customer.first() + u' ' + number));
            seen.insert(number);
        }
    }
    QVERIFY(seen.size() > 2 * m_customers.rows.size());
}

void tst_SampleDesk::flagsAndTextsFitTheProgram()
{
    for (const QStringList &customer : m_customers.rows) {
        const bool blackListed = m_customers.field(customer, u"ifinblacklist"_s) == u"1"_s;
        QVERIFY(core::MyIn(m_customers.field(customer, u"IfVIP"_s), u"Y"_s, u"N"_s, u"G"_s));
        QVERIFY(core::MyIn(m_customers.field(customer, u"T3"_s), u"0"_s, u"1"_s));
        QCOMPARE(!m_customers.field(customer, u"BlackListReason"_s).isEmpty(), blackListed);
        for (const QString &text : customer) {
            QVERIFY2(text.size() <= 255 && text == text.trimmed(), qPrintable(text));
        }
    }
}

void tst_SampleDesk::theSceneCallsTheCustomersThatItNames()
{
    QSet<QString> kinds;
    for (const sim::SceneStep &step :
         sim::parseScene(QString::fromUtf8(m_desk.fileBytes(QStringLiteral(SCENE))), {})) {
        const sim::CallFields &call = step.datagram.fields;
        if (call.match.isEmpty()) {
            continue;
        }
        const QStringList &customer = m_customers.rows.at(call.match.toInt() - 1);
        QCOMPARE(call.name, m_customers.field(customer, u"CustomerName"_s));
        QVERIFY2(numbersOf(customer).contains(call.number), qPrintable(call.number));
        QCOMPARE(call.vip == u"Y"_s, m_customers.field(customer, u"IfVIP"_s) == u"Y"_s);
        QCOMPARE(call.blackList == u"Y"_s, m_customers.field(customer, u"ifinblacklist"_s) == u"1"_s);
        kinds.insert(call.vip + u'/' + call.blackList + u'/' + m_customers.field(customer, u"T3"_s));
    }
    QCOMPARE(kinds.size(),
             4); // an ordinary customer, a VIP, a black-listed one, and one that does not pop up
}

QTEST_GUILESS_MAIN(tst_SampleDesk)
#include "tst_SampleDesk.moc"
