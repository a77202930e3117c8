#include "core/CodePage.h"
#include "reception/Columns.h"

#include <QTest>

using namespace Qt::StringLiterals;
using core::CodePage;

/// What the bytes of the network mean, and that none of them moves a later column.
class tst_CodePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textSurvivesTheRoundThroughItsCodePage_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("GBK") << 936 << u"销售·é€"_s << QByteArray("\xCF\xFA\xCA\xDB\xA1\xA4\xA8\xA6\x80");
        QTest::newRow("Big5") << 950 << u"銷售"_s << QByteArray("\xBE\x50\xB0\xE2");
        QTest::newRow("Shift-JIS") << 932 << u"営業ｴｲ"_s << QByteArray("\x89\x63\x8B\xC6\xB4\xB2");
        QTest::newRow("Korean") << 949 << u"영업"_s << QByteArray("\xBF\xB5\xBE\xF7");
        QTest::newRow("Arabic") << 1256 << u"سلام"_s << QByteArray("\xD3\xE1\xC7\xE3");
        QTest::newRow("Hebrew") << 1255 << u"שלום"_s << QByteArray("\xF9\xEC\xE5\xED");
        QTest::newRow("Turkish") << 1254 << u"İş"_s << QByteArray("\xDD\xFE");
        QTest::newRow("Polish") << 1250 << u"Łódź"_s << QByteArray("\xA3\xF3\x64\x9F");
        QTest::newRow("Vietnamese") << 1258 << u"đê"_s << QByteArray("\xF0\xEA");
        QTest::newRow("Western") << 1252 << u"Zoë €"_s << QByteArray("\x5A\x6F\xEB\x20\x80");
        QTest::newRow("unknown acts as Western") << 4711 << u"Zoë"_s << QByteArray("\x5A\x6F\xEB");
    }
    void textSurvivesTheRoundThroughItsCodePage()
    {
        QFETCH(int, number);
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        const CodePage codePage(number);
        QCOMPARE(codePage.decode(bytes), text);
        QCOMPARE(codePage.encode(text), bytes);
        QCOMPARE(reception::ByteColumns(text, codePage.columnRule(bytes)), bytes.size());
    }

    void whatACodePageLacksBecomesAQuestionMark()
    {
        for (const int number : {932, 1252}) {
            QCOMPARE(CodePage(number).encode(u"a\u05E9b\U0001F600c"), QByteArray("a?b?c"));
        }
    }

    void utf8IsAcceptedUnderAnyCodePage()
    {
        for (const int number : {936, 1252, 1256}) {
            const QByteArray bytes = "<CRMV1 \xE5\xBC\xA0 \xC3\xA9";
            const QString text = CodePage(number).decode(bytes);
            QCOMPARE(text, u"<CRMV1 张 é"_s);
            QCOMPARE(reception::ByteColumns(text, CodePage(number).columnRule(bytes)), 11);
        }
    }

    // Every pair of bytes, assigned or not, before a NUL, a byte that is often no character, and a digit.
    void everyByteKeepsItsColumn()
    {
        for (const int number : {932, 936, 949, 950, 1255}) {
            const CodePage codePage(number);
            for (int pair = 0x8000; pair <= 0xFFFF; ++pair) {
                const char array[] = {char(pair >> 8), char(pair & 0xFF), '\0', '\xFF', '7'};
                const QByteArrayView bytes(array, sizeof(array));
                const QString text = codePage.decode(bytes);
                QVERIFY2(text.endsWith(u'7'), qPrintable(QString::number(pair, 16)));
                QCOMPARE(reception::ByteColumns(text, codePage.columnRule(bytes)), bytes.size());
            }
        }
    }

    void halfACharacterCostsNothingButItself_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("before a digit") << 936 << QByteArray("\xD5\xC5\xC8 13") << u"张? 13"_s;
        QTest::newRow("at the end") << 950 << QByteArray("A\xBE") << u"A?"_s;
        QTest::newRow("unassigned pair") << 950 << QByteArray("\x81\x81\xBE\x50") << u"??銷"_s;
        QTest::newRow("unassigned byte") << 932 << QByteArray("\x80 \x89\x63") << u"? 営"_s;
        QTest::newRow("invalid UTF-8") << 1252 << QByteArray("\xC3\xA9\xC3") << u"Ã©Ã"_s;
        QTest::newRow("NUL beside it") << 1255 << QByteArray("\0\xCA\xE0", 3) << u"\0?א"_s;
    }
    void halfACharacterCostsNothingButItself()
    {
        QFETCH(int, number);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(CodePage(number).decode(bytes), text);
    }
};

QTEST_GUILESS_MAIN(tst_CodePage)
#include "tst_CodePage.moc"
