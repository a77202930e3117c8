#pragma once

#include "appearance/FormContext.h"
#include "options/OptionsEffects.h"
#include "options/forms/frmLanguageEditor.h"
#include "options/forms/frmOptions.h"

#include <QPointer>

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

    explicit OptionsWindows(const Context &context) : m_context(context) {}
    ~OptionsWindows();
    Q_DISABLE_COPY_MOVE(OptionsWindows)

    /// Both open their window or bring it to the front.
    void showOptions();
    void showLanguageEditor();

private:
    Context m_context;
    QPointer<frmOptions> m_options;
    QPointer<frmLanguageEditor> m_editor;
};

} // namespace options
