#include "core/TextUtilities.h"
#include "language/Captions.h"
#include "support/Table.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringEncoder>
#include <QXmlStreamReader>

namespace {

const auto root = QStringLiteral(CALLDESK_ROOT) + u'/';
const auto stray = u"^\\s|\\s$|^$|&(?![\\p{L}\\p{N}&])|\\\\(?![n\\\\])|[\\p{Cc}\\p{Co}\\p{Cs}\\x{FFFD}]"_s;
const auto mark = u"&&|&(?=[\\p{L}\\p{N}])|%\\d?|\\\\n"_s;

/// A national character set for each language: it holds one script, so a letter of another is refused.
const QMap<QString, const char *> characterSets{
    {u"ENG"_s, "windows-1252"}, {u"CHS"_s, "GB2312"},       {u"CHT"_s, "Big5"},
    {u"SPN"_s, "windows-1252"}, {u"ARA"_s, "windows-1256"}, {u"FRN"_s, "windows-1252"},
    {u"HBR"_s, "windows-1255"}, {u"TUK"_s, "windows-1254"}, {u"KOR"_s, "windows-949"},
    {u"POL"_s, "windows-1250"}, {u"PTG"_s, "windows-1252"}, {u"VN"_s, "windows-1258"},
};

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

bool holds(const char *characterSet, const QString &letter)
{
    QStringEncoder encoder(characterSet);
    const QByteArray bytes = encoder(letter);
    return encoder.isValid() && !encoder.hasError() && !bytes.isEmpty();
}

// The Vietnamese set holds most letters as a base and one of five tones.
QString foreignLetters(const QString &code, const QString &text)
{
    static const QRegularExpression tones(u"[\\x{300}\\x{301}\\x{303}\\x{309}\\x{323}]"_s);
    const char *set = characterSets.value(code);
    QString foreign = text == text.normalized(QString::NormalizationForm_C) ? QString() : u"not composed"_s;
    for (const QChar letter : text) {
        QString base = QString(letter).normalized(QString::NormalizationForm_D);
        const auto tone = base.indexOf(tones);
        const QString sign = tone < 0 ? QString() : base.sliced(tone, 1);
        base = base.remove(sign).normalized(QString::NormalizationForm_C);
        if (letter > u'~' && !holds(set, letter) && (tone < 0 || !holds(set, sign) || !holds(set, base))) {
            foreign += letter;
        }
    }
    return foreign;
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

/// The letter that presses a control, folded; empty without one.
QString mnemonicOf(const QString &text)
{
    const auto match = QRegularExpression(u"^(?:[^&]|&&)*&([^&])"_s).match(text);
    return match.captured(1).toUpper();
}

/// One text of a form; its key is the designed text without a mark.
struct Caption
{
    QString key;
    QString page;  // the pages of tabs in which it stands: "2/5/"
    bool pressed;  // its control takes a mnemonic
    QString label; // a label takes one only when it has a buddy
};

/// The texts of a form that are translated.
QList<Caption> captionsOf(const QString &xml)
{
    static const QRegularExpression translated(
        u"^(property (text|title|windowTitle|toolTip|accessibleName|placeholderText)|attribute title)$"_s);
    static const QRegularExpression pressed(
        u"^Q(\\w+Button|CheckBox|GroupBox|Label) property (text|title)$"_s);
    struct Widget
    {
        QString kind, name, page;
    };
    QList<Widget> around{{}};
    QList<Caption> captions;
    QSet<QString> buddied;
    QString property;
    int pages = 0;
    for (QXmlStreamReader xmlReader(xml); !xmlReader.atEnd();) {
        const QXmlStreamReader::TokenType token = xmlReader.readNext();
        const bool widget = core::MyIn(xmlReader.name(), u"widget", u"action");
        if (token == QXmlStreamReader::EndElement && widget) {
            around.removeLast();
        }
        if (token != QXmlStreamReader::StartElement) {
            continue;
        }
        const QString element = xmlReader.name().toString();
        const QString name = xmlReader.attributes().value(u"name"_s).toString();
        if (widget) {
            const bool page = around.last().kind == u"QTabWidget"_s;
            const QString kind = xmlReader.attributes().value(u"class"_s).toString();
            around.append(
                {kind, name, around.last().page + (page ? QString::number(++pages) + u'/' : u""_s)});
        } else if (core::MyIn(element, u"property"_s, u"attribute"_s)) {
            property = element + u' ' + name;
            buddied += property == u"property buddy"_s ? QSet{around.last().name} : QSet<QString>();
        } else if (element == u"string"_s && xmlReader.attributes().value(u"notr"_s) != u"true"_s) {
            const Widget &shows = around.last();
            const QString text = xmlReader.readElementText().trimmed();
            const QString kind = shows.kind + u' ' + property;
            const bool typed = core::MyIn(kind, u"QComboBox property text"_s, u"QLineEdit property text"_s);
            const bool tab = property.startsWith(u"attribute"_s);
            if (!text.isEmpty() && !typed && translated.match(property).hasMatch()) {
                captions.append({language::withoutMnemonic(text),
                                 tab ? around.at(around.size() - 2).page : shows.page,
                                 tab || pressed.match(kind).hasMatch(),
                                 shows.kind == u"QLabel"_s ? shows.name : QString()});
            }
        }
    }
    for (Caption &caption : captions) {
        caption.pressed = caption.pressed && (caption.label.isEmpty() || buddied.contains(caption.label));
    }
    return captions;
}

/// The pairs of captions that one letter presses.
QStringList clashesIn(const QString &xml, const QHash<QString, QString> &texts, const QString &where)
{
    QStringList clashes;
    QMultiHash<QString, Caption> pressed;
    for (const Caption &caption : captionsOf(xml)) {
        const QString letter = mnemonicOf(texts.value(caption.key.toUpper()));
        if (!caption.pressed || letter.isEmpty()) {
            continue;
        }
        for (const Caption &other : pressed.values(letter)) {
            if (caption.page.startsWith(other.page) || other.page.startsWith(caption.page)) {
                clashes.append(u"%1: %2 and %3"_s.arg(where, other.key, caption.key));
            }
        }
        pressed.insert(letter, caption);
    }
    return clashes;
}

QStringList formTexts(const QString &xml)
{
    QStringList keys;
    for (const Caption &caption : captionsOf(xml)) {
        keys.append(caption.key);
    }
    return keys;
}

} // namespace

/// The texts in data/lang: sound in each language, none missing that the program looks up, none that it does
/// not; and the help pages.
class tst_LangTexts : public QObject
{
    Q_OBJECT

