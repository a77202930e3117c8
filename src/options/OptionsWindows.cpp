#include "options/OptionsWindows.h"

#include "appearance/BringToFront.h"

namespace options {

OptionsWindows::~OptionsWindows()
{
    delete m_editor;
    delete m_options;
}

void OptionsWindows::showOptions()
{
    if (m_options == nullptr) {
        const appearance::FormContext &forms = m_context.forms;
        const OptionsLogic::Context options = {forms.paths, forms.log,     m_context.settings,
                                               forms.texts, forms.prompts, m_context.effects};
        m_options = new frmOptions(forms, options, [this] { showLanguageEditor(); });
    }
    appearance::bringToFront(*m_options);
}

void OptionsWindows::showLanguageEditor()
{
    if (m_editor == nullptr) {
        m_editor = new frmLanguageEditor(m_context.forms, m_context.settings, [this] {
            if (m_options != nullptr) {
                m_options->showLanguage();
            }
        });
    }
    appearance::bringToFront(*m_editor);
}

} // namespace options
