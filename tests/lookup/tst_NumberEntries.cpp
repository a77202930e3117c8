#include "lookup/NumberEntries.h"

#include <QRandomGenerator>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

class tst_NumberEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNumberIsFoundOnlyWhole_data();
    void aNumberIsFoundOnlyWhole();
    void theFirstOfEqualNumbersIsFound();
};

void tst_NumberEntries::aNumberIsFoundOnlyWhole_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<int>("sn");
    QTest::newRow("whole") << u"05331234567"_s << 40000;
    QTest::newRow("long") << u"1"_s.repeated(40) << 8;
    QTest::newRow("without the area code") << u"1234567"_s << -1;
    QTest::newRow("leading zero more") << u"005331234567"_s << -1;
    QTest::newRow("hyphen") << u"0533-1234567"_s << -1;
    QTest::newRow("blank") << u"05331234567 "_s << -1;
    QTest::newRow("low byte of a digit") << u"0533123456\u0137"_s << -1;
    QTest::newRow("long, one more") << u"1"_s.repeated(41) << -1;
    QTest::newRow("empty") << u""_s << -1;
}

void tst_NumberEntries::aNumberIsFoundOnlyWhole()
{
    QFETCH(const QString, number);
    lookup::NumberEntries entries;
    entries.append(u"（0533）1234-567", 40000);
    entries.append(QString(u"1"_s.repeated(40)), 8);
    entries.finish();
    QTEST(entries.find(number), "sn");
}

// Few digits make many duplicates and many numbers that differ in one place only.
void tst_NumberEntries::theFirstOfEqualNumbersIsFound()
{
    QRandomGenerator random(4711);
    lookup::NumberEntries entries;
    std::map<QString, qint32> first;
    for (qint32 sn = 1; sn <= 20000; ++sn) {
        const QString digits =
            QString::number(random.bounded(10000)).rightJustified(random.bounded(4, 24), u'0');
        entries.append(digits, sn);
        first.try_emplace(digits, sn);
    }
    entries.finish();
    for (const auto &[number, sn] : first) {
        QCOMPARE(entries.find(number), sn);
        QCOMPARE(entries.find(number + u'x'), -1);
    }
}

QTEST_GUILESS_MAIN(tst_NumberEntries)
#include "tst_NumberEntries.moc"
