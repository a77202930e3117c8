#pragma once

#include "copies/CopyFolder.h"
#include "core/Background.h"
#include "core/Clock.h"
#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/TextLookup.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>

namespace copies {

/// Makes the day's copy of the desk, and whatever else of copies is asked for, one at a time and beside
/// everything else. What is to be told is told; a copy that failed, until another one succeeds.
class CopyKeeper : public QObject
{
    Q_OBJECT

public:
    struct Context
    {
        const core::Paths &paths;
        core::RunLog &log;
        const core::Clock &clock;
        const core::TextLookup &texts;
        core::Prompts &prompts;
    };
    /// All of it must outlive the object.
    explicit CopyKeeper(const Context &context);
    /// Ends what is being done, which leaves nothing behind.
    ~CopyKeeper() override;

    /// From now on each day gets its copy, the day that begins later, too. Damaged databases are told, and
    /// the last sound copy is offered; with a suspicion they are looked through also if no copy is due.
    void start(bool suspicion);

    void copyNow();
    /// Puts all databases of a copy in the place of the desk's, after a question.
    void restore(const Copy &copy);
    /// Where the copies stand from now on; empty for the usual folder.
    void choose(const QString &folder);

    /// Something is done, or asked: one thing at a time.
    bool isBusy() const { return m_work != nullptr || m_isAsking; }
    QList<Copy> copies() const { return CopyFolder(m_context.paths).copies(); }
    QString folder() const { return CopyFolder(m_context.paths).path(); }

Q_SIGNALS:
    /// There are other copies, or something begins or ends.
    void changed();
    /// The last copy failed, or one succeeded again.
    void failing(bool isFailing);
    /// The desk's databases are others now.
    void restored();

private:
    /// What a thread comes back with.
    struct Outcome
    {
        std::optional<Copy> made = {};
        std::optional<Damage> damage = {};
        std::optional<Copy> offered = {}; ///< the last one without that damage
        QStringList keptAside = {};
        bool elsewhere = false;
        bool isRestored = false;
        QString failure = {};
    };
    using Work = std::function<void(const CopyFolder &folder, const QDateTime &now, Outcome &outcome)>;
    enum class Asked { Day, Now, Restore };

    void look();
    void begin(Asked asked, const Work &work);
    static Outcome run(const CopyFolder &folder, const QDateTime &now, const Work &work);
    void wait();
    void end(const Outcome &outcome);
    void noteFailure(const QString &failure);
    void tellDamage(const Outcome &outcome);
    void tellRestored(const QStringList &kept);
    void restoreFiles(const Copy &copy, const QStringList &names);
    bool agrees(const QString &question);
    void tell(const QString &key, const QString &detail = {}) const;

    Context m_context;
    std::atomic<bool> m_ended = false;
    std::unique_ptr<core::Background<Outcome>> m_work; ///< while something is done
    Asked m_asked = Asked::Day;
    bool m_isAsking = false;
    bool m_suspicion = false;
    bool m_isDamageTold = false; ///< since the start
    QString m_failure;           ///< of the last copy
    QTimer m_days;
    QTimer m_waits;
};

} // namespace copies
