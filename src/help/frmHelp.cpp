#include "help/frmHelp.h"

#include "appearance/ThemedIcons.h"
#include "ui_frmHelp.h"

using namespace Qt::StringLiterals;

namespace help {

frmHelp::frmHelp(const appearance::FormContext &context)
    : QDialog(nullptr, Qt::Window), m_ui(std::make_unique<Ui::frmHelp>()), m_setup(context.services)
{
    constexpr qreal margin = 24; // lines that begin at the frame are hard to read
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this);
    m_ui->txtHelp->document()->setDocumentMargin(margin);
    m_ui->txtHelp->setPlaceholderText(context.texts.Lms(u"NoHelpPage"_s));
}

frmHelp::~frmHelp()
{
    m_setup.unload();
}

void frmHelp::setText(const QString &text)
{
    m_ui->txtHelp->setPlainText(text);
    m_ui->txtHelp->moveCursor(QTextCursor::Start);
}

void frmHelp::done(int result)
{
    m_setup.rememberGeometry(*this);
    QDialog::done(result);
}

} // namespace help
