#include "notes/PrintNotePad.h"

using namespace Qt::StringLiterals;

namespace notes {

void PrintNotePad(core::RunLog &log, core::Printer &printer, const core::TextLookup &texts,
                  const language::LanguageState &language, const QString &report, QWidget *askedBy)
{
    log.trap("PrintNotePad"_L1, [&] {
        if (!report.isEmpty()) {
            printer.print({texts.Lms(u"438"_s), report, language.font.families(),
                           language::layoutDirection(language.code) == Qt::RightToLeft},
                          askedBy);
        }
    });
}

} // namespace notes
