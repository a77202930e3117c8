#include "messages/Inbox.h"

#include <algorithm>

namespace messages {

void Inbox::add(const QString &time, const QString &text, Filing filing)
{
    const bool follows = m_messages.empty() || m_place == count() - 1;
    m_messages.push_back({time, text, filing});
    if (m_messages.size() > kept) {
        m_messages.pop_front();
        m_place = std::max(m_place - 1, 0);
    }
    m_place = follows ? count() - 1 : m_place;
}

void Inbox::page(int messages)
{
    m_place = std::clamp(m_place + messages, 0, std::max(count() - 1, 0));
}

void Inbox::markSeen()
{
    if (!isEmpty()) {
        m_messages[size_t(m_place)].seen = true;
    }
}

void Inbox::markAllSeen()
{
    for (Message &message : m_messages) {
        message.seen = true;
    }
}

int Inbox::unseen() const
{
    return int(std::ranges::count_if(m_messages, [](const Message &message) { return !message.seen; }));
}

} // namespace messages
