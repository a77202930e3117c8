#include "messages/forms/MessageWindows.h"

using namespace Qt::StringLiterals;

namespace messages {

MessageWindows::MessageWindows(const Context &context)
    : m_context(context),
      m_send([this] { return new frmSendSMS(m_context.forms, m_context.codePage, m_draft); }), m_show([this] {
          m_inbox.page(m_inbox.count()); // wherever the operator had leafed to in the last one
          return new frmShowSMS(m_context.forms, m_inbox, [this] { notifyUnread(); });
      })
{}

void MessageWindows::showSend()
{
    m_send.get().bringToFront();
}

void MessageWindows::showReceived(const QString &text, Filing filing)
{
    m_inbox.add(m_context.forms.log.timeStamp(), text, filing);
    m_screen.schedule();
}

void MessageWindows::update()
{
    m_show.get().showMessages();
    notifyUnread();
}

void MessageWindows::markAllSeen()
{
    m_inbox.markAllSeen();
    notifyUnread();
}

bool MessageWindows::mayDropDraft()
{
    const bool may = m_draft.text.isEmpty() ||
                     m_context.forms.prompts.askOkCancel(m_context.forms.texts.Lms(u"MessageUnsent"_s), {});
    if (!may) {
        showSend();
    }
    return may;
}

void MessageWindows::notifyUnread()
{
    const int unread = m_inbox.unseen();
    if (std::exchange(m_told, unread) != unread && m_context.unreadChanged) {
        m_context.unreadChanged(unread);
    }
}

} // namespace messages
