#pragma once

#include "core/Paths.h"
#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/TextLookup.h"

#include <QString>

#include <optional>

namespace help {

/// The help pages, a database file for each language: "Help/Help" + code + ".chlp" in the start folder.
class HelpTexts
{
public:
    /// All must outlive it.
    HelpTexts(const core::Paths &paths, core::RunLog &log, const core::TextLookup &texts,
              core::Prompts &prompts)
        : m_paths(paths), m_log(log), m_texts(texts), m_prompts(prompts)
    {}

    /// The page of a help ID as plain text, empty without one. Nothing where the file is missing or cannot be
    /// read, which the operator is told.
    std::optional<QString> ReadHelp(const QString &languageCode, const QString &helpId);

private:
    QString read(const QString &path, const QString &helpId) const;
    void tell(const core::Error &error, const QString &path);

    const core::Paths &m_paths;
    core::RunLog &m_log;
    const core::TextLookup &m_texts;
    core::Prompts &m_prompts;
};

} // namespace help
