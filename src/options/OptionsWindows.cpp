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
    if (m_options == nullptr || !m_options->isVisible()) { // one that was closed is about to be deleted
        const appearance::FormContext &forms = m_context.forms;
        const OptionsLogic::Context options = {forms.paths, forms.log,     m_context.settings,
                                               forms.texts, forms.prompts, m_context.effects};
        m_options = new frmOptions(forms, options, [this] { showLanguageEditor(); });
        QObject::connect(m_options, &frmOptions::languageSaved, m_options, [this] {
            if (m_editor != nullptr) {
                m_editor->showLanguage();
            }
        });
    }
    appearance::bringToFront(*m_options);
}

void OptionsWindows::showLanguageEditor()
{
    if (m_editor == nullptr || !m_editor->isVisible()) { // likewise
        m_editor = new frmLanguageEditor(m_context.forms, m_context.settings);
        QObject::connect(m_editor, &frmLanguageEditor::languageSaved, m_editor, [this] {
            if (m_options != nullptr) {
                m_options->showLanguage();
            }
        });
    }
    appearance::bringToFront(*m_editor);
}

} // namespace options