    using Texts = QHash<QString, QString>; // by folded key
    QMap<QString, Texts> m_texts;          // by language
    QMap<QString, QString> m_areas;        // of each key
    const QMap<QString, QString> m_sources = textsBelow(u"src"_s, {u"*.cpp"_s, u"*.h"_s});
    const QMap<QString, QString> m_forms = textsBelow(u"src"_s, {u"*.ui"_s});
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
    void readArea(const QString &area, const QString &content, const QStringList &codes)
    {
        QStringList lines = content.split(u'\n');
        lines.removeFirst();
        QCOMPARE(lines.takeLast(), QString());
        for (const QString &line : lines) {
            const QStringList row = line.split(u'\t');
            const QString key = row.at(0).toUpper();
            QVERIFY2(row.size() == codes.size() + 1 && !key.contains(u'&'), qPrintable(line));
            QVERIFY2(!m_texts.value(codes.at(0)).contains(key), qPrintable(u"twice: "_s + line));
            QVERIFY2(m_areas.value(key, area) == area, qPrintable(u"in another file: "_s + line));
            m_areas.insert(key, area);
            for (qsizetype i = 0; i < codes.size(); ++i) {
                take(codes.at(i), key, row.at(i + 1), line);
            }
        }
    }
    QSet<QString> keysInUse() const
    {
        QSet<QString> keys;
        for (const QString &source : m_sources) {
            for (const QString &literal : matches(source, u"\"((?:[^\"\\\\\n]|\\\\.)+)\""_s)) {
                keys.insert(literal.toUpper());
                for (const QString &column :
                     matches(literal.toUpper(), u"\\[(\\w+)\\]|(?<=,|^)(\\w+)(?=,|$)"_s)) {
                    keys.insert(column);
                }
            }
        }
        for (const QString &form : m_forms) {
            for (const QString &key : formTexts(form)) {
                keys.insert(key.toUpper());
            }
        }
        for (const QString &source : m_sources) { // a key that is joined of two words, as a column's name
            for (const QString &joined : matches(source.toUpper(), u"\"(\\w+)\"_S \\+ \\w"_s)) {
                for (const QString &key : m_areas.keys()) {
                    if (key.startsWith(joined) && keys.contains(key.sliced(joined.size()))) {
                        keys.insert(key);
                    }
                }
            }
        }
        return keys;
    }

private Q_SLOTS:
    void everyTextIsSoundInItsLanguage()
    {
        const QMap<QString, QString> files = textsBelow(u"data/lang"_s, {u"*.tsv"_s});
        for (const bool own : {false, true}) {
            for (auto file = files.begin(); file != files.end(); ++file) {
                const qsizetype slash = file.key().indexOf(u'/');
                if (own == (slash > 0)) {
                    const QString code = file.key().left(qMax(slash, 0));
                    const QStringList codes =
                        own ? QStringList{code} : QStringList{u"ENG"_s, u"CHS"_s, u"CHT"_s};
                    const QString columns = own ? u"text"_s : codes.join(u'\t');
                    QVERIFY2(file->startsWith(u"id\t"_s + columns + u'\n'), qPrintable(file.key()));
                    readArea(file.key().sliced(slash + 1), *file, codes);
                }
            }
        }
    }

