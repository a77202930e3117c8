#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "messages/Inbox.h"

#include <functional>
#include <memory>

namespace Ui {
class frmShowSMS;
}

namespace messages {

/// Shows the messages that came in, the newest first to be seen. It comes up without taking the keyboard from
/// what the operator types, and deletes itself when closed.
class frmShowSMS : public appearance::Form
{
    Q_OBJECT

public:
    /// `seen` is called when a message has come before the operator; the inbox must outlive the form.
    frmShowSMS(const appearance::FormContext &context, Inbox &inbox, std::function<void()> seen);
    ~frmShowSMS() override;

    /// Shows the inbox as it now is; the form comes up above the others.
    void showMessages();

protected:
    void closing() override { markSeen(); }
    bool event(QEvent *event) override;

private:
    void page(int messages);
    void fill();
    void markSeen();
    void place();

    appearance::FormContext m_context;
    Inbox &m_inbox;
    std::function<void()> m_seen;
    std::unique_ptr<Ui::frmShowSMS> m_ui;
    QString m_shown;
};

} // namespace messages
