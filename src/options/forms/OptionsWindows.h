#pragma once

#include "appearance/FormContext.h"
#include "appearance/OneWindow.h"
#include "options/OptionsEffects.h"
#include "options/forms/frmLanguageEditor.h"
#include "options/forms/frmOptions.h"

namespace options {

/// The options dialog and the language editor.
class OptionsWindows
{
public:
    struct Context
    {
        appearance::FormContext forms;
        core::Settings &settings;
        OptionsEffects &effects;
    };

    explicit OptionsWindows(const Context &context);

    /// Both open their window or bring it to the front.
    void showOptions() { m_options.get().bringToFront(); }
    void showLanguageEditor() { m_editor.get().bringToFront(); }

private:
    frmOptions *newOptions();
    frmLanguageEditor *newEditor();

    Context m_context;
    appearance::OneWindow<frmOptions> m_options;
    appearance::OneWindow<frmLanguageEditor> m_editor;
};

} // namespace options
