#include "help/forms/frmHelp.h"

#include "appearance/ThemedIcons.h"
#include "ui_frmHelp.h"

using namespace Qt::StringLiterals;

namespace help {

frmHelp::frmHelp(const appearance::FormContext &context)
    : QDialog(nullptr, Qt::Window), m_noPage(context.texts.Lms(u"NoHelpPage"_s)),
      m_ui(std::make_unique<Ui::frmHelp>()), m_setup(context.services)
{
    constexpr qreal margin = 24; // lines that begin at the frame are hard to read
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this);
    m_ui->txtHelp->document()->setDocumentMargin(margin);
}

frmHelp::~frmHelp()
{
    m_setup.unload();
}

void frmHelp::setText(const std::optional<QString> &text)
{
    m_ui->txtHelp->setPlaceholderText(text ? m_noPage : QString());
    m_ui->txtHelp->setPlainText(text.value_or(QString()));
    m_ui->txtHelp->moveCursor(QTextCursor::Start);
}

void frmHelp::done(int result)
{
    m_setup.rememberGeometry(*this);
    QDialog::done(result);
}

} // namespace help
