#include "store/TextOrder.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_TextOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theseAreEqual_data();
    void theseAreEqual();
    void namesStandInDictionaryOrder();
    void itIsAnOrderOnAnyBytes();
};

namespace {

int order(const QString &left, const QString &right)
{
    return store::compareJet(left.toUtf8(), right.toUtf8());
}

int sign(int value)
{
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

} // namespace

void tst_TextOrder::theseAreEqual_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::newRow("case") << u"Müller ŁÓDŹ"_s << u"mÜLLER łódź"_s;
    QTest::newRow("blanks behind") << u"Acme"_s << u"ACME  　"_s;
    QTest::newRow("width") << u"ＡＢＣ１２ ｶﾞ"_s << u"abc12 ガ"_s;
    QTest::newRow("composed and not") << u"caf\u00E9"_s << u"cafe\u0301"_s;
    QTest::newRow("letters behind the ideographs") << u"\uA640\uFB21"_s << u"\uA641\uFB21"_s;
    QTest::newRow("greek sigma") << u"ΟΔΟΣ"_s << u"οδος"_s;
}

void tst_TextOrder::theseAreEqual()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    QCOMPARE(order(left, right), 0);
    QCOMPARE(order(right, left), 0);
}

void tst_TextOrder::namesStandInDictionaryOrder()
{
    const QStringList sorted{u""_s,     u" "_s,    u"  "_s,    u"0755"_s,     u"A b"_s,      u"ab"_s,
                             u"Æ"_s,    u"Ea"_s,   u"éa"_s,    u"eb"_s,       u"Isparta"_s,  u"ısparta"_s,
                             u"Lodz"_s, u"Łódź"_s, u"Lodzz"_s, u"resume x"_s, u"résumé x"_s, u"resumes"_s,
                             u"Zoë"_s,  u"Дом"_s,  u"محمد"_s,  u"张伟"_s,     u"한국"_s};
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        for (qsizetype j = 0; j < sorted.size(); ++j) {
            const auto message = u"\"%1\" and \"%2\""_s.arg(sorted.at(i), sorted.at(j));
            QVERIFY2(sign(order(sorted.at(i), sorted.at(j))) == sign(int(i - j)), qPrintable(message));
        }
    }
}

void tst_TextOrder::itIsAnOrderOnAnyBytes()
{
    QRandomGenerator random(5);
    static constexpr char pieces[][5] = {
        "a", "A", " ", "b", "\xC3\xA9", "\xCC\x81", "\xFF", "\xE3\x80\x80", "\xE5\xBC\xA0", "\xC5"};
    const auto text = [&] {
        QByteArray bytes;
        for (int i = random.bounded(5); i > 0; --i) {
            bytes += pieces[random.bounded(int(std::size(pieces)))];
        }
        return bytes;
    };
    for (int round = 0; round < 50000; ++round) {
        const QByteArray a = text();
        const QByteArray b = text();
        const QByteArray c = text();
        QCOMPARE(sign(store::compareJet(a, b)), -sign(store::compareJet(b, a)));
        if (store::compareJet(a, b) <= 0 && store::compareJet(b, c) <= 0) {
            QVERIFY2(store::compareJet(a, c) <= 0, (a + '/' + b + '/' + c).toHex().constData());
        }
    }
}

QTEST_APPLESS_MAIN(tst_TextOrder)
#include "tst_TextOrder.moc"
