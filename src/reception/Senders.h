#pragma once

#include "core/Clock.h"
#include "core/Paths.h"
#include "core/RunLog.h"
#include "core/TextLookup.h"
#include "reception/AddressList.h"

#include <QHash>
#include <QTimer>

#include <optional>

namespace reception {

/// Who may speak to the program, and be answered: whom "Senders.txt" lists (docs/formats.md), everybody where
/// there is no such file. Follows the file, which is looked at once a second at most.
class Senders
{
public:
    /// All must outlive it. Reads nothing yet.
    Senders(const core::Paths &paths, core::RunLog &log, const core::Clock &clock);

    /// Whether a datagram is let in; one that is not is counted, and told to the run log once a minute.
    bool admit(const QHostAddress &sender);
    /// Tells the run log at once of all that was counted and not told yet; call before the program ends.
    void logCounted();
    /// The address to which everything goes out: that of the settings, 0.0.0.0 where nobody was heard. Throws
    /// core::Error for what is no address and for one that is not let in.
    QHostAddress receiver(const QString &lastSenderIp);
    /// What the operator is to know about the list in force (see sendersTrouble).
    QString trouble(const core::TextLookup &texts);

    /// The file's text with LF at its line ends, empty without one; nothing, with an entry in the run log,
    /// where it cannot be read.
    std::optional<QString> text() const;
    /// Writes the file, or removes it for a blank text; false, with an entry in the run log, where that
    /// fails.
    bool save(const QString &text);

private:
    /// By which a change of the file is seen; size -1: there is none.
    struct Stamp
    {
        qint64 modified = 0;
        qint64 size = -1;
        bool operator==(const Stamp &) const = default;
    };
    struct Refused
    {
        qint64 loggedAt = 0; ///< second
        int count = 0;       ///< since then
    };

    void follow();
    void read();
    QString contents() const;
    void refuse(const QHostAddress &sender);
    void logRefused(const QHostAddress &sender, Refused &refused) const;
    void logDue();
    bool isMinuteOver(const Refused &refused) const;

    const core::Paths &m_paths;
    core::RunLog &m_log;
    const core::Clock &m_clock;
    std::optional<AddressList> m_list; ///< in force; empty where the file cannot be read
    Stamp m_read;
    Stamp m_unreadable; ///< which was told
    qint64 m_lookedAt = -1;
    QHash<QHostAddress, Refused> m_refused; ///< null address: all others
    QTimer m_look;                          ///< runs while somebody stands there
};

/// What the operator is told about a list in force with lines that cannot be read, or that lets nobody in;
/// empty for any other.
QString sendersTrouble(const AddressList &list, const core::TextLookup &texts);

/// Why such a text is not saved as the list; empty for any other, and for a blank one, which lets everybody
/// in.
QString sendersRefusal(const QString &text, const core::TextLookup &texts);

} // namespace reception
