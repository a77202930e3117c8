#include "core/OpenForms.h"
#include "core/TextFiles.h"
#include "core/TextUtilities.h"
#include "support/TestDesk.h"

/// The small procedures that every folder uses.
class tst_CoreUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersAreReadFromLooseText()
    {
        QCOMPARE(core::DigitsOnly(u"SPB-1 2a\u0663\uFF14"), u"12"_s);
        QCOMPARE(core::TrimNulls(QStringView(u"\0  10.1\0.2 \0\0", 13)), u"10.1.2"_s);
        QCOMPARE(core::leadingNumber(u" -12a"), -12);
        QCOMPARE(core::leadingNumber(u"2147483647"), 2147483647);
        QCOMPARE(core::leadingNumber(u"2147483648"), 0);
    }

    void aStrangersTextIsShownWithoutItsTricks()
    {
        const QString mark(QChar(0x301));
        for (const auto &[received, shown] :
             {std::pair(u"李 <b>₂</b> 🙂 שלום"_s, u"李 <b>₂</b> 🙂 שלום"_s),
              {u"a\0b\x1B[2J\r\n\x7F\u0085"_s, u"a b [2J    "_s},
              {u"\u202E1\u2066\u200F\u061C2"_s, u" 1   2"_s}, // bidi
              {u"1\u20282\u20293\uFDD04"_s, u"1 2 3 4"_s},
              {u"1"_s + QChar(0xDE42) + QChar(0xD83D) + u'2', u"1  2"_s}, // half a character
              {u'e' + mark.repeated(300) + u'x', u'e' + mark.repeated(8) + u'x'},
              {u"\U0001D165"_s.repeated(99) + u'x', u"\U0001D165"_s.repeated(8) + u'x'},
              {QString(65507, u'x'), QString(256, u'x')},
              {QString(255, u'x') + u"🙂"_s, QString(255, u'x')}}) { // cut before a pair
            QCOMPARE(core::shownText(received), shown);
        }
    }

    void textFilesAreAppendedToAndReadByLines()
    {
        support::TestDesk desk;
        const QString path = desk.folder.filePath(u"a.txt"_s);
        QCOMPARE(core::ReadTextFile(desk.log, path), QString());
        QVERIFY(core::SaveTextFile(desk.log, path, u"张"_s));
        QVERIFY(core::SaveTextFile(desk.log, path, u"one\n\nlast"_s));
        QCOMPARE(desk.fileBytes(path), "\xE5\xBC\xA0\r\none\n\nlast\r\n");
        QCOMPARE(core::ReadTextFile(desk.log, path), u"张\r\none\r\n\r\nlast\r\n"_s);
        QCOMPARE(core::ReadTextFile(desk.log, path, 7), u"last\r\n"_s);
        QVERIFY(!core::SaveTextFile(desk.log, u"/dev/full"_s, u"text"_s));
        QVERIFY(desk.logMessages().join(u'|').startsWith("!SaveTextFile 28 "_L1)); // ENOSPC
    }

    void openFormsAreCountedAndTheFirstHundredKept()
    {
        support::TestDesk desk;
        core::OpenForms forms(desk.log);
        QObject form;
        for (int opened = 1; opened <= 101; ++opened) {
            forms.IncOpenedForm(&form);
        }
        QCOMPARE(forms.count(), 101);
        QCOMPARE(forms.form(100), &form);
        QCOMPARE(forms.form(101), nullptr);
    }
};

QTEST_GUILESS_MAIN(tst_CoreUtilities)
#include "tst_CoreUtilities.moc"
