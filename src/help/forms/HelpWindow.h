#pragma once

#include "appearance/FormContext.h"
#include "appearance/OneWindow.h"
#include "help/HelpTexts.h"
#include "help/forms/frmHelp.h"
#include "language/LanguageChoice.h"

namespace help {

/// The one window in which all help pages are shown.
class HelpWindow
{
public:
    struct Context
    {
        appearance::FormContext forms;
        const language::LanguageState &language;
    };

    explicit HelpWindow(const Context &context);

    /// Shows a page in the current language, in front of the other windows.
    void ShowHelp(const QString &helpId);

private:
    Context m_context;
    HelpTexts m_texts;
    appearance::OneWindow<frmHelp> m_form;
};

} // namespace help
