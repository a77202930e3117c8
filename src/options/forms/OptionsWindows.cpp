#include "options/forms/OptionsWindows.h"

namespace options {

OptionsWindows::OptionsWindows(const Context &context)
    : m_context(context), m_options([this] { return newOptions(); }), m_editor([this] { return newEditor(); })
{}

frmOptions *OptionsWindows::newOptions()
{
    const appearance::FormContext &forms = m_context.forms;
    const OptionsLogic::Context options = {forms.paths, forms.log,     m_context.settings,
                                           forms.texts, forms.prompts, m_context.effects};
    auto *form = new frmOptions(forms, options, [this] { showLanguageEditor(); });
    QObject::connect(form, &frmOptions::languageSaved, form, [this] {
        if (frmLanguageEditor *editor = m_editor.ifOpen()) {
            editor->showLanguage();
        }
    });
    return form;
}

frmLanguageEditor *OptionsWindows::newEditor()
{
    auto *form = new frmLanguageEditor(m_context.forms, m_context.settings);
    QObject::connect(form, &frmLanguageEditor::languageSaved, form, [this] {
        if (frmOptions *options = m_options.ifOpen()) {
            options->showLanguage();
        }
    });
    return form;
}

} // namespace options
