#pragma once

#include "messages/ReceivedMessages.h"

#include <QString>

#include <deque>

namespace messages {

/// The short messages received in this run that the operator can page through; those beyond the newest
/// hundred stand in the logs only.
class Inbox
{
public:
    struct Message
    {
        QString time;
        QString text;
        Filing filing = Filing::Works; ///< whether the logs hold it, too
        bool seen = false;
    };

    /// The new message becomes the current one, unless the operator has paged back.
    void add(const QString &time, const QString &text, Filing filing);
    /// Pages by so many messages, within the list.
    void page(int messages);
    /// The operator has the current message before him.
    void markSeen();
    void markAllSeen();

    bool isEmpty() const { return m_messages.empty(); }
    int count() const { return int(m_messages.size()); }
    int place() const { return m_place; } ///< of the current message, 0 is the oldest
    const Message &current() const { return m_messages[size_t(m_place)]; }
    int unseen() const;

private:
    static constexpr size_t kept = 100;

    std::deque<Message> m_messages;
    int m_place = 0;
};

} // namespace messages
