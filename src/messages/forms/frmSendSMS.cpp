#include "messages/forms/frmSendSMS.h"

#include "appearance/FieldLeft.h"
#include "appearance/Keys.h"
#include "appearance/MemoBox.h"
#include "core/TextUtilities.h"
#include "ui_frmSendSMS.h"

#include <QCompleter>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace messages {

frmSendSMS::frmSendSMS(const appearance::FormContext &context, const core::CodePage &codePage, Draft &draft)
    : Form(context.services), m_context(context), m_draft(draft),
      m_sender(context.server, codePage, context.log),
      m_lists(context.paths, context.log, context.services.translator),
      m_ui(std::make_unique<Ui::frmSendSMS>())
{
    m_ui->setupUi(this);
    load();
    m_lists.ReadComboList(*m_ui->txtSendTo);
    // A list without completion inside the line: "Ann" must not turn into "Anna" while it is typed.
    m_ui->txtSendTo->completer()->setCompletionMode(QCompleter::PopupCompletion);
    m_ui->txtSendTo->completer()->setCaseSensitivity(Qt::CaseSensitive);
    m_ui->txtSendTo->setEditText(m_draft.sendTo);
    m_ui->txtSendTo->lineEdit()->selectAll(); // another name is typed over it
    m_ui->txtSMS->setText(m_draft.text);
    m_ui->txtSMS->moveCursor(QTextCursor::End);
    appearance::onLeft(*m_ui->txtSendTo, *this, [this] { txtSendTo_LostFocus(); });
    connect(m_ui->Command6, &QPushButton::clicked, this, &frmSendSMS::send);
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    appearance::onKeys(*this, QKeySequence(Qt::CTRL | Qt::Key_Return), [this] { send(); });
    offerHelp(m_context.navigator, u"Popup_Messages"_s);
}

frmSendSMS::~frmSendSMS() = default;

void frmSendSMS::closing()
{
    const Draft draft = typed();
    m_draft = draft.text == m_sentText ? Draft() : draft;
}

Draft frmSendSMS::typed() const
{
    // Replaces no-break spaces, which not every code page has.
    return {m_ui->txtSendTo->currentText(), m_ui->txtSMS->text().replace(QChar::Nbsp, u' ')};
}

void frmSendSMS::txtSendTo_LostFocus()
{
    if (m_ui->txtSendTo->currentText().trimmed().isEmpty()) {
        m_ui->txtSendTo->setEditText(u"ALL"_s);
    }
    m_lists.SaveComboItem(*m_ui->txtSendTo);
}

// The shortcut may come while the destination is still being typed.
void frmSendSMS::send()
{
    txtSendTo_LostFocus();
    const Draft message = typed();
    if (message.text.trimmed().isEmpty()) {
        m_ui->lblSent->setText(m_context.texts.Lms(u"MessageEmpty"_s));
        m_ui->txtSMS->setFocus();
        return;
    }
    const MessageSender::Outcome outcome = m_sender.SendSMS(message.sendTo, message.text);
    if (outcome.sent) {
        m_sentText = message.text;
        showOutcome(message.sendTo, outcome);
    } else {
        m_ui->lblSent->setText(m_context.texts.Lms(u"MessageNotSent"_s));
    }
}

void frmSendSMS::showOutcome(const QString &sendTo, MessageSender::Outcome outcome)
{
    const QString separator = m_context.values.WordSeparator;
    QStringList lines = {m_context.texts.Lms(u"MessageHandedOver"_s) + separator + core::shownText(sendTo) +
                         u" ("_s + m_context.clock.now().toString(u"HH:mm:ss"_s) + u')'};
    if (outcome.misdirected) {
        lines.append(m_context.texts.Lms(u"MessageToAltered"_s));
    }
    if (outcome.altered) {
        lines.append(m_context.texts.Lms(u"MessageAltered"_s));
    }
    m_ui->lblSent->setText(lines.join(u'\n'));
    if (outcome.cut) {
        m_context.prompts.tell(m_context.texts.Lms(u"MessageCut"_s));
    }
}

} // namespace messages
