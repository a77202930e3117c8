#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Who may include whom. A new arrow is a new word in this table.
const QHash<QString, QStringList> &allowedArrows()
{
    static const QStringList recordFolder = {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s,
                                             u"appearance"_s};
    static const QHash<QString, QStringList> arrows = {
        {u"core"_s, {}},
        {u"store"_s, {u"core"_s}},
        {u"reception"_s, {u"core"_s}},
        {u"areas"_s, {u"core"_s, u"store"_s}},
        {u"language"_s, {u"core"_s, u"store"_s}},
        {u"appearance"_s, {u"core"_s, u"language"_s}},
        {u"lookup"_s, {u"core"_s, u"store"_s, u"appearance"_s}},
        {u"mainwindow"_s, {u"core"_s, u"appearance"_s}},
        {u"phonebook"_s, recordFolder},
        {u"customers"_s, recordFolder},
        {u"notes"_s, recordFolder},
        {u"messages"_s, recordFolder},
        {u"options"_s, recordFolder},
        {u"help"_s, recordFolder}};
    return arrows;
}

QRegularExpression pattern(const QString &text)
{
    return QRegularExpression(text, QRegularExpression::CaseInsensitiveOption);
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n') : QStringList();
}

/// Judges one line of one file; paths are relative to the project's folder.
class Rules
{
public:
    Rules()
    {
        QDirIterator lists(root + u"/src"_s, {u"CMakeLists.txt"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (lists.hasNext()) {
            const QString text = linesOf(lists.next()).join(u' ');
            static const QRegularExpression sources(u"target_sources\\(calldesk_logic PRIVATE([^)]*)\\)"_s);
            for (const auto &list : sources.globalMatch(text)) {
                for (const QString &name : list.captured(1).split(u' ', Qt::SkipEmptyParts)) {
                    logicUnits.insert(lists.fileInfo().path().mid(root.size() + 1) + u'/' + name);
                }
            }
        }
    }

    bool wrongArrow(const QString &path, const QString &line) const
    {
        const QString from = path.section(u'/', 1, 1);
        const QString to = quotedInclude(line).section(u'/', 0, -2);
        return path.startsWith("src/"_L1) && !to.isEmpty() && from != "app"_L1 && from != to &&
               !allowedArrows().value(from).contains(to);
    }
    bool widgetInLogic(const QString &path, const QString &line) const
    {
        if (!logicUnits.contains(path)) {
            return false;
        }
        static const QRegularExpression qtInclude(u"^\\s*#\\s*include\\s*<(Q[^>]*)>"_s);
        const QString header = qtInclude.match(line).captured(1);
        if (!header.isEmpty()) {
            static const QStringList folders = QString::fromUtf8(CALLDESK_LOGIC_QT).split(u'|');
            return header.contains(u'/') ||
                   std::none_of(folders.begin(), folders.end(),
                                [&](const QString &folder) { return QFile::exists(folder + u'/' + header); });
        }
        const QString own = quotedInclude(line);
        return own.startsWith("ui_"_L1) || (own.contains(u'/') && !logicUnits.contains(u"src/"_s + own));
    }
    bool roundADoor(const QString &path, const QString &line) const
    {
        static const QRegularExpression worldly = pattern(
            u"\\b(QMessageBox|QFileDialog|QInputDialog|QPrinter|QPrintDialog|QDesktopServices|QProcess)\\b|"
            "\\bcurrent(DateTime|DateTimeUtc|Date|Time|SecsSinceEpoch|MSecsSinceEpoch)\\s*\\("_s);
        return path.startsWith("src/"_L1) && !path.startsWith("src/core/Qt"_L1) &&
               worldly.match(line).hasMatch();
    }
    bool conditional(const QString &path, const QString &line) const
    {
        static const QRegularExpression code = pattern(u"\\.(cpp|h)$"_s);
        static const QRegularExpression directive = pattern(u"^\\s*#\\s*(if|ifdef|ifndef|elif|else)\\b"_s);
        return directive.match(line).hasMatch() && code.match(path).hasMatch() &&
               !path.section(u'/', -1).startsWith("platform_"_L1);
    }
    bool allusion(const QString &, const QString &line) const
    {
        static const QRegularExpression words =
            pattern(u"\\bParts? \\d|\\b(the|this|our|per) spec(ification)?s?\\b|\\bspec\\.md\\b"_s);
        return words.match(line).hasMatch();
    }
    bool unfinished(const QString &path, const QString &line) const
    {
        static const QRegularExpression words =
            pattern(u"\\b(TODO|FIXME|XXX|HACK|not implemented|placeholder|stub(bed)?)\\b"_s);
        return (path.startsWith("src/"_L1) || path.startsWith("tools/"_L1)) && words.match(line).hasMatch();
    }

    const QString root = QString::fromUtf8(CALLDESK_ROOT);
    QSet<QString> logicUnits;

private:
    static QString quotedInclude(const QString &line)
    {
        static const QRegularExpression include(u"^\\s*#\\s*include\\s*\"([^\"]*)\""_s);
        return include.match(line).captured(1);
    }
};

using Rule = bool (Rules::*)(const QString &, const QString &) const;

} // namespace

Q_DECLARE_METATYPE(Rule)

/// Keeps the architecture in the sources: every rule is tried on all of them, and on a breach that it must
/// see.
class tst_Rules : public QObject
{
    Q_OBJECT

