#pragma once

#include "core/Paths.h"
#include "core/Prompts.h"
#include "core/RunLog.h"

#include <QString>

namespace help {

/// The help pages, a database file for each language: "Help/Help" + code + ".chlp" in the start folder.
class HelpTexts
{
public:
    /// All must outlive it.
    HelpTexts(const core::Paths &paths, core::RunLog &log, core::Prompts &prompts)
        : m_paths(paths), m_log(log), m_prompts(prompts)
    {}

    /// The page of a help ID as plain text, empty without one. A missing file is told to the operator; one
    /// that cannot be read is logged.
    QString ReadHelp(const QString &languageCode, const QString &helpId);

private:
    QString read(const QString &path, const QString &helpId) const;

    const core::Paths &m_paths;
    core::RunLog &m_log;
    core::Prompts &m_prompts;
};

} // namespace help
