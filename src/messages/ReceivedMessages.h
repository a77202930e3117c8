#pragma once

#include "core/Clock.h"
#include "core/Paths.h"
#include "core/RunLog.h"

#include <QString>

#include <optional>

namespace messages {

/// Files the short messages that the server passes on (docs/formats.md): in the running log and in the
/// month's.
class ReceivedMessages
{
public:
    /// All must outlive it.
    ReceivedMessages(const core::Paths &paths, core::RunLog &log, const core::Clock &clock)
        : m_paths(paths), m_log(log), m_clock(clock)
    {}

    struct Message
    {
        QString text;
        QString entry; ///< as the logs hold it
    };

    /// Logs a received record. Nothing for a record without a text (see smsText), and, with an entry in the
    /// run log, for one too short to hold its delimiters.
    std::optional<Message> ShowSmallMessage(const QString &record);
    /// Deletes the running log at the operator's wish; the months' logs stay. False, with an entry in the run
    /// log, where the file stays.
    bool erase();

private:
    const core::Paths &m_paths;
    core::RunLog &m_log;
    const core::Clock &m_clock;
};

} // namespace messages
