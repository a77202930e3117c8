#include "lookup/PhoneNumbers.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_PhoneNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextIsCutAtItsSeparators_data();
    void aTextIsCutAtItsSeparators();
    void whatDoesNotFitGivesNothingAndIsLogged();
};

void tst_PhoneNumbers::aTextIsCutAtItsSeparators_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("pieces");
    QTest::addColumn<QString>("separator"); // null: the built-in ones

    QTest::newRow("empty") << u""_s << QStringList() << QString();
    QTest::newRow("hyphen stays") << u"0533-1234567"_s << QStringList{u"0533-1234567"_s} << QString();
    QTest::newRow("blank and comma") << u"0533 1234567,13900000000"_s
                                     << QStringList{u"0533"_s, u"1234567"_s, u"13900000000"_s} << QString();
    QTest::newRow("stop colon bar") << u"12.34:5|6"_s << QStringList{u"12"_s, u"34"_s, u"5"_s, u"6"_s}
                                    << QString();
    QTest::newRow("lines") << u"1\r\n2\r3\n4"_s << QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s} << QString();
    QTest::newRow("runs and both ends") << u",,,123,,,"_s << QStringList{u"123"_s} << QString();
    QTest::newRow("tab and semicolon stay") << u"123;4\t5"_s << QStringList{u"123;4\t5"_s} << QString();
    QTest::newRow("wide dash and brackets stay")
        << u"（0533）12－34"_s << QStringList{u"（0533）12－34"_s} << QString();
    QTest::newRow("wide comma, blank and digits")
        << u"1，2　3４5"_s << QStringList{u"1"_s, u"2"_s, u"3"_s, u"5"_s} << QString();
    QTest::newRow("words around a number") << u"电话123号😀4"_s << QStringList{u"123"_s, u"4"_s} << QString();
    QTest::newRow("code 255 stays, 256 not")
        << u"1\u00FF2\u01003"_s << QStringList{u"1\u00FF2"_s, u"3"_s} << QString();
    QTest::newRow("given one") << u"123;4 5,6"_s << QStringList{u"123"_s, u"4 5,6"_s} << u";"_s;
    QTest::newRow("given letter, by case") << u"1a2A3"_s << QStringList{u"1"_s, u"2A3"_s} << u"a"_s;
    QTest::newRow("given two characters") << u"1ab2"_s << QStringList() << u"ab"_s;
    QTest::newRow("101 pieces") << u"7 "_s.repeated(101) << QStringList(101, u"7"_s) << QString();
    QTest::newRow("32767 characters")
        << QString(32767, u'7') << QStringList{QString(32767, u'7')} << QString();
}

void tst_PhoneNumbers::aTextIsCutAtItsSeparators()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, pieces);
    QFETCH(const QString, separator);
    support::TestDesk desk;
    const auto given = separator.isNull() ? std::nullopt : std::optional(separator);
    const lookup::PhoneNumberList list = lookup::SplitPhoneNumber(desk.log, text, given);
    QCOMPARE(QStringList(list.Items.begin(), list.Items.begin() + list.Count), pieces);
    QVERIFY(std::all_of(list.Items.begin() + list.Count, list.Items.end(),
                        [](const QString &item) { return item.isEmpty(); }));
    QCOMPARE(desk.logMessages(), QStringList());
}

void tst_PhoneNumbers::whatDoesNotFitGivesNothingAndIsLogged()
{
    support::TestDesk desk;
    for (const QString &text : {u"7 "_s.repeated(102), u"7 "_s.repeated(101) + u'7', QString(32768, u'7')}) {
        const lookup::PhoneNumberList list = lookup::SplitPhoneNumber(desk.log, text);
        QCOMPARE(list.Count, 0);
        QVERIFY(list.Items.front().isEmpty());
        QVERIFY(desk.logMessages().last().startsWith(u"!SplitPhoneNumber "_s));
    }
    QCOMPARE(desk.logMessages().size(), 3);
}

QTEST_GUILESS_MAIN(tst_PhoneNumbers)
#include "tst_PhoneNumbers.moc"
