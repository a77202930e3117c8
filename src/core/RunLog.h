#pragma once

#include "core/Clock.h"
#include "core/Error.h"
#include "core/Paths.h"
#include "core/ProcessValues.h"

#include <QString>

#include <utility>

namespace core {

/// The on-screen copy of the run log: the main window's run information box.
class RunInfoBox
{
public:
    virtual ~RunInfoBox() = default;
    virtual void clear() = 0;
    virtual qsizetype length() const = 0;
    /// One line with its line end.
    virtual void append(const QString &line) = 0;
};

/// The run log file "Runlog.txt": UTF-8, one time-stamped line an entry (docs/formats.md). Opened, appended
/// to and closed for each entry; failures to write are swallowed.
class RunLog
{
public:
    /// All three must outlive the log; the paths may still be filled in later.
    RunLog(const Paths &paths, const Clock &clock, const ProcessValues &values);

    /// Bytes of the file, and characters of the on-screen copy, beyond which each is begun anew.
    static constexpr qint64 sizeLimit = 20000;

    void setRunInfoBox(RunInfoBox *box) { m_box = box; }

    /// Line breaks inside `message` are written as their visible symbols, so an entry is always one line.
    void WriteRunLog(const QString &message);

    /// Deletes the log at the operator's wish; false, with an entry, where the file stays.
    bool erase();

    /// Writes prefix + number and description; the prefix of a procedure is "!" + name + " ".
    void reportError(const QString &prefix, const Error &error);

    /// Runs one given procedure: what it throws is logged under its name, and `fallback` is returned instead.
    template <typename Result, typename Work>
    Result trap(QLatin1StringView name, Result fallback, Work &&work)
    {
        try {
            return std::forward<Work>(work)();
        } catch (...) {
            reportCaught(u'!' + name + u' ');
        }
        return fallback;
    }

    /// For procedures without a result: true when the work ended without an error.
    template <typename Work>
    bool trap(QLatin1StringView name, Work &&work)
    {
        return trap(name, false, [&] {
            std::forward<Work>(work)();
            return true;
        });
    }

    /// The same for the few procedures whose errors are logged with another prefix than "!" + name + " ".
    template <typename Work>
    bool trapAs(QLatin1StringView prefix, Work &&work)
    {
        try {
            std::forward<Work>(work)();
            return true;
        } catch (...) {
            reportCaught(QString(prefix));
        }
        return false;
    }

    /// "YYYY-MM-DD HH:MM:SS" of the clock's now.
    QString timeStamp();

private:
    /// A message as it stands in the box and in the file.
    struct Entry
    {
        QString message;
        qint64 second = -1;
        QString line;
        QByteArray bytes;
    };

    void reportCaught(const QString &prefix);
    const Entry &entryOf(const QString &message);
    void eraseIfTooLong(qint64 size);
    void show(const QString &line);

    const Paths &m_paths;
    const Clock &m_clock;
    const ProcessValues &m_values;
    RunInfoBox *m_box = nullptr;
    qint64 m_stampSecond = -1;
    QString m_stamp;
    Entry m_last; ///< a call is logged when it arrives and again when it is handled
};

} // namespace core
