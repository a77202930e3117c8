#pragma once

#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/Shell.h"

namespace notes {

/// Saves a text to a file that the operator chooses, in UTF-8, and opens it in the system's text editor; when
/// the operator cancels, the editor opens without a file. Nothing at all for a text of blanks.
void ExportText(core::RunLog &log, const core::Paths &paths, core::Prompts &prompts, core::Shell &shell,
                const core::TextLookup &texts, const QString &text);

} // namespace notes
