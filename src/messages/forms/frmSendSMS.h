#pragma once

#include "appearance/ComboLists.h"
#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "messages/MessageSender.h"

#include <memory>

namespace Ui {
class frmSendSMS;
}

namespace messages {

/// A message that was typed and not sent yet.
struct Draft
{
    QString sendTo;
    QString text;
};

/// Composes a short message. The form stays open with its text, so that it may be sent to the next colleague;
/// deletes itself when closed.
class frmSendSMS : public appearance::Form
{
    Q_OBJECT

public:
    /// `draft` fills the form, keeps what is not sent when it closes, and must outlive it, as must the code
    /// page.
    frmSendSMS(const appearance::FormContext &context, const core::CodePage &codePage, Draft &draft);
    ~frmSendSMS() override;

protected:
    void closing() override;

private:
    void txtSendTo_LostFocus();
    void send();
    void showOutcome(const QString &sendTo, MessageSender::Outcome outcome);
    Draft typed() const;

    appearance::FormContext m_context;
    Draft &m_draft;
    MessageSender m_sender;
    appearance::ComboLists m_lists;
    std::unique_ptr<Ui::frmSendSMS> m_ui;
    QString m_sentText;
};

} // namespace messages
