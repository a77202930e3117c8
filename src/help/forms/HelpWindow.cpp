#include "help/forms/HelpWindow.h"

using namespace Qt::StringLiterals;

namespace help {

HelpWindow::HelpWindow(const Context &context)
    : m_context(context),
      m_texts(context.forms.paths, context.forms.log, context.forms.texts, context.forms.prompts),
      m_form([this] { return new frmHelp(m_context.forms); })
{}

void HelpWindow::ShowHelp(const QString &helpId)
{
    m_context.forms.log.trap("ShowHelp"_L1, [&] {
        const std::optional<QString> text = m_texts.ReadHelp(m_context.language.code, helpId);
        m_form.get().setText(text);
        m_form.get().bringToFront();
    });
}

} // namespace help
