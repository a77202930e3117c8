#include "DeskSources.h"
#include "Scene.h"

#include "core/TextUtilities.h"
#include "lookup/PhoneNumbers.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The sample desk hangs together: its numbers can be found, and the scene speaks of its customers.
class tst_SampleDesk : public QObject
{
    Q_OBJECT

    support::TestDesk m_desk;
    const mkdesk::TsvTable m_customers = mkdesk::DeskSources().table(u"sample/customers.tsv"_s);

    QStringList numbersOf(const QStringList &customer)
    {
        QStringList numbers;
        for (const QString &column :
             {u"WorkPhones"_s, u"ContactPersonMobile"_s, u"Fax"_s, u"ContactPersonHomePhones"_s}) {
            for (const QStringView piece :
                 lookup::phoneNumberPieces(m_desk.log, m_customers.field(customer, column))) {
                numbers.append(core::DigitsOnly(piece));
            }
        }
        return numbers;
    }

private Q_SLOTS:
    void everyNumberLeadsToOneCustomerWhoseTextsFit()
    {
        QSet<QString> seen;
        for (const QStringList &customer : m_customers.rows) {
            for (const QString &number : numbersOf(customer)) {
                QVERIFY2(number.size() >= 7 && !seen.contains(number), qPrintable(number));
                seen.insert(number);
            }
            for (const QString &text : customer) {
                QVERIFY2(text.size() <= 255 && text == text.trimmed(), qPrintable(text));
            }
        }
        QVERIFY(seen.size() > 2 * m_customers.rows.size());
    }

    void theSceneCallsTheCustomersThatItNames()
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
        QCOMPARE(kinds.size(), 4); // an ordinary one, a VIP, a black-listed one, one that does not pop up
    }
};

QTEST_GUILESS_MAIN(tst_SampleDesk)
#include "tst_SampleDesk.moc"
