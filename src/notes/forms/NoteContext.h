#pragma once

#include "appearance/FormContext.h"
#include "core/Printer.h"
#include "language/LanguageChoice.h"

namespace notes {

/// What the windows of call notes get from the program; all of it outlives them.
struct NoteContext
{
    appearance::FormContext forms;
    core::Printer &printer;
    const language::LanguageState &language;
};

} // namespace notes
