#include "language/LanguagePack.h"

#include "core/TextUtilities.h"
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

/// The column of table "Lang" that holds a language's texts.
QString textColumn(const QString &code)
{
    if (code == "ID"_L1) {
        return u"id"_s; // every text is its own key, for translators
    }
    return core::MyIn(code, "CHS"_L1, "CHT"_L1) ? code : u"ENG"_s;
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
        if (!isFile(m_paths.LangFile)) {
            m_prompts.tell(u"No Lang.mdb file found! path = "_s + m_paths.LangFile);
        }
        m_state.osLanguage = GetOsDefaultLanguage(m_systemLanguageId, m_log);
        m_state.osLanguageId = languageIdDigits(m_systemLanguageId);
        m_state.code = DecideLanguage(m_state.osLanguage, m_settings.record.LanguageSetting.text());
        m_state.font = fontChoice(m_state.code);
        load();
    });
}

void LanguagePack::load()
{
    constexpr qsizetype usualRows = 512;
    m_texts.clear();
    m_texts.reserve(usualRows);
    // What was read before a failure stays: half the texts serve the operator better than none.
    m_log.trap("Load LangPack"_L1, [this] {
        const QString file = languageFile();
        if (file.isEmpty()) {
            loadFromLangFile();
        } else {
            loadFromLanguageFile(file);
        }
    });
}

// A language file overrides "Lang.mdb" for its language; empty when there is none.
QString LanguagePack::languageFile() const
{
    if (m_state.code == "USER"_L1) {
        return m_paths.UserLangFile;
    }
    if (!isLanguageCode(m_state.code)) {
        return {};
    }
    const QString path = m_paths.StartFolder + QDir::separator() + m_state.code + u".lan"_s;
    return isFile(path) ? path : QString();
}

void LanguagePack::loadFromLangFile()
{
    store::Database database(m_paths.LangFile, store::Database::Mode::ReadOnly);
    const QString select = u"select [id],["_s + textColumn(m_state.code) + u"],[ENG] from Lang"_s;
    database.forEachRow(select,
                        [this](const store::Row &row) { add(row.text(0), row.text(1), row.text(2)); });
}

void LanguagePack::loadFromLanguageFile(const QString &path)
{
    store::Database database(path, store::Database::Mode::ReadOnly);
    database.forEachRow(u"select [item],[userlanguage],[english] from Language"_s,
                        [this](const store::Row &row) { add(row.text(0), row.text(1), row.text(2)); });
}

void LanguagePack::add(const QString &key, const QString &text, const QString &english)
{
    const QString folded = key.toUpper();
    if (!m_texts.contains(folded)) {
        m_texts.insert(folded, text.isEmpty() ? english : text);
    }
}

QString LanguagePack::Lms(const QString &key) const
{
    return m_texts.value(key.toUpper());
}

} // namespace language
