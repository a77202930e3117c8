#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringEncoder>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(u"cannot read "_s + path), __FILE__, __LINE__);
    }
    return QString::fromUtf8(file.readAll());
}

QStringList filesBelow(const QString &folder, const QString &pattern)
{
    QStringList files;
    QDirIterator each(QStringLiteral(QT_TESTCASE_SOURCEDIR "/../../") + folder, {pattern}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (each.hasNext()) {
        files.append(each.next());
    }
    files.sort();
    return files;
}

/// The texts that a form shows in the current language: captions, titles and tips, but no contents of boxes.
QStringList captionsOf(const QString &uiFile)
{
    static const QSet<QString> leftAsDesigned = {u"QLineEdit"_s, u"QTextEdit"_s, u"QPlainTextEdit"_s,
                                                 u"QComboBox"_s};
    static const QSet<QString> captions = {u"text"_s, u"title"_s, u"windowTitle"_s, u"toolTip"_s};
    QXmlStreamReader xml(contents(uiFile));
    QStringList found;
    QStringList widgets;
    QString property;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == "widget"_L1) {
            widgets.removeLast();
        } else if (xml.isStartElement() && xml.name() == "widget"_L1) {
            widgets.append(xml.attributes().value("class"_L1).toString());
        } else if (xml.isStartElement() && (xml.name() == "property"_L1 || xml.name() == "attribute"_L1)) {
            property = xml.attributes().value("name"_L1).toString();
        } else if (xml.isStartElement() && xml.name() == "string"_L1 && captions.contains(property)) {
            const bool translated = xml.attributes().value("notr"_L1) != "true"_L1;
            const bool box =
                property == "text"_L1 && leftAsDesigned.contains(widgets.value(widgets.size() - 1));
            if (translated && !box) {
                found.append(xml.readElementText());
            }
        }
    }
    return found;
}

} // namespace

class tst_LangTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyRowIsWhole();
    void everyKeyStandsOnce();
    void mnemonicsAndMarksAgreeBetweenTheLanguages();
    void eachChineseColumnKeepsToItsScript();
    void everyTextThatTheProgramLooksUpHasARow();

private:
    QList<QStringList> m_rows; ///< id, ENG, CHS, CHT
};

void tst_LangTexts::initTestCase()
{
    for (const QString &file : filesBelow(u"data/lang"_s, u"*.tsv"_s)) {
        QStringList lines = contents(file).split(u'\n');
        QCOMPARE(lines.takeFirst(), u"id\tENG\tCHS\tCHT"_s);
        QCOMPARE(lines.takeLast(), QString());
        for (const QString &line : lines) {
            m_rows.append(line.split(u'\t'));
        }
    }
    QVERIFY(m_rows.size() > 100);
}

void tst_LangTexts::everyRowIsWhole()
{
    static const QRegularExpression strayEscape(uR"(\\(?![n\\])|\\$)"_s);
    for (const QStringList &row : m_rows) {
        QVERIFY2(row.size() == 4, qPrintable(row.value(0)));
        for (const QString &field : row) {
            QVERIFY2(!field.isEmpty() && field == field.trimmed(), qPrintable(row.at(0)));
            QVERIFY2(!QString(field).replace(u"\\\\"_s, QString()).contains(strayEscape),
                     qPrintable(row.at(0)));
        }
    }
}

void tst_LangTexts::everyKeyStandsOnce()
{
    QSet<QString> seen;
    for (const QStringList &row : m_rows) {
        const QString folded = row.at(0).toUpper();
        QVERIFY2(!seen.contains(folded), qPrintable(row.at(0)));
        QVERIFY2(!row.at(0).contains(u'&'), qPrintable(row.at(0)));
        seen.insert(folded);
    }
}

void tst_LangTexts::mnemonicsAndMarksAgreeBetweenTheLanguages()
{
    static const QRegularExpression mnemonic(u"&([A-Za-z])"_s);
    for (const QStringList &row : m_rows) {
        const QString key = mnemonic.match(row.at(1)).captured(1).toUpper();
        for (const QString &text : row.mid(1)) {
            QString rest = text;
            QVERIFY2(rest.replace(u"&&"_s, QString()).count(u'&') == (key.isEmpty() ? 0 : 1),
                     qPrintable(text));
            QVERIFY2(mnemonic.match(text).captured(1).toUpper() == key, qPrintable(text));
            QCOMPARE(text.count(u'%'), row.at(1).count(u'%'));
            QCOMPARE(text.count(u"\\n"_s), row.at(1).count(u"\\n"_s));
        }
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
    static const QRegularExpression lookup(uR"re(\bLms\(\s*u"([^"]*)"_s)re"_s);
    QSet<QString> keys;
    for (const QStringList &row : m_rows) {
        keys.insert(row.at(0).toUpper());
    }
    QStringList missing;
    for (const QString &file : filesBelow(u"src"_s, u"*"_s)) {
        QStringList used = file.endsWith(".ui"_L1) ? captionsOf(file) : QStringList();
        const QString text = contents(file);
        for (auto each = lookup.globalMatch(text); each.hasNext();) {
            used.append(each.next().captured(1));
        }
        for (const QString &key : used) {
            if (!key.isEmpty() && !keys.contains(key.toUpper())) {
                missing.append(file.section(u'/', -1) + u": "_s + key);
            }
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u'\n')));
}

QTEST_GUILESS_MAIN(tst_LangTexts)
#include "tst_LangTexts.moc"
