#include "support/Test.h"

#include <QDirIterator>
#include <QRegularExpression>

namespace {

const QString root = QStringLiteral(CALLDESK_ROOT);

/// A line that matches breaks the rule in a file whose path below the root matches, too.
struct Rule
{
    QRegularExpression path;
    QRegularExpression line;
};

Rule rule(const QString &path, const QString &line)
{
    return {QRegularExpression(path), QRegularExpression(line, QRegularExpression::CaseInsensitiveOption)};
}

/// Who may include whom besides itself. A new arrow is a new word in this table; app knows everybody.
const QMap<QString, QStringList> mayInclude{
    {u"core"_s, {}},
    {u"store"_s, {u"core"_s}},
    {u"oldfiles"_s, {u"core"_s}},
    {u"conversion"_s, {u"core"_s, u"store"_s, u"oldfiles"_s}},
    {u"reception"_s, {u"core"_s}},
    {u"areas"_s, {u"core"_s, u"store"_s}},
    {u"language"_s, {u"core"_s, u"store"_s}},
    {u"appearance"_s, {u"core"_s, u"store"_s, u"language"_s}},
    {u"mainwindow"_s, {u"core"_s, u"appearance"_s}},
    {u"lookup"_s, {u"core"_s, u"store"_s, u"appearance"_s}},
    {u"phonebook"_s, {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s, u"appearance"_s}},
    {u"customers"_s, {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s, u"appearance"_s}},
    {u"imports"_s,
     {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s, u"appearance"_s, u"customers"_s, u"phonebook"_s}},
    {u"notes"_s, {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s, u"appearance"_s}},
    {u"messages"_s, {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s, u"appearance"_s}},
    {u"options"_s, {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s, u"appearance"_s}},
    {u"help"_s, {u"core"_s, u"store"_s, u"lookup"_s, u"language"_s, u"appearance"_s}},
    {u"copies"_s, {u"core"_s, u"store"_s, u"appearance"_s}},
    {u"start"_s, {u"core"_s, u"conversion"_s, u"language"_s, u"appearance"_s}},
};

/// The line draws an arrow that is not in the table: its folder's, or one of a folder that nobody has
/// entered.
bool drawsAnArrow(const QString &path, const QString &line)
{
    static const QRegularExpression include(u"^\\s*#\\s*include\\s*\"([^\"]*)/[^\"]*\""_s);
    const QString from = path.section(u'/', 1, 1);
    const QRegularExpressionMatch match = include.match(line);
    const bool inFolder = path.startsWith("src/"_L1) && path.count(u'/') > 1;
    return inFolder && from != "app"_L1 && match.hasMatch() &&
           match.captured(1).section(u'/', 0, 0) != from &&
           !mayInclude.value(from).contains(match.captured(1).section(u'/', 0, 0));
}

/// Where windows stand, and what they are made of. Nothing else in src knows a widget.
bool isAmongForms(const QString &path)
{
    static const QRegularExpression folder(u"^src/(\\w+/forms|core/qt|appearance|app)/"_s);
    return folder.match(path).hasMatch();
}

QList<Rule> rules()
{
    return {
        rule(u"^src/(?!core/qt/|core/QtClock)"_s, // the world comes in through doors
             u"\\b(QMessageBox|QFileDialog|QInputDialog|QPrinter|QPrintDialog|QDesktopServices|"
             u"QProcess)\\b|"
             "\\bcurrent(DateTime|DateTimeUtc|Date|Time|SecsSinceEpoch|MSecsSinceEpoch)\\s*\\("_s),
        rule(u"^(?!.*/platform_[^/]*$).*\\.(cpp|h)$"_s, // one source for every system
             u"^\\s*#\\s*(if|ifdef|ifndef|elif|else)\\b"_s),
        rule(u"^src/(?!store/engine/).*\\.(cpp|h)$"_s, // nobody else knows which database engine it is
             u"sqlite|\\bpragma(?! once\\b)|\\bQSql|\\bPQ[a-z]+\\(|libpq"_s),
        rule(u"^src/(?!store/)"_s, u"#\\s*include\\s*\"store/engine/"_s),
        rule(u"."_s, u"\\bParts? \\d|\\b(the|this|our|per) spec(ification)?s?\\b|\\bspec\\.md\\b"_s),
        rule(u"^(src|tools)/"_s, u"\\b(TODO|FIXME|XXX|HACK|not implemented|placeholder|stub(bed)?)\\b"_s)};
}

QStringList linesOf(const QString &path)
{
    QFile file(root + u'/' + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n') : QStringList();
}

} // namespace

/// Keeps the architecture in the sources: every rule is tried on all of them, and on breaches that it must
/// see.
class tst_Rules : public QObject
{
    Q_OBJECT

