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
    /// Tells once of a file that could not be read. Calls wait for the answer, so this comes when they can.
    void tellUnreadable();
    /// Another program has locked the file of texts. retry() reads it once it is free.
    bool isLocked() const { return m_locked; }
    /// False while the file is still locked.
    bool retry();

    /// The key's letter case does not matter; of equal keys the first row's text is given.
    QString Lms(const QString &key) const override;

    /// What stands in where the operator's own translation lacks a text, or its file cannot be read: the text
    /// of the operating system's language, empty where that has none.
    QString systemText(const QString &key) const;

    const LanguageState &state() const { return m_state; }

private:
    using Texts = QHash<QString, QString>; ///< by upper-cased key

    void load();
    void loadSystemTexts();
    /// The file that holds the texts of a language, and those texts. What was read before a failure stays.
    QString fileOf(const QString &code) const;
    void read(const QString &code, Texts &texts) const;

    const core::Paths &m_paths;
    core::RunLog &m_log;
    core::Prompts &m_prompts;
    const core::Settings &m_settings;
    quint16 m_systemLanguageId;
    LanguageState m_state;
    Texts m_texts;
    Texts m_systemTexts; ///< of the system's language, where they stand in
    bool m_locked = false;
    QString m_unreadable; ///< the file that is still to be told of
};

} // namespace language
