#include "help/forms/frmHelp.h"

#include "ui_frmHelp.h"

using namespace Qt::StringLiterals;

namespace help {

frmHelp::frmHelp(const appearance::FormContext &context)
    : Form(context.services), m_noPage(context.texts.Lms(u"NoHelpPage"_s)),
      m_ui(std::make_unique<Ui::frmHelp>())
{
    constexpr qreal margin = 24; // lines that begin at the frame are hard to read
    m_ui->setupUi(this);
    load();
    m_ui->txtHelp->document()->setDocumentMargin(margin);
}

frmHelp::~frmHelp() = default;

void frmHelp::setText(const std::optional<QString> &text)
{
    m_ui->txtHelp->setPlaceholderText(text ? m_noPage : QString());
    m_ui->txtHelp->setPlainText(text.value_or(QString()));
    m_ui->txtHelp->moveCursor(QTextCursor::Start);
}

} // namespace help
