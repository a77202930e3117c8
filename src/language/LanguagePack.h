#pragma once

#include "core/Paths.h"
#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "core/TextLookup.h"
#include "core/platform.h"
#include "language/LanguageChoice.h"

#include <QHash>

namespace language {

/// The texts of the current language, and which language that is. Chosen and loaded once, at start
/// (docs/formats.md has the two kinds of files).
class LanguagePack : public core::TextLookup
{
public:
    /// All of them must outlive the pack.
    LanguagePack(const core::Paths &paths, core::RunLog &log, core::Prompts &prompts,
                 const core::Settings &settings,
                 quint16 systemLanguageId = core::platform::systemLanguageId());

    /// Decides the language and loads its texts; a missing "Lang.mdb" is told to the operator. Afterwards the
    /// state is always complete, while texts that could not be read are just missing.
    void iniLanguage();

    /// The key's letter case does not matter; of equal keys the first row's text is given.
    QString Lms(const QString &key) const override;

    const LanguageState &state() const { return m_state; }

private:
    void load();
    QString languageFile() const;
    void loadFromLangFile();
    void loadFromLanguageFile(const QString &path);
    void add(const QString &key, const QString &text, const QString &english);

    const core::Paths &m_paths;
    core::RunLog &m_log;
    core::Prompts &m_prompts;
    const core::Settings &m_settings;
    quint16 m_systemLanguageId;
    LanguageState m_state;
    QHash<QString, QString> m_texts; ///< by upper-cased key
};

} // namespace language