    Rules m_rules;
    QStringList m_files;

private Q_SLOTS:
    void initTestCase()
    {
        static const QRegularExpression skipped(u"^(build|\\.git|\\.cache)\\b|/corpus/|\\.(png|ico|svg)$"_s);
        QDirIterator files(m_rules.root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next().mid(m_rules.root.size() + 1);
            if (!skipped.match(path).hasMatch()) {
                m_files.append(path);
            }
        }
        QVERIFY(m_files.contains("src/core/RunLog.cpp"_L1) &&
                m_files.contains("tests/rules/tst_Rules.cpp"_L1));
        QVERIFY(m_rules.logicUnits.contains("src/core/RunLog.h"_L1));
        QVERIFY(!m_rules.logicUnits.contains("src/core/QtPrompts.h"_L1));
    }

    void theSourcesKeepTheRule_data()
    {
        QTest::addColumn<Rule>("rule");
        QTest::newRow("includes follow the arrows") << &Rules::wrongArrow;
        QTest::newRow("logic knows no widget") << &Rules::widgetInLogic;
        QTest::newRow("the world comes in through doors") << &Rules::roundADoor;
        QTest::newRow("one source for every system") << &Rules::conditional;
        QTest::newRow("the text explains itself") << &Rules::allusion;
        QTest::newRow("nothing is left unfinished") << &Rules::unfinished;
    }
    void theSourcesKeepTheRule()
    {
        QFETCH(Rule, rule);
        QStringList breaches;
        for (const QString &path : std::as_const(m_files)) {
            int number = 0;
            for (const QString &line : linesOf(m_rules.root + u'/' + path)) {
                ++number;
                if ((m_rules.*rule)(path, line)) {
                    breaches.append(path + u':' + QString::number(number) + u": "_s + line.trimmed());
                }
            }
        }
        QVERIFY2(breaches.isEmpty(), qPrintable(breaches.join(u'\n')));
    }

    void theRuleSeesABreach_data()
    {
        QTest::addColumn<Rule>("rule");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("breach");
        const auto row = [](Rule rule, const QString &path, const QString &line, bool breach) {
            QTest::newRow(qPrintable(path + u": "_s + line)) << rule << path << line << breach;
        };
        row(&Rules::wrongArrow, u"src/core/RunLog.cpp"_s, u"#include \"store/Database.h\""_s, true);
        row(&Rules::wrongArrow, u"src/newcomer/A.cpp"_s, u"#include \"core/RunLog.h\""_s, true);
        row(&Rules::wrongArrow, u"src/store/Database.cpp"_s, u"#  include \"../lookup/NumberIndex.h\""_s,
            true);
        row(&Rules::wrongArrow, u"src/store/Database.cpp"_s, u"#include \"core/Error.h\""_s, false);
        row(&Rules::wrongArrow, u"src/app/Program.cpp"_s, u"#include \"store/Database.h\""_s, false);
        for (const QString &header : {u"<QWidget>"_s, u"<QtCore/QString>"_s, u"<QIcon>"_s,
                                      u"\"core/QtPrompts.h\""_s, u"\"ui_FrmMain.h\""_s}) {
            row(&Rules::widgetInLogic, u"src/core/Paths.cpp"_s, u"#include "_s + header, true);
        }
        for (const QString &header : {u"<QHostAddress>"_s, u"<cstring>"_s, u"\"core/Error.h\""_s}) {
            row(&Rules::widgetInLogic, u"src/core/Paths.cpp"_s, u"#include "_s + header, false);
        }
        row(&Rules::widgetInLogic, u"src/core/QtPrompts.cpp"_s, u"#include <QMessageBox>"_s, false);
        row(&Rules::roundADoor, u"src/app/main.cpp"_s, u"    QMessageBox::about(nullptr, {}, {});"_s, true);
        row(&Rules::roundADoor, u"src/lookup/A.cpp"_s, u"    = QDate::currentDate();"_s, true);
        row(&Rules::roundADoor, u"src/core/QtClock.cpp"_s, u"    QDateTime::currentDateTime()"_s, false);
        row(&Rules::conditional, u"tools/a/main.cpp"_s, u"  # ifdef _WIN32"_s, true);
        row(&Rules::conditional, u"src/core/platform_unix.cpp"_s, u"#if defined(Q_OS_MACOS)"_s, false);
        row(&Rules::allusion, u"README.md"_s,
            u"as Pa"
            "rt 2.1 tells"_s,
            true);
        row(&Rules::allusion, u"src/a/A.h"_s,
            u"/// see the sp"
            "ecification"_s,
            true);
        row(&Rules::allusion, u"src/a/A.h"_s, u"/// the special part of it"_s, false);
        row(&Rules::unfinished, u"src/a/A.cpp"_s, u"// todo: later"_s, true);
        row(&Rules::unfinished, u"src/a/A.cpp"_s, u"edit->setPlaceholderText(text);"_s, false);
    }
    void theRuleSeesABreach()
    {
        QFETCH(Rule, rule);
        QFETCH(QString, path);
        QFETCH(QString, line);
        QTEST((m_rules.*rule)(path, line), "breach");
    }
};

QTEST_GUILESS_MAIN(tst_Rules)
#include "tst_Rules.moc"