    void everyLanguageThatIsThereIsWhole()
    {
        const Texts english = m_texts.value(u"ENG"_s);
        QVERIFY(english.size() > 50);
        for (const QString &code : m_texts.keys()) {
            QVERIFY2(characterSets.contains(code), qPrintable(code));
            QStringList differing;
            for (const QString &key : m_areas.keys()) {
                if (english.contains(key) != m_texts.value(code).contains(key)) {
                    differing.append(key);
                }
            }
            QVERIFY2(differing.isEmpty(),
                     qPrintable(code + u" lacks or invents "_s + differing.join(u", "_s)));
        }
    }

    void everyTextThatTheProgramLooksUpHasARow()
    {
        QStringList missing;
        for (const QString &source : m_sources) {
            missing += matches(source, u"\\bLms\\(\\s*u\"([^\"]+)\"_s"_s);
        }
        for (const QString &form : m_forms) {
            missing += formTexts(form);
        }
        missing.removeIf([this](const QString &key) { return m_areas.contains(key.toUpper()); });
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u", "_s)));
    }

    void everyRowIsLookedUpSomewhere()
    {
        QStringList unused = m_areas.keys();
        const QSet<QString> used = keysInUse();
        unused.removeIf([&](const QString &key) { return used.contains(key); });
        QVERIFY2(unused.isEmpty(), qPrintable(unused.join(u", "_s)));
    }

    void noLetterPressesTwoControlsThatAreSeenTogether()
    {
        QStringList clashes;
        for (const QString &code : m_texts.keys()) {
            for (auto form = m_forms.begin(); form != m_forms.end(); ++form) {
                clashes += clashesIn(*form, m_texts.value(code), code + u' ' + form.key());
            }
        }
        QVERIFY2(clashes.isEmpty(), qPrintable(clashes.join(u", "_s)));
    }

    void everyHelpPageIsThereInEachLanguage()
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
        for (const QString &source : m_sources) {
            for (const QString &id : matches(source, u"\"(Popup_\\w+)\""_s)) {
                QVERIFY2(ids[u"ENG"_s].contains(id + u".txt"_s), qPrintable(id));
            }
        }
        for (const QString &code : ids.keys()) {
            QVERIFY2(ids[code] == ids[u"ENG"_s], qPrintable(code));
        }
    }
};

QTEST_GUILESS_MAIN(tst_LangTexts)
#include "tst_LangTexts.moc"
