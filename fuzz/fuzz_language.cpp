#include "Support.h"
#include "core/TextUtilities.h"
#include "language/LanguagePack.h"
#include "language/ShownTexts.h"
#include "store/Database.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// Says nothing, and checks that what would be said is a text.
struct SilentPrompts : core::Prompts
{
    void tell(const QString &text, const QString &, QWidget *) override { require(!text.isEmpty()); }
    bool askOkCancel(const QString &, const QString &) override { return false; }
    Answer askSave(const QString &, QWidget *, const SaveWords &) override { return Answer::Cancel; }
    QString saveFileName(const QString &, const QString &) override { return {}; }
    QString openFileName(const QString &) override { return {}; }
    bool isOpen() const override { return false; }
};

/// A desk whose French language file comes from somebody else.
class Desk
{
public:
    Desk()
    {
        m_settings.record.LanguageSetting.setText(u"FRN"_s);
        store::createDatabase(m_paths.LangFile, u"create table Lang(id text(255), ENG memo)"_s,
                              [](store::Database &) {});
    }
    /// Any file at all, or one with these rows: lines of a key and its text, parted by a tab.
    void receive(const QByteArray &bytes)
    {
        QFile::remove(m_path);
        if (bytes.startsWith("SQLite")) {
            QFile file(m_path);
            require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        } else {
            writeRows(bytes);
        }
        language::LanguagePack pack(m_paths, m_log, m_prompts, m_settings, 0x0409);
        pack.iniLanguage();
        pack.tellUnreadable();
        require(pack.state().code == "FRN"_L1);
        const language::ShownTexts texts(pack);
        for (const QString &key : {u"Edit"_s, u"PlsRestartSys"_s, u"LanguageFileDamaged"_s}) {
            require(!texts.Lms(key).isEmpty());
            core::shownText(texts.Lms(key));
        }
    }

private:
    void writeRows(const QByteArray &bytes) const
    {
        sqlite3 *engine = nullptr;
        sqlite3_stmt *insert = nullptr;
        sqlite3_open(m_path.toUtf8().constData(), &engine);
        sqlite3_exec(engine,
                     "pragma synchronous=off; pragma journal_mode=memory; begin;"
                     "create table Language(item text, userlanguage text, english text)",
                     nullptr, nullptr, nullptr);
        sqlite3_prepare_v2(engine, "insert into Language values(?1,?2,?1)", -1, &insert, nullptr);
        for (const QByteArray &line : bytes.split('\n')) {
            const qsizetype tab = std::max<qsizetype>(line.indexOf('\t'), 0);
            sqlite3_bind_text(insert, 1, line.constData(), int(tab), SQLITE_STATIC);
            sqlite3_bind_text(insert, 2, line.constData() + tab, int(line.size() - tab), SQLITE_STATIC);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(engine, "commit", nullptr, nullptr, nullptr);
        sqlite3_close(engine);
    }

    QTemporaryDir m_folder;
    core::Paths m_paths = core::pathsBelow(m_folder.path(), m_folder.path());
    const QString m_path = m_folder.filePath(u"FRN.lan"_s);
    FixedClock m_clock;
    core::ProcessValues m_values;
    core::RunLog m_log{m_paths, m_clock, m_values};
    core::Settings m_settings{m_paths, m_log};
    SilentPrompts m_prompts;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Desk desk; // the fuzzer offers no other place that lasts from input to input
    desk.receive(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
