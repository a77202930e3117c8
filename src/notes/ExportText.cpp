#include "notes/ExportText.h"

#include "core/AtomicFile.h"

using namespace Qt::StringLiterals;

namespace notes {

void ExportText(core::RunLog &log, const core::Paths &paths, core::Prompts &prompts, core::Shell &shell,
                const core::TextLookup &texts, const QString &text)
{
    if (QStringView(text).trimmed().isEmpty()) {
        return;
    }
    const QString file = prompts.saveFileName(u"CallNotes.txt"_s, u"(*.txt)|*.txt|(*.*)|*.*"_s);
    const bool written = log.trap("ExportText"_L1, [&] {
        if (!file.isEmpty()) {
            core::saveAtomically(file, text.toUtf8() + "\r\n");
        }
    });
    core::RecoverCurrentPath(paths);
    if (written) {
        shell.editText(file);
    } else {
        prompts.tell(texts.Lms(u"ReportNotSaved"_s));
    }
}

} // namespace notes
