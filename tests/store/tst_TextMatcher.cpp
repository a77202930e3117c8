#include "store/TextMatcher.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using store::TextMatcher;
using store::Wildcards;

class tst_TextMatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void patternsMatch_data();
    void patternsMatch();
    void searchesAgreeWithAFilterOnFoldedText();
    void patternsAgreeWithAPlainWalk();
    void bytesThatAreNoTextMatchOnlyThemselves();
};

namespace {

bool like(const QString &text, const QString &pattern, Wildcards wildcards = Wildcards::Asterisk)
{
    return TextMatcher(pattern.toUtf8(), wildcards).matches(text.toUtf8());
}

/// Few letters of each of five scripts, so that random texts often match: with case, with several bytes, with
/// Turkish and Kelvin signs among them.
const QString letters = u"aAbkKsſ\u212A żŻłŁ iIİı 张伟 محم ΣσςДд"_s;

QString randomText(QRandomGenerator &random, qsizetype length, const QString &alphabet = letters)
{
    QString text;
    for (qsizetype i = 0; i < length; ++i) {
        text += alphabet.at(random.bounded(alphabet.size()));
    }
    return text;
}

QString folded(QString text)
{
    text.replace(u'İ', u'i').replace(u'ı', u'i');
    return text.toCaseFolded();
}

/// The meaning of ? and *, told as a recursion.
bool walks(QStringView text, QStringView pattern)
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

} // namespace

void tst_TextMatcher::patternsMatch_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("hit");
    QTest::addColumn<QString>("miss");
    QTest::newRow("everything") << u"**"_s << u""_s << QString();
    QTest::newRow("empty") << u""_s << u""_s << u"a"_s;
    QTest::newRow("anchored") << u"ab*yz"_s << u"ABYZ"_s << u"abz"_s;
    QTest::newRow("the end is the last one") << u"*aab"_s << u"aaaab"_s << u"aaba"_s;
    QTest::newRow("one character of any script") << u"?伟"_s << u"张伟"_s << u"伟"_s;
    QTest::newRow("digit") << u"0#-*"_s << u"05-"_s << u"0x-"_s;
    QTest::newRow("class") << u"[A-cż]x"_s << u"Żx"_s << u"dx"_s;
    QTest::newRow("negated class") << u"[!a-c]x"_s << u"dx"_s << u"Bx"_s;
    QTest::newRow("empty class") << u"a[]b"_s << u"ab"_s << u"a[]b"_s;
    QTest::newRow("lone bracket") << u"*[a*"_s << u"x[Ay"_s << u"xay"_s;
    QTest::newRow("bracketed star") << u"a[*]"_s << u"a*"_s << u"ab"_s;
    QTest::newRow("turkish") << u"*istanbul ışık*"_s << u"İSTANBUL IŞIK AŞ"_s << u"stanbul"_s;
    QTest::newRow("percent is a letter here") << u"5%*"_s << u"5% off"_s << u"5 off"_s;
}

void tst_TextMatcher::patternsMatch()
{
    QFETCH(QString, pattern);
    QFETCH(QString, hit);
    QFETCH(QString, miss);
    QVERIFY(like(hit, pattern));
    QVERIFY(miss.isNull() || !like(miss, pattern));
    QVERIFY(like(u"a[*]#"_s, u"%[_]%"_s, Wildcards::Percent));
}

void tst_TextMatcher::searchesAgreeWithAFilterOnFoldedText()
{
    QRandomGenerator random(20261121);
    int hits = 0;
    for (int round = 0; round < 20000; ++round) {
        const QString text = randomText(random, random.bounded(12));
        const QString needle = randomText(random, random.bounded(4));
        const bool expected = folded(text).contains(folded(needle));
        hits += expected ? 1 : 0;
        QVERIFY2(like(text, u'*' + needle + u'*') == expected, qPrintable(text + u" / "_s + needle));
        QVERIFY2(like(text, u'%' + needle + u'%', Wildcards::Percent) == expected,
                 qPrintable(text + u" / "_s + needle));
    }
    QVERIFY(hits > 2000 && hits < 18000);
}

void tst_TextMatcher::patternsAgreeWithAPlainWalk()
{
    QRandomGenerator random(7);
    for (int round = 0; round < 20000; ++round) {
        const QString text = randomText(random, random.bounded(10), u"abż张"_s);
        const QString pattern = randomText(random, random.bounded(7), u"abż张?**"_s);
        QVERIFY2(like(text, pattern) == walks(text, pattern), qPrintable(text + u" / "_s + pattern));
    }
}

void tst_TextMatcher::bytesThatAreNoTextMatchOnlyThemselves()
{
    const QByteArray broken("a\xFF\xE4\xBDz\xC3");
    QVERIFY(TextMatcher("A\xFF*\xC3", Wildcards::Asterisk).matches(broken));
    QVERIFY(TextMatcher("*\xE4\xBD*", Wildcards::Asterisk).matches(broken));
    QVERIFY(TextMatcher("a????\xC3", Wildcards::Asterisk).matches(broken));
    QVERIFY(!TextMatcher("a\xFE*", Wildcards::Asterisk).matches(broken));
}

QTEST_APPLESS_MAIN(tst_TextMatcher)
#include "tst_TextMatcher.moc"
