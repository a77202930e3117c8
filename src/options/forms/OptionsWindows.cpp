#include "options/forms/OptionsWindows.h"

#include "appearance/BringToFront.h"

namespace options {

OptionsWindows::~OptionsWindows()
{
    delete m_editor;
    delete m_options;
}

void OptionsWindows::showOptions()
{
    frmOptions *form = m_options;
    if (form == nullptr || !form->isVisible()) { // one that was closed is about to be deleted
        const appearance::FormContext &forms = m_context.forms;
        const OptionsLogic::Context options = {forms.paths, forms.log,     m_context.settings,
                                               forms.texts, forms.prompts, m_context.effects};
        form = new frmOptions(forms, options, [this] { showLanguageEditor(); });
        m_options = form;
        QObject::connect(form, &frmOptions::languageSaved, form, [this] {
            if (m_editor != nullptr) {
                m_editor->showLanguage();
            }
        });
    }
    appearance::bringToFront(*form);
}

void OptionsWindows::showLanguageEditor()
{
    frmLanguageEditor *form = m_editor;
    if (form == nullptr || !form->isVisible()) { // likewise
        form = new frmLanguageEditor(m_context.forms, m_context.settings);
        m_editor = form;
        QObject::connect(form, &frmLanguageEditor::languageSaved, form, [this] {
            if (m_options != nullptr) {
                m_options->showLanguage();
            }
        });
    }
    appearance::bringToFront(*form);
}

} // namespace options