    const QList<Rule> m_rules = rules();
    QStringList m_files;

    // The compiler itself finds no widget's header for a logic unit, unless by its folder or through ours.
    static bool knowsAWidget(const QString &path, const QString &line)
    {
        static const QRegularExpression include(u"^\\s*#\\s*include\\s*(<Q\\w+/|\"(?=ui_|\\w+/)(.*)\")"_s);
        const QRegularExpressionMatch match = include.match(line);
        const bool isOurs = match.captured(1).startsWith(u'"') && !match.captured(1).contains("ui_"_L1);
        return match.hasMatch() && path.startsWith("src/"_L1) && !isAmongForms(path) &&
               (!isOurs || isAmongForms(u"src/"_s + match.captured(2)));
    }
    bool breaksARule(const QString &path, const QString &line) const
    {
        return knowsAWidget(path, line) || drawsAnArrow(path, line) ||
               std::any_of(m_rules.begin(), m_rules.end(), [&](const Rule &rule) {
                   return rule.path.match(path).hasMatch() && rule.line.match(line).hasMatch();
               });
    }

private Q_SLOTS:
    void initTestCase()
    {
        static const QRegularExpression skipped(u"^(build|\\.git|\\.cache)\\b|/corpus/|\\.(png|ico|svg)$"_s);
        QDirIterator files(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next().mid(root.size() + 1);
            if (!skipped.match(path).hasMatch()) {
                m_files.append(path);
            }
        }
        QVERIFY(m_files.contains("src/core/RunLog.cpp"_L1) &&
                m_files.contains("tests/rules/tst_Rules.cpp"_L1));
    }

    void theSourcesKeepTheRules()
    {
        QStringList breaches;
        for (const QString &path : std::as_const(m_files)) {
            for (const QString &line : linesOf(path)) {
                if (breaksARule(path, line)) {
                    breaches.append(path + u": "_s + line.trimmed());
                }
            }
        }
        QVERIFY2(breaches.isEmpty(), qPrintable(breaches.join(u'\n')));
    }

    void theFolderTellsTheLayer()
    {
        static const QRegularExpression lists(u"target_sources\\(calldesk_(logic|forms) PRIVATE([^)]*)\\)"_s);
        for (const QString &path : m_files.filter(QRegularExpression(u"^src/.*CMakeLists.txt$"_s))) {
            for (const auto &list : lists.globalMatch(linesOf(path).join(u' '))) {
                for (const QString &unit : list.captured(2).split(u' ', Qt::SkipEmptyParts)) {
                    const bool isForm = isAmongForms(path.section(u'/', 0, -2) + u'/' + unit);
                    QVERIFY2(isForm == (list.captured(1) == "forms"_L1), qPrintable(path + u' ' + unit));
                }
            }
        }
    }

    // That nothing else is taken for a breach is what the sources show above.
    void aBreachIsSeen()
    {
        for (const auto &[path, line] :
             {std::pair(u"src/core/RunLog.cpp"_s, u"#include \"store/Database.h\""_s),
              {u"src/newcomer/A.cpp"_s, u"#include \"core/RunLog.h\""_s},
              {u"src/core/Paths.cpp"_s, u"#include <QtWidgets/QWidget>"_s},
              {u"src/core/Paths.cpp"_s, u"#include \"core/qt/QtPrompts.h\""_s},
              {u"src/core/Paths.cpp"_s, u"#include \"ui_FrmMain.h\""_s},
              {u"src/app/main.cpp"_s, u"    QMessageBox::about(nullptr, {}, {});"_s},
              {u"src/lookup/A.cpp"_s, u"    = QDate::currentDate();"_s},
              {u"tools/a/main.cpp"_s, u"  # ifdef _WIN32"_s},
              {u"src/store/A.cpp"_s, u"#include <sqlite3.h>"_s},
              {u"src/lookup/A.cpp"_s, u"#include \"store/engine/Engine.h\""_s},
              {u"README.md"_s, u"as P\u0061rt 2.1 tells"_s},
              {u"src/app/A.h"_s, u"/// see the sp\u0065cification"_s},
              {u"src/app/A.cpp"_s, u"// todo: later"_s}}) {
            QVERIFY2(breaksARule(path, line), qPrintable(line));
        }
    }
};

QTEST_GUILESS_MAIN(tst_Rules)
#include "tst_Rules.moc"
