#pragma once

#include "core/Printer.h"
#include "core/RunLog.h"
#include "core/TextLookup.h"
#include "language/LanguageChoice.h"

namespace notes {

/// Hands a report to the printer in the language's font; an empty one is not printed.
void PrintNotePad(core::RunLog &log, core::Printer &printer, const core::TextLookup &texts,
                  const language::LanguageState &language, const QString &report, QWidget *askedBy);

} // namespace notes
