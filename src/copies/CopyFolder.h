#pragma once

#include "core/Error.h"
#include "core/Paths.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

namespace copies {

/// Why a copy was made.
enum class Reason { Day, Asked, BeforeRestore, BeforeImport };

struct CopiedFile
{
    QString name;
    qint64 bytes = 0;
    qint64 rows = 0; ///< of all tables
};

/// A copy of the desk's databases: a folder that holds them, checked, and what was found in them then.
struct Copy
{
    QString folder;
    QDateTime made;
    Reason reason = Reason::Day;
    QList<CopiedFile> files = {};
    bool isWhole = false; ///< they all stand there as long as they were

    qint64 bytes() const;
    qint64 rows() const;
    /// Nothing where it holds none of that name.
    const CopiedFile *file(const QString &name) const;
    QString path(const QString &name) const { return folder + u'/' + name; }
};

/// When it was made, as the operator reads it.
QString shownTime(const Copy &copy);

/// Thrown where a database of the desk is damaged, or gone: no copy is made of it.
struct Damage : core::Error
{
    Damage(const QString &name, const QString &finding);
    QString file; ///< its name
};

/// Thrown where another desk makes a copy just now.
struct MadeElsewhere : core::Error
{
    MadeElsewhere() : Error(0, QStringLiteral("another desk makes a copy just now"), Kind::Locked) {}
};

/// The folder where the copies of a desk stand, each in a folder of its own:
///
///     Backups/2026-11-22 09-30-15/   the databases, and Copy.json, which tells what was found in them
///     Backups/Copy in progress/      one that is being made, or was when its program was killed
///     Backups/Copies.lock            a database that whoever makes one has locked
///
/// The renaming of the second to the first is what makes a copy of it. What takes long here belongs on a
/// thread: `ended` is asked all the time, and when it says so, what is being done throws Ended, and no half
/// of it stays.
class CopyFolder
{
public:
    struct Ended
    {};
    /// The folder of choice, or the one in the start folder.
    explicit CopyFolder(
        const core::Paths &paths, std::function<bool()> ended = [] { return false; });

    const QString &path() const { return m_path; }

    /// The last one in front. Reads no database.
    QList<Copy> copies() const;
    /// There is none of that day which a start or the operator has made.
    bool isDue(const QDate &today) const;

    /// Copies the databases and checks them, then removes the copies that are not kept any longer. Where the
    /// reason is the day, only if one is due; a `suspicion` of damage has the databases looked through all
    /// the same. Nothing where none is made: the desk has no databases, or the day has its copy. Throws
    /// Damage, MadeElsewhere and core::Error.
    std::optional<Copy> make(const QDateTime &now, Reason reason, bool suspicion = false) const;

    /// The last copy in which a database of that name is sound, be that read to its end.
    std::optional<Copy> lastSound(const QString &name) const;

    /// Puts the databases of a copy, or those of these names, in the place of the desk's. They are checked
    /// again first, and a copy is made of what is there; what is damaged there is kept under another name,
    /// which is returned. Throws MadeElsewhere and core::Error; the sound ones are then as they were.
    QStringList restore(const Copy &copy, const QDateTime &now, const QStringList &names = {}) const;

private:
    QStringList deskFiles() const;
    QString inProgressPath() const;
    void removeLeft() const;
    void refuseMissing() const;
    void lockedFor(const std::function<void()> &work) const;
    std::optional<Copy> makeOf(const QStringList &files, const QDateTime &now, Reason reason,
                               bool isWanted) const;
    QStringList soundIn(const Copy &copy, const QStringList &names) const;
    CopiedFile copyChecked(const QString &from) const;
    CopiedFile copyOnce(const QString &from) const;
    QString findingIn(const QString &path) const;
    void writeOver(const QString &from, const QString &to) const;
    QString replace(const QString &from, const QString &to, const QDate &today) const;
    void dropSuperfluous(const QDate &today) const;
    void goOnAfter(std::chrono::milliseconds pause) const;
    template <typename Work>
    auto overLocks(const Work &work) const;

    core::Paths m_paths;
    QString m_path;
    std::function<bool()> m_ended;
};

/// The folder of choice as it is remembered, empty for the one in the start folder.
QString chosenFolder(const core::Paths &paths);
/// Remembers it. Throws core::Error where no copy could be written there.
void chooseFolder(const core::Paths &paths, const QString &folder);
/// The folder in the start folder.
QString usualFolder(const core::Paths &paths);

} // namespace copies
