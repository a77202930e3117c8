#include "core/CodePage.h"
#include "reception/Columns.h"
#include "support/Test.h"

using core::CodePage;

/// What the bytes of the network mean, and that none of them moves a later column.
class tst_CodePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesAreReadAsTheirCodePageSays()
    {
        for (const auto &[number, bytes, text] :
             {std::tuple(936, QByteArray("\xCF\xFA\xCA\xDB\xA1\xA4\xA8\xA6\x80"), u"销售·é€"_s), // GBK
              {950, "\xBE\x50\xB0\xE2", u"銷售"_s},                                              // Big5
              {932, "\x89\x63\x8B\xC6\xB4\xB2", u"営業ｴｲ"_s},                                    // Shift-JIS
              {949, "\xBF\xB5\xBE\xF7", u"영업"_s},                                              // Korean
              {1256, "\xD3\xE1\xC7\xE3", u"سلام"_s},                                             // Arabic
              {1255, "\xF9\xEC\xE5\xED", u"שלום"_s},                                             // Hebrew
              {1254, "\xDD\xFE", u"İş"_s},                                                       // Turkish
              {1250, "\xA3\xF3\x64\x9F", u"Łódź"_s},                                             // Polish
              {1258, "\xF0\xEA", u"đê"_s},                                                       // Vietnamese
              {4711, "\x5A\x6F\xEB\x20\x80", u"Zoë €"_s},        // unknown acts as Western
              {936, "\xC2\xA5\xC4\xB0", u"楼陌"_s},              // could be UTF-8, as many are
              {936, "\xD5\xC5\xC8 13", u"张? 13"_s},             // half a character before a digit
              {950, "A\xBE", u"A?"_s},                           // half a character at the end
              {950, "\x81\x81\xBE\x50", u"??銷"_s},              // unassigned pair
              {932, "\x80 \x89\x63", u"? 営"_s},                 // unassigned byte
              {1252, "\xC3\xA9\xC3", u"Ã©Ã"_s},                  // invalid UTF-8
              {1255, QByteArray("\0\xCA\xE0", 3), u"\0?א"_s}}) { // NUL beside an unassigned byte
            const CodePage codePage(number);
            const core::DatagramText read = codePage.decode(bytes);
            QCOMPARE(read.text, text);
            QCOMPARE(reception::ByteColumns(text, read.columns), bytes.size());
            QVERIFY(text.contains(u'?') || codePage.encode(text) == bytes); // what was whole is written back
        }
    }

    void anyCodePageTakesUtf8AndMarksWhatItLacks()
    {
        for (const int number : {932, 1252, 1256}) {
            const CodePage codePage(number);
            QCOMPARE(codePage.decode("<CRMV1 \xE5\xBC\xA0").text, u"<CRMV1 张"_s);
            QCOMPARE(codePage.encode(u"a\u05E9b\U0001F600c"), QByteArray("a?b?c"));
        }
        for (const int number : {936, 1252}) { // of two bytes too, as the Chinese page cannot read the last
            const core::DatagramText read = CodePage(number).decode("\xE5\xBC\xA0\xC3\xA9 ");
            QCOMPARE(read.text, u"张é "_s);
            QCOMPARE(reception::ByteColumns(read.text, read.columns), 4);
        }
    }

    // One of them by itself, and every two of them: none may pass for UTF-8.
    void theCommonCharactersOfADoubleByteCodePageAreNeverTakenForUtf8()
    {
        for (const auto &[number, firstPair, firstTrail, count, last] :
             {std::tuple(936, 0xB0A1, 0xA1, 3755, u"座"_s),
              {950, 0xA440, 0x40, 5401, u"籲"_s},
              {949, 0xB0A1, 0xA1, 2350, u"힝"_s}}) {
            const CodePage codePage(number);
            QList<std::array<char, 2>> characters;
            for (int pair = firstPair; characters.size() < count; ++pair) {
                const std::array bytes = {char(pair >> 8), char(pair)};
                const int trail = pair & 0xFF;
                if (trail >= firstTrail && trail != 0xFF && (trail < 0x7F || trail > 0xA0)) {
                    characters.append(bytes);
                }
            }
            QCOMPARE(codePage.decode(characters.last()).text, last);
            qsizetype wrong = 0;
            for (const auto &first : characters) {
                const QString text = codePage.decode(first).text;
                wrong += text.size() != 1 || codePage.encode(text) != QByteArrayView(first) ? 1 : 0;
                for (const auto &second : characters) {
                    const std::array both = {first[0], first[1], second[0], second[1]};
                    const bool doubtful = QUtf8StringView(both.data(), both.size()).isValidUtf8();
                    wrong += doubtful && codePage.decode(both).text != text + codePage.decode(second).text;
                }
            }
            QCOMPARE(wrong, 0);
        }
    }

    void vietnameseLettersSurviveTheirCodePageAsTheyWereTyped()
    {
        const CodePage codePage(1258);
        for (const QChar base : u"aăâeêioôơuưyAĂÂEÊIOÔƠUƯYđĐ"_s) {
            for (const QString &tone :
                 {u""_s, u"\u0300"_s, u"\u0301"_s, u"\u0303"_s, u"\u0309"_s, u"\u0323"_s}) {
                const QString typed = base + tone; // by a keyboard that has the tones on keys of their own
                const QString letter = typed.normalized(QString::NormalizationForm_C);
                const QString apart = typed.normalized(QString::NormalizationForm_D);
                for (const QString &text : {typed, letter, apart}) {
                    const QByteArray bytes = codePage.encode(text);
                    const core::DatagramText read = codePage.decode(bytes);
                    QCOMPARE(core::withTonesOnLetters(read.text), letter);
                    QCOMPARE(reception::ByteColumns(read.text, read.columns), bytes.size());
                }
            }
        }
        QVERIFY(!codePage.holds(u"ā") && !codePage.holds(u"梅"));
    }
};

QTEST_GUILESS_MAIN(tst_CodePage)
#include "tst_CodePage.moc"
