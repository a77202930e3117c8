#include "core/CodePage.h"
#include "core/platform.h"
#include "language/Languages.h"
#include "language/forms/Captions.h"
#include "support/Test.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringEncoder>

namespace {

const auto root = QStringLiteral(CALLDESK_ROOT) + u'/';
const auto stray = u"^\\s|\\s$|^$|&(?![\\p{L}\\p{N}&])|\\\\(?![n\\\\])|[\\p{Cc}\\p{Co}\\p{Cs}\\x{FFFD}]"_s;
const auto mark = u"&&|&(?=[\\p{L}\\p{N}])|%\\d?|\\\\n"_s;

// Only the languages that the toolkit lacks have a file of its texts; they are looked up by the toolkit's own
// words.
const auto toolkitFile = u"toolkit.tsv"_s;

/// The captures of a pattern, or its matches when it captures nothing.
QStringList matches(const QString &text, const QString &pattern)
{
    QStringList found;
    for (const auto &match : QRegularExpression(pattern).globalMatch(text)) {
        found.append(match.captured(match.lastCapturedIndex()));
    }
    found.sort();
    return found;
}

/// The code page of simplified Chinese holds traditional letters, too.
bool isSimplified(QChar letter)
{
    QStringEncoder encoder("GB2312");
    const QByteArray bytes = encoder(letter);
    return encoder.isValid() && !encoder.hasError() && !bytes.isEmpty();
}

/// The letters that the language's own character set lacks: it holds one script.
QString foreignLetters(const QString &code, const QString &text)
{
    const core::CodePage set(core::platform::ansiCodePage(language::languageOf(code)->systemIds.first()));
    QString foreign = text == text.normalized(QString::NormalizationForm_C) ? QString() : u"not composed"_s;
    for (const QChar letter : text) {
        const bool fits =
            letter <= u'~' || (code == "CHS"_L1 ? isSimplified(letter) : set.holds(QStringView(&letter, 1)));
        foreign += fits ? QString() : QString(letter);
    }
    return foreign;
}

/// All but "ID", whose texts are its keys; sorted.
QStringList codes()
{
    QStringList codes;
    for (const language::Language &language : language::languages()) {
        codes.append(language.code);
    }
    codes.removeAll(u"ID"_s);
    codes.sort();
    return codes;
}

QMap<QString, QString> textsBelow(const QString &folder, const QStringList &patterns)
{
    QMap<QString, QString> texts;
    QDirIterator each(root + folder, patterns, QDir::Files, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        QFile file(each.next());
        texts.insert(file.fileName().sliced(root.size() + folder.size() + 1),
                     file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString());
    }
    return texts;
}

/// The keys of the texts of a form that are translated.
QStringList formTexts(const QString &xml)
{
    QStringList keys;
    for (QString text :
         matches(xml, u"<(?:property|attribute) name=\"(?:text|title|windowTitle|toolTip|"
                      "accessibleName|placeholderText)\">\\s*<string>([^<]*[^<\\s][^<]*)<"_s)) {
        keys.append(language::withoutMnemonic(text.replace(u"&amp;"_s, u"&"_s)).trimmed());
    }
    return keys;
}

} // namespace

/// The texts in data/lang: sound in each language, none missing that the program looks up, none that it does
/// not; and the help pages.
class tst_LangTexts : public QObject
{
    Q_OBJECT

    QMap<QString, QMap<QString, QString>> m_texts; // by language and folded key
    QMap<QString, QString> m_areas;                // of each key
    QMap<QString, QSet<QString>> m_toolkitKeys;    // by language
    const QString m_source = textsBelow(u"src"_s, {u"*.cpp"_s, u"*.h"_s}).values().join(u'\n');
    const QString m_forms = textsBelow(u"src"_s, {u"*.ui"_s}).values().join(u'\n');
    const QMap<QString, QString> m_pages = textsBelow(u"data/help"_s, {u"*.txt"_s});

