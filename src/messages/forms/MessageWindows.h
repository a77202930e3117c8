#pragma once

#include "appearance/FormContext.h"
#include "appearance/OneWindow.h"
#include "core/CodePage.h"
#include "core/FrameGate.h"
#include "messages/Inbox.h"
#include "messages/forms/frmSendSMS.h"
#include "messages/forms/frmShowSMS.h"

#include <functional>

namespace messages {

/// The windows of the short messages.
class MessageWindows
{
public:
    struct Context
    {
        appearance::FormContext forms;
        const core::CodePage &codePage;              ///< of the system
        std::function<void(int)> unreadChanged = {}; ///< with the number of messages nobody has seen yet
    };

    explicit MessageWindows(const Context &context);

    /// Opens the form that sends a message, or brings it to the front.
    void showSend();
    /// Shows the text of a received message, a burst of them at once, and whether the logs hold it.
    void showReceived(const QString &text, Filing filing = Filing::Works);
    /// The operator has read the messages in another place.
    void markAllSeen();
    /// Asks about a message that was typed and not sent; false, with the message shown, where it is to be
    /// kept.
    bool mayDropDraft();

private:
    void update();
    void notifyUnread();

    Context m_context;
    Inbox m_inbox;
    Draft m_draft;
    int m_told = 0; ///< the number last given to unreadChanged
    appearance::OneWindow<frmSendSMS> m_send;
    appearance::OneWindow<frmShowSMS> m_show;
    core::FrameGate m_screen{[this] { update(); }};
};

} // namespace messages
