#include "store/TextOrder.h"
#include "support/Table.h"

#include <QRandomGenerator>

class tst_TextOrder : public QObject
{
    Q_OBJECT

    static int signOfOrder(const QByteArray &left, const QByteArray &right)
    {
        const int order = store::compareJet(left, right);
        return (order > 0) - (order < 0);
    }

private Q_SLOTS:
    void namesStandInDictionaryOrder()
    {
        const QStringList ranks =
            QString(u"| |  |0755|A b|ab|Æ|Ea|éa|eb|Isparta=ISPARTA|ısparta|Lodz|Łódź=łÓDŹ|Lodzz|"
                    "resume x|résumé x=re\u0301sume\u0301 x|resumes|Zoë=ZOË　 =Ｚｏë|ΟΔΟΣ=οδος|Дом|"
                    "محمد|ｶﾞ=ガ|张伟|\uA640\uFB21=\uA641\uFB21|한국"_s)
                .split(u'|');
        for (qsizetype i = 0; i < ranks.size(); ++i) {
            for (qsizetype j = 0; j < ranks.size(); ++j) {
                for (const QString &left : ranks.at(i).split(u'=')) {
                    for (const QString &right : ranks.at(j).split(u'=')) {
                        QVERIFY2(signOfOrder(left.toUtf8(), right.toUtf8()) == (i > j) - (i < j),
                                 qPrintable(left + u" and "_s + right));
                    }
                }
            }
        }
    }

    void itIsAnOrderOnAnyBytes()
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
            QCOMPARE(signOfOrder(a, b), -signOfOrder(b, a));
            QVERIFY(signOfOrder(a, b) > 0 || signOfOrder(b, c) > 0 || signOfOrder(a, c) <= 0);
        }
    }
};

QTEST_APPLESS_MAIN(tst_TextOrder)
#include "tst_TextOrder.moc"