    void take(const QString &code, const QString &key, QString text, const QString &line)
    {
        const QString english = m_texts[u"ENG"_s].value(key, text);
        QVERIFY2(matches(text, mark) == matches(english, mark), qPrintable(code + u": "_s + line));
        const QString foreign = foreignLetters(code, text);
        QVERIFY2(foreign.isEmpty(), qPrintable(code + u' ' + foreign + u": "_s + line));
        text.replace(u"\\\\"_s, u"/"_s);
        m_texts[code].insert(key, text);
        text.replace(u"&&"_s, u"and"_s);
        QVERIFY2(matches(text, stray).isEmpty(), qPrintable(code + u": "_s + line));
    }
    void readArea(const QString &code, const QString &area, const QString &content)
    {
        QStringList lines = content.split(u'\n');
        lines.removeFirst();
        QCOMPARE(lines.takeLast(), QString());
        for (const QString &line : lines) {
            const QStringList row = line.split(u'\t');
            const QString key = row.at(0).toUpper();
            QVERIFY2(row.size() == 2 || (row.size() == 3 && code == u"ENG"_s), qPrintable(line));
            QVERIFY2(!key.contains(u'&'), qPrintable(line));
            QVERIFY2(!m_texts.value(code).contains(key), qPrintable(u"twice: "_s + line));
            QVERIFY2(m_areas.value(key, area) == area, qPrintable(u"in another file: "_s + line));
            if (area == toolkitFile) {
                m_toolkitKeys[code].insert(key);
            } else {
                m_areas.insert(key, area);
            }
            take(code, key, row.at(1), line);
        }
    }

private Q_SLOTS:
    void everyTextIsSoundInItsLanguage()
    {
        const QMap<QString, QString> files = textsBelow(u"data/lang"_s, {u"*.tsv"_s});
        QStringList paths = files.keys();
        const auto isTranslation = [](const QString &path) { return !path.startsWith(u"ENG/"_s); };
        std::ranges::stable_sort(paths, {}, isTranslation);
        for (const QString &path : paths) {
            const QString columns = isTranslation(path) ? u"id\ttext\n"_s : u"id\ttext\t[hint]\n"_s;
            QVERIFY2(files[path].startsWith(columns), qPrintable(path));
            readArea(path.section(u'/', 0, 0), path.section(u'/', -1), files[path]);
        }
    }

    void everyLanguageIsThereAndWhole()
    {
        QVERIFY(m_areas.size() > 50);
        QCOMPARE(m_texts.keys(), codes());
        for (const QString &code : codes()) {
            QStringList lacking = m_areas.keys();
            lacking.removeIf([&](const QString &key) { return m_texts.value(code).contains(key); });
            QVERIFY2(lacking.isEmpty(), qPrintable(code + u" lacks "_s + lacking.join(u", "_s)));
        }
        QStringList withoutToolkitFile = codes();
        withoutToolkitFile.removeIf([](const QString &code) {
            return code == u"ENG"_s || !language::languageOf(code)->toolkitFile.isEmpty();
        });
        QCOMPARE(m_toolkitKeys.keys(), withoutToolkitFile);
        for (const QSet<QString> &keys : std::as_const(m_toolkitKeys)) {
            QCOMPARE(keys, m_toolkitKeys.first());
        }
    }

    void everyTextThatTheProgramLooksUpHasARow()
    {
        QStringList missing = formTexts(m_forms) + matches(m_source, u"\\bLms\\(\\s*u\"([^\"]+)\"_s"_s);
        missing.removeIf([this](const QString &key) { return m_areas.contains(key.toUpper()); });
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u", "_s)));
    }

    void everyRowIsLookedUpSomewhere()
    {
        QStringList unused = m_areas.keys();
        const QString program = QString(m_source + m_forms).remove(u"&amp;"_s).toUpper();
        unused.removeIf([&](const QString &key) {
            const QString word = u"[\"\\[>,]%1[\"\\]<,]"_s.arg(QRegularExpression::escape(key));
            return program.contains(QRegularExpression(word));
        });
        QVERIFY2(unused.isEmpty(), qPrintable(unused.join(u", "_s)));
    }

    void everyHelpPageIsThereInEachLanguageAndThatOfTheOptionsNamesThemAll()
    {
        QMap<QString, QStringList> ids;
        for (auto page = m_pages.begin(); page != m_pages.end(); ++page) {
            const QStringList path = page.key().split(u'/');
            const QString foreign = foreignLetters(path.at(0), *page);
            QVERIFY2(foreign.isEmpty(), qPrintable(page.key() + u": "_s + foreign));
            QVERIFY2(page->size() > 200 && page->endsWith(u'\n') && matches(*page, u"[ \t]\n"_s).isEmpty(),
                     qPrintable(page.key()));
            ids[path.at(0)].append(path.at(1));
        }
        for (const QString &id : matches(m_source, u"\"(Popup_\\w+)\""_s)) {
            QVERIFY2(ids[u"ENG"_s].contains(id + u".txt"_s), qPrintable(id));
        }
        QCOMPARE(ids.keys(), codes());
        for (const QString &code : codes()) {
            QVERIFY2(ids[code] == ids[u"ENG"_s], qPrintable(code));
            const QStringList words =
                matches(m_pages.value(code + u"/Popup_System_Options.txt"_s), u"\\b[A-Z]+\\b"_s);
            for (const QString &named : codes()) {
                QVERIFY2(words.contains(named), qPrintable(code + u" lacks "_s + named));
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_LangTexts)
#include "tst_LangTexts.moc"
