#include "support/Table.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringEncoder>

namespace {

const auto stray = u"^\\s|\\s$|^$|&(?![A-Za-z&])|\\\\(?![n\\\\])"_s;
const auto mark = u"&&|&[A-Za-z]|%\\d?|\\\\n"_s;
const auto lookedUp = u"\\bLms\\(\\s*u\"([^\"]+)\"_s|"
                      "name=\"(?:text|title|windowTitle|toolTip|accessibleName)\">\\s*<string>([^<]+)<"_s;

/// What a text holds of a pattern, folded and sorted.
QStringList matches(const QString &text, const QString &pattern)
{
    QStringList found;
    for (const auto &match : QRegularExpression(pattern).globalMatch(text)) {
        found.append(match.captured(match.lastCapturedIndex()).toUpper());
    }
    found.sort();
    return found;
}

bool fits(const char *characterSet, const QString &text)
{
    QStringEncoder encoder(characterSet);
    const QByteArray bytes = encoder(text);
    return encoder.isValid() && !encoder.hasError();
}

QStringList textsBelow(const QString &folder, const QStringList &patterns)
{
    QStringList texts;
    QDirIterator each(QStringLiteral(QT_TESTCASE_SOURCEDIR "/../../") + folder, patterns, QDir::Files,
                      QDirIterator::Subdirectories);
    while (each.hasNext()) {
        QFile file(each.next());
        texts.append(file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString());
    }
    return texts;
}

} // namespace

/// The texts in data/lang: sound in each language, and none missing that the program looks up.
class tst_LangTexts : public QObject
{
    Q_OBJECT

    QSet<QString> m_keys; // folded

private Q_SLOTS:
    // The old national character sets hold one script each, so a character of the other one is refused.
    void everyRowIsSoundInEachLanguage()
    {
        for (const QString &text : textsBelow(u"data/lang"_s, {u"*.tsv"_s})) {
            QStringList lines = text.split(u'\n');
            QCOMPARE(lines.takeFirst(), u"id\tENG\tCHS\tCHT"_s);
            QCOMPARE(lines.takeLast(), QString());
            for (const QString &line : lines) {
                const QStringList row = line.split(u'\t');
                const QString key = row.at(0).toUpper();
                QVERIFY2(row.size() == 4 && !key.contains(u'&') && !m_keys.contains(key), qPrintable(line));
                m_keys.insert(key);
                for (QString field : row) {
                    field.replace(u"&&"_s, u"and"_s).replace(u"\\\\"_s, u"/"_s);
                    QVERIFY2(matches(field, stray).isEmpty(), qPrintable(line));
                }
                const QStringList marks = matches(row.at(1), mark);
                QVERIFY2(marks == matches(row.at(2), mark) && marks == matches(row.at(3), mark),
                         qPrintable(line));
                QVERIFY2(fits("GB2312", row.at(2)) && fits("Big5", row.at(3)), qPrintable(line));
            }
        }
    }

    void everyTextThatTheProgramLooksUpHasARow()
    {
        QVERIFY(m_keys.size() > 50);
        for (const QString &source : textsBelow(u"src"_s, {u"*.cpp"_s, u"*.ui"_s})) {
            for (const QString &key : matches(source, lookedUp)) {
                QVERIFY2(m_keys.contains(key), qPrintable(key));
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_LangTexts)
#include "tst_LangTexts.moc"
