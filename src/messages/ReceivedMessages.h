#pragma once

#include "core/Clock.h"
#include "core/Paths.h"
#include "core/RunLog.h"
#include "core/platform.h"

#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

namespace messages {

/// Whether received messages reach their logs.
enum class Filing {
    Works,
    Fails,         ///< a log cannot be written
    DiskNearlyFull ///< nothing is written, so that what the desk cannot do without still finds room
};

/// The key of the sentence that tells the operator; empty where there is nothing to tell.
QString filingKey(Filing filing);

/// Files the short messages that the server passes on (docs/formats.md): in the running log and in the
/// month's.
class ReceivedMessages
{
public:
    /// The bytes that are free for a folder, negative where that is not known.
    using FreeBytes = std::function<qint64(const QString &folder)>;

    /// All must outlive it.
    ReceivedMessages(const core::Paths &paths, core::RunLog &log, const core::Clock &clock,
                     FreeBytes freeBytes = core::platform::freeBytes);

    struct Message
    {
        QString text;
        QString entry; ///< as the logs hold it
        Filing filing = Filing::Works;
    };

    /// Below so many free bytes messages are not filed.
    static constexpr qint64 reserve = 100'000'000;

    /// Logs a received record. Nothing for a record without a text (see smsText), and, with an entry in the
    /// run log, for one too short to hold its delimiters.
    std::optional<Message> ShowSmallMessage(const QString &record);
    /// Deletes the running log at the operator's wish; the months' logs stay. False, with an entry in the run
    /// log, where the file stays.
    bool erase();

    /// `changed` is called when messages no longer reach their logs, and when they do again, which is looked
    /// after every few seconds.
    void onFilingChanged(std::function<void(Filing)> changed) { m_changed = std::move(changed); }

private:
    QString monthFile() const;
    bool hasRoom() const;
    Filing file(const QString &entry);
    void lookAgain();
    void setFiling(Filing filing);

    const core::Paths &m_paths;
    core::RunLog &m_log;
    const core::Clock &m_clock;
    FreeBytes m_freeBytes;
    std::function<void(Filing)> m_changed;
    Filing m_filing = Filing::Works;
    QTimer m_again;
};

} // namespace messages
