#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringEncoder>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList filesBelow(const QString &folder, const QStringList &patterns)
{
    QStringList files;
    QDirIterator each(QStringLiteral(QT_TESTCASE_SOURCEDIR "/../../") + folder, patterns, QDir::Files,
                      QDirIterator::Subdirectories);
    while (each.hasNext()) {
        files.append(each.next());
    }
    return files;
}

} // namespace

class tst_LangTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void keysStandOnceAndFieldsHoldNoStrayMark();
    void theLanguagesAgreeOnMnemonicsAndMarks();
    void eachChineseColumnKeepsToItsScript();
    void everyTextThatTheProgramLooksUpHasARow();

private:
    QList<QStringList> m_rows; ///< id, ENG, CHS, CHT
    QSet<QString> m_keys;      ///< folded
};

void tst_LangTexts::initTestCase()
{
    for (const QString &file : filesBelow(u"data/lang"_s, {u"*.tsv"_s})) {
        QStringList lines = contents(file).split(u'\n');
        QCOMPARE(lines.takeFirst(), u"id\tENG\tCHS\tCHT"_s);
        QCOMPARE(lines.takeLast(), QString());
        for (const QString &line : lines) {
            m_rows.append(line.split(u'\t'));
            QVERIFY2(m_rows.last().size() == 4, qPrintable(line));
            m_keys.insert(m_rows.last().at(0).toUpper());
        }
    }
}

void tst_LangTexts::keysStandOnceAndFieldsHoldNoStrayMark()
{
    static const QRegularExpression stray(uR"re(^\s|\s$|^$|&(?![A-Za-z&])|\\(?![n\\]))re"_s);
    QVERIFY(!m_rows.isEmpty());
    QCOMPARE(m_keys.size(), m_rows.size());
    for (const QStringList &row : m_rows) {
        QVERIFY2(!row.at(0).contains(u'&'), qPrintable(row.at(0)));
        for (QString field : row) {
            field.replace(u"&&"_s, u"and"_s).replace(u"\\\\"_s, u"/"_s);
            QVERIFY2(!field.contains(stray), qPrintable(row.at(0) + u": "_s + field));
        }
    }
}

void tst_LangTexts::theLanguagesAgreeOnMnemonicsAndMarks()
{
    static const QRegularExpression mark(uR"re(&&|&[A-Za-z]|%\d?|\\n)re"_s);
    for (const QStringList &row : m_rows) {
        QStringList marks[3];
        for (int column = 0; column < 3; ++column) {
            for (auto each = mark.globalMatch(row.at(column + 1)); each.hasNext();) {
                marks[column].append(each.next().captured().toUpper());
            }
            marks[column].sort();
        }
        QVERIFY2(marks[0] == marks[1] && marks[0] == marks[2], qPrintable(row.at(0)));
    }
}

// The old national character sets hold one script each, so a character of the other script is refused.
void tst_LangTexts::eachChineseColumnKeepsToItsScript()
{
    for (const QStringList &row : m_rows) {
        QStringEncoder simplified("GB2312");
        QStringEncoder traditional("Big5");
        QVERIFY(simplified.isValid() && traditional.isValid());
        const QByteArray bytes = simplified(row.at(2)) + traditional(row.at(3));
        QVERIFY2(!simplified.hasError(), qPrintable(row.at(2)));
        QVERIFY2(!traditional.hasError(), qPrintable(row.at(3)));
    }
}

void tst_LangTexts::everyTextThatTheProgramLooksUpHasARow()
{
    static const QRegularExpression used(
        uR"re(\bLms\(\s*u"([^"]+)"_s|name="(?:text|title|windowTitle|toolTip|accessibleName)">\s*<string>([^<]+)<)re"_s);
    QStringList missing;
    for (const QString &file : filesBelow(u"src"_s, {u"*.cpp"_s, u"*.ui"_s})) {
        const QString text = contents(file);
        for (auto each = used.globalMatch(text); each.hasNext();) {
            const QRegularExpressionMatch match = each.next();
            const QString key = match.captured(1) + match.captured(2);
            if (!m_keys.contains(key.toUpper())) {
                missing.append(file.section(u'/', -1) + u": "_s + key);
            }
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u'\n')));
}

QTEST_GUILESS_MAIN(tst_LangTexts)
#include "tst_LangTexts.moc"
