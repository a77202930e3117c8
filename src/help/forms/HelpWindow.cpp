#include "help/forms/HelpWindow.h"

#include "appearance/BringToFront.h"

using namespace Qt::StringLiterals;

namespace help {

HelpWindow::HelpWindow(const Context &context)
    : m_context(context),
      m_texts(context.forms.paths, context.forms.log, context.forms.texts, context.forms.prompts)
{}

HelpWindow::~HelpWindow()
{
    delete m_form;
}

void HelpWindow::ShowHelp(const QString &helpId)
{
    m_context.forms.log.trap("ShowHelp"_L1, [&] {
        const std::optional<QString> text = m_texts.ReadHelp(m_context.language.code, helpId);
        if (m_form == nullptr) {
            m_form = new frmHelp(m_context.forms);
        }
        m_form->setText(text);
        appearance::bringToFront(*m_form);
    });
}

} // namespace help
