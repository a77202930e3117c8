#include "language/LanguagePack.h"

#include "language/ShownTexts.h"
#include "store/Database.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace language {

namespace {

bool isFile(const QString &path)
{
    return QFileInfo(path).isFile();
}

// The column of table "Lang" that holds a language's texts.
QString textColumn(const QString &code)
{
    const Language *language = languageOf(code);
    return language && !language->textColumn.isEmpty() ? language->textColumn : u"ENG"_s;
}

} // namespace

LanguagePack::LanguagePack(const core::Paths &paths, core::RunLog &log, core::Prompts &prompts,
                           const core::Settings &settings, quint16 systemLanguageId)
    : m_paths(paths), m_log(log), m_prompts(prompts), m_settings(settings),
      m_systemLanguageId(systemLanguageId)
{}

void LanguagePack::iniLanguage()
{
    m_log.trap("iniLanguage"_L1, [this] {
        m_state.osLanguage = GetOsDefaultLanguage(m_systemLanguageId, m_log);
        m_state.osLanguageId = languageIdDigits(m_systemLanguageId);
        m_state.code = DecideLanguage(m_state.osLanguage, m_settings.record.LanguageSetting.text());
        m_state.font = fontChoice(m_state.code);
        load();
        if (!isFile(m_paths.LangFile)) { // a language with a file of its own has its texts all the same
            m_prompts.tell(u"No Lang.mdb file found! path = "_s + m_paths.LangFile + u"\n\n"_s +
                           ShownTexts(*this).Lms(u"LangFileMissing"_s));
        }
    });
}

void LanguagePack::load()
{
    m_texts.clear();
    m_systemTexts.clear();
    m_locked = false;
    const bool whole = m_log.trap("Load LangPack"_L1, [this] {
        try {
            read(m_state.code, m_texts);
        } catch (const core::Error &error) {
            m_locked = store::tellsOfLock(error);
            throw;
        }
    });
    if (!whole || m_state.code == "USER"_L1) {
        loadSystemTexts();
    }
    const QString file = fileOf(m_state.code);
    const bool missingWasTold = file == m_paths.LangFile && !isFile(file);
    m_unreadable = !whole && !m_locked && !missingWasTold ? file : QString();
}

void LanguagePack::tellUnreadable()
{
    if (const QString file = std::exchange(m_unreadable, {}); !file.isEmpty()) {
        m_prompts.tell(ShownTexts(*this).Lms(u"LanguageFileDamaged"_s) + u'\n' + file);
    }
}

bool LanguagePack::retry()
{
    if (store::isLocked(fileOf(m_state.code))) {
        return false;
    }
    load();
    return !m_locked;
}

void LanguagePack::loadSystemTexts()
{
    const QString code = DecideLanguage(m_state.osLanguage, {});
    if (code != m_state.code) {
        m_log.trap("Load LangPack"_L1, [&] { read(code, m_systemTexts); });
    }
}

// A language file overrides "Lang.mdb" for its language.
QString LanguagePack::fileOf(const QString &code) const
{
    if (code == "USER"_L1) {
        return m_paths.UserLangFile;
    }
    const QString path = m_paths.StartFolder + QDir::separator() + code + u".lan"_s;
    return languageOf(code) && isFile(path) ? path : m_paths.LangFile;
}

void LanguagePack::read(const QString &code, Texts &texts) const
{
    constexpr qsizetype usualRows = 512;
    texts.reserve(usualRows);
    const QString file = fileOf(code);
    const QString select = file == m_paths.LangFile
                               ? u"select [id],["_s + textColumn(code) + u"],[ENG] from Lang"_s
                               : u"select [item],[userlanguage],[english] from Language"_s;
    store::Database database(file, store::Database::Mode::ReadOnly);
    database.forEachRow(select, [&texts](const store::Row &row) {
        const QString key = row.text(0).toUpper();
        if (!texts.contains(key)) {
            const QString text = row.text(1);
            texts.insert(key, text.isEmpty() ? row.text(2) : text);
        }
    });
}

QString LanguagePack::Lms(const QString &key) const
{
    return m_texts.value(key.toUpper());
}

QString LanguagePack::systemText(const QString &key) const
{
    return m_systemTexts.value(key.toUpper());
}

} // namespace language
