#include "store/TextMatcher.h"
#include "support/Table.h"

#include <QRandomGenerator>

using store::TextMatcher;
using store::Wildcards;

class tst_TextMatcher : public QObject
{
    Q_OBJECT

    static bool like(const QString &text, const QString &pattern, Wildcards wildcards = Wildcards::Asterisk)
    {
        return TextMatcher(pattern.toUtf8(), wildcards).matches(text.toUtf8());
    }

    static QString randomText(QRandomGenerator &random, int atMost, const QString &letters)
    {
        QString text;
        for (int i = random.bounded(atMost); i > 0; --i) {
            text += letters.at(random.bounded(letters.size()));
        }
        return text;
    }

    /// The meaning of ? and *, told as a recursion.
    static bool walks(QStringView text, QStringView pattern)
    {
        if (pattern.isEmpty()) {
            return text.isEmpty();
        }
        if (pattern.front() == u'*') {
            return walks(text, pattern.sliced(1)) || (!text.isEmpty() && walks(text.sliced(1), pattern));
        }
        return !text.isEmpty() && (pattern.front() == u'?' || pattern.front() == text.front()) &&
               walks(text.sliced(1), pattern.sliced(1));
    }

private Q_SLOTS:
    void patternsMatch()
    {
        for (const auto &[pattern, hit, miss] : {std::tuple(u""_s, u""_s, u"a"_s),
                                                 {u"0#-*"_s, u"05-"_s, u"0x-"_s},
                                                 {u"[A-cż]x"_s, u"Żx"_s, u"dx"_s},
                                                 {u"[!a-c]x"_s, u"dx"_s, u"Bx"_s},
                                                 {u"a[]b"_s, u"ab"_s, u"a[]b"_s},
                                                 {u"*[a*"_s, u"x[Ay"_s, u"xay"_s},
                                                 {u"a[*]"_s, u"a*"_s, u"ab"_s},
                                                 {u"*istanbul ışık*"_s, u"İSTANBUL IŞIK AŞ"_s, u"stanbul"_s},
                                                 {u"5%*"_s, u"5% off"_s, u"5 off"_s}}) {
            QVERIFY2(like(hit, pattern) && !like(miss, pattern), qPrintable(pattern));
        }
        QVERIFY(like(u"a[*]#"_s, u"%[_]%"_s, Wildcards::Percent));
    }

    // Neighbours are letters of one script in both cases, so that few letters at a time often match.
    void patternsAgreeWithAPlainWalkOverFoldedText()
    {
        const QString letters = u"aAbkKsſ\u212A żŻłŁ iIİı 张伟 محم ΣσςДд"_s;
        QRandomGenerator random(20261121);
        int hits = 0;
        for (int round = 0; round < 40000; ++round) {
            const QString few = letters.mid(random.bounded(int(letters.size())), 4) + u' ';
            const QString text = randomText(random, 10, few);
            QString pattern = randomText(random, 7, few + u"?**"_s);
            const auto folded = [](QString in) {
                return in.replace(u'İ', u'i').replace(u'ı', u'i').toCaseFolded();
            };
            const bool expected = walks(folded(text), folded(pattern));
            hits += expected ? 1 : 0;
            const bool found = like(text, pattern);
            pattern.replace(u'*', u'%').replace(u'?', u'_');
            const bool foundByPercent = like(text, pattern, Wildcards::Percent);
            QVERIFY2(found == expected && foundByPercent == expected, qPrintable(text + u" / "_s + pattern));
        }
        QVERIFY(hits > 2000 && hits < 38000);
    }

    void bytesThatAreNoTextMatchOnlyThemselves()
    {
        for (const char *pattern : {"A\xFF*\xC3", "*\xE4\xBD*", "a????\xC3", "a\xFE*"}) {
            QCOMPARE(TextMatcher(pattern, Wildcards::Asterisk).matches("a\xFF\xE4\xBDz\xC3"),
                     pattern != QByteArrayView("a\xFE*"));
        }
    }
};

QTEST_APPLESS_MAIN(tst_TextMatcher)
#include "tst_TextMatcher.moc"
