#include "copies/CopyKeeper.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include <utility>

using namespace Qt::StringLiterals;

namespace copies {

namespace {

constexpr std::chrono::minutes betweenLooks{10};
constexpr std::chrono::milliseconds betweenWaits{50};

} // namespace

CopyKeeper::CopyKeeper(const Context &context) : m_context(context)
{
    connect(&m_days, &QTimer::timeout, this, &CopyKeeper::look);
    connect(&m_waits, &QTimer::timeout, this, &CopyKeeper::wait);
}

CopyKeeper::~CopyKeeper()
{
    m_ended = true;
}

void CopyKeeper::start(bool suspicion)
{
    m_suspicion = suspicion;
    m_days.start(betweenLooks);
    look();
}

void CopyKeeper::look()
{
    if (!isBusy()) {
        const bool suspicion = std::exchange(m_suspicion, false);
        begin(Asked::Day, [suspicion](const CopyFolder &folder, const QDateTime &now, Outcome &outcome) {
            outcome.made = folder.make(now, Reason::Day, suspicion);
        });
    }
}

void CopyKeeper::copyNow()
{
    if (!isBusy()) {
        begin(Asked::Now, [](const CopyFolder &folder, const QDateTime &now, Outcome &outcome) {
            outcome.made = folder.make(now, Reason::Asked);
        });
    }
}

void CopyKeeper::restore(const Copy &copy)
{
    const QString question = m_context.texts.Lms(u"AskRestore"_s).replace(u"%1"_s, shownTime(copy));
    if (!isBusy() && agrees(question)) {
        restoreFiles(copy, {});
    }
}

// Else the day's copy would begin under a question that waits for long, and the answer would find it busy.
bool CopyKeeper::agrees(const QString &question)
{
    m_isAsking = true;
    const auto answered = qScopeGuard([this] { m_isAsking = false; });
    return m_context.prompts.askOkCancel(question);
}

void CopyKeeper::restoreFiles(const Copy &copy, const QStringList &names)
{
    begin(Asked::Restore, [copy, names](const CopyFolder &folder, const QDateTime &now, Outcome &outcome) {
        outcome.keptAside = folder.restore(copy, now, names);
        outcome.isRestored = true;
    });
}

void CopyKeeper::choose(const QString &folder)
{
    const bool chosen = m_context.log.trap("chooseFolder"_L1, [&] { chooseFolder(m_context.paths, folder); });
    if (!chosen) {
        tell(u"CopyFolderRefused"_s, QDir::toNativeSeparators(folder));
    }
    Q_EMIT changed();
}

void CopyKeeper::begin(Asked asked, const Work &work)
{
    m_asked = asked;
    const CopyFolder folder(m_context.paths, [this] { return m_ended.load(); });
    m_work = std::make_unique<core::Background<Outcome>>(
        [folder, now = m_context.clock.now(), work] { return run(folder, now, work); });
    m_waits.start(betweenWaits);
    Q_EMIT changed();
}

// On the thread.
CopyKeeper::Outcome CopyKeeper::run(const CopyFolder &folder, const QDateTime &now, const Work &work)
{
    Outcome outcome;
    try {
        try {
            work(folder, now, outcome);
        } catch (const Damage &damage) {
            outcome.damage = damage;
            outcome.failure = damage.description();
            outcome.offered = folder.lastSound(damage.file);
        }
    } catch (const MadeElsewhere &) {
        outcome.elsewhere = true;
    } catch (const core::Error &error) {
        outcome.failure = error.description();
    } catch (const CopyFolder::Ended &) { // nobody is there to be told
    }
    return outcome;
}

// What there is to tell waits until no other question stands.
void CopyKeeper::wait()
{
    if (!m_work->isDone() || m_context.prompts.isOpen()) {
        return;
    }
    m_waits.stop();
    Outcome outcome;
    const bool taken = m_context.log.trap("CopyKeeper"_L1, [&] { outcome = m_work->take(); });
    outcome.failure = taken ? outcome.failure : u"the copy could not be made"_s;
    m_work.reset();
    end(outcome);
    Q_EMIT changed();
}

void CopyKeeper::end(const Outcome &outcome)
{
    if (outcome.made) {
        m_context.log.WriteRunLog(u"The desk was copied: "_s +
                                  QDir::toNativeSeparators(outcome.made->folder));
    }
    if (m_asked != Asked::Restore && !outcome.elsewhere) {
        noteFailure(outcome.failure);
    }
    if (outcome.damage) {
        return tellDamage(outcome);
    }
    if (outcome.isRestored) {
        return tellRestored(outcome.keptAside);
    }
    if (m_asked != Asked::Day && outcome.elsewhere) {
        tell(u"CopyMadeElsewhere"_s);
    } else if (m_asked != Asked::Day && !outcome.failure.isEmpty()) {
        tell(m_asked == Asked::Now ? u"CopyFailed"_s : u"DeskNotRestored"_s, outcome.failure);
    }
}

// The day may have no copy yet, because something was damaged.
void CopyKeeper::tellRestored(const QStringList &kept)
{
    m_isDamageTold = false;
    Q_EMIT restored();
    tell(kept.isEmpty() ? u"DeskRestored"_s : u"DeskRestoredKept"_s, kept.join(u'\n'));
    look();
}

// Tried again every few minutes, and logged once for the same reason. It is over, too, once another desk has
// made the day's copy.
void CopyKeeper::noteFailure(const QString &failure)
{
    if (!failure.isEmpty() && failure != m_failure) {
        m_context.log.WriteRunLog(u"!CopyKeeper "_s + failure);
    }
    const bool isNews = m_failure.isEmpty() != failure.isEmpty();
    m_failure = failure;
    if (isNews) {
        Q_EMIT failing(!failure.isEmpty());
    }
}

// Once a start, and whenever a copy is asked for.
void CopyKeeper::tellDamage(const Outcome &outcome)
{
    if (std::exchange(m_isDamageTold, true) && m_asked == Asked::Day) {
        return;
    }
    const auto told = [&](const QString &key) {
        return m_context.texts.Lms(key).replace(u"%1"_s, outcome.damage->file) + u"\n\n"_s;
    };
    if (!outcome.offered) {
        m_context.prompts.tell(told(u"DatabaseDamaged"_s) + outcome.damage->description(), {}, nullptr);
        return;
    }
    const CopiedFile *file = outcome.offered->file(outcome.damage->file);
    const QString offer = m_context.texts.Lms(u"OfferCopy"_s)
                              .replace(u"%1"_s, shownTime(*outcome.offered))
                              .replace(u"%2"_s, QString::number(file->rows));
    if (agrees(told(u"DatabaseDamaged"_s) + offer)) {
        restoreFiles(*outcome.offered, {outcome.damage->file});
    }
}

void CopyKeeper::tell(const QString &key, const QString &detail) const
{
    const QString text = m_context.texts.Lms(key);
    m_context.prompts.tell(detail.isEmpty() ? text : text + u'\n' + detail, {}, nullptr);
}

} // namespace copies
