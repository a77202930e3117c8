#include "copies/CopyFolder.h"

#include "copies/Retention.h"
#include "core/AtomicFile.h"
#include "core/Error.h"
#include "core/platform.h"
#include "store/Database.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <thread>

using namespace Qt::StringLiterals;

namespace copies {

namespace {

constexpr auto inProgress = "Copy in progress"_L1;
constexpr auto lockName = "Copies.lock"_L1;
constexpr auto factsName = "Copy.json"_L1;
constexpr auto nameFormat = "yyyy-MM-dd HH-mm-ss"_L1;
constexpr qsizetype nameLength = 19;
constexpr std::array reasons = {"day"_L1, "asked"_L1, "restore"_L1, "import"_L1};
constexpr std::chrono::milliseconds betweenSlices{8}; // as long as a slice: others save meanwhile
constexpr std::chrono::milliseconds betweenTries{100};

QByteArray factsOf(const Copy &copy)
{
    QJsonArray files;
    for (const CopiedFile &file : copy.files) {
        files.append(QJsonObject{{u"name"_s, file.name}, {u"bytes"_s, file.bytes}, {u"rows"_s, file.rows}});
    }
    const QJsonObject facts{{u"reason"_s, reasons.at(size_t(copy.reason))}, {u"files"_s, files}};
    return QJsonDocument(facts).toJson();
}

void readFacts(const QByteArray &bytes, Copy &copy)
{
    const QJsonObject facts = QJsonDocument::fromJson(bytes).object();
    const auto reason = std::ranges::find(reasons, facts[u"reason"].toString());
    copy.reason = reason != reasons.end() ? Reason(std::distance(reasons.begin(), reason)) : Reason::Day;
    const QJsonArray files = facts[u"files"].toArray();
    for (const auto &each : files) {
        const CopiedFile file = {each[u"name"].toString(), each[u"bytes"].toInteger(),
                                 each[u"rows"].toInteger()};
        if (file.name == QFileInfo(file.name).fileName() && !file.name.isEmpty()) { // leads nowhere else
            copy.files.append(file);
        }
    }
    copy.isWhole = !copy.files.isEmpty() && std::ranges::all_of(copy.files, [&](const CopiedFile &file) {
        return QFileInfo(copy.path(file.name)).size() == file.bytes;
    });
}

// Nothing for a folder that is no copy.
std::optional<Copy> copyIn(const QString &folder)
{
    constexpr qint64 saneSize = 1 << 16;
    static const QRegularExpression isCopy(u"^\\d{4}-\\d\\d-\\d\\d \\d\\d-\\d\\d-\\d\\d( \\(\\d+\\))?$"_s);
    const QString name = QFileInfo(folder).fileName();
    Copy copy{.folder = folder, .made = QDateTime::fromString(name.left(nameLength), nameFormat)};
    if (!isCopy.match(name).hasMatch() || !copy.made.isValid()) {
        return {};
    }
    QFile facts(folder + u'/' + factsName);
    readFacts(facts.open(QIODevice::ReadOnly) ? facts.read(saneSize) : QByteArray(), copy);
    return copy;
}

qint64 rowsIn(const QString &path)
{
    qint64 rows = 0;
    store::Database database(path, store::Database::Mode::ReadOnly);
    for (const QString &table : database.tableNames()) {
        database.forEachRow(u"select count(*) from "_s + store::bracketed(table),
                            [&](const store::Row &row) { rows += row.key(0); });
    }
    return rows;
}

void rename(const QString &from, const QString &to)
{
    if (!QDir().rename(from, to)) {
        throw core::Error(0, u"cannot rename the folder "_s + from);
    }
}

// And not of what was left of it before a restore.
bool isOfTheDesk(const Copy &copy)
{
    return copy.reason == Reason::Day || copy.reason == Reason::Asked;
}

QString freeName(const QString &path)
{
    QString name = path;
    for (int i = 2; QFileInfo::exists(name); ++i) {
        name = path + u" (%1)"_s.arg(i);
    }
    return name;
}

} // namespace

Damage::Damage(const QString &name, const QString &finding)
    : Error(0, name + u": "_s + finding, Kind::Damaged), file(name)
{}

QString shownTime(const Copy &copy)
{
    return copy.made.toString(u"yyyy-MM-dd HH:mm"_s);
}

qint64 Copy::bytes() const
{
    qint64 sum = 0;
    for (const CopiedFile &file : files) {
        sum += file.bytes;
    }
    return sum;
}

qint64 Copy::rows() const
{
    qint64 sum = 0;
    for (const CopiedFile &file : files) {
        sum += file.rows;
    }
    return sum;
}

const CopiedFile *Copy::file(const QString &name) const
{
    const auto found = std::ranges::find(files, name, &CopiedFile::name);
    return found != files.end() ? &*found : nullptr;
}

CopyFolder::CopyFolder(const core::Paths &paths, std::function<bool()> ended)
    : m_paths(paths), m_path(chosenFolder(paths)), m_ended(std::move(ended))
{
    m_path = m_path.isEmpty() ? usualFolder(paths) : m_path;
}

// Those that are written to; all others can be delivered anew.
QStringList CopyFolder::deskFiles() const
{
    QStringList files = {m_paths.CustomerFile, m_paths.PhoneBookFile, m_paths.UserLangFile};
    files.removeIf([](const QString &path) { return !QFileInfo(path).isFile(); });
    return files;
}

QString CopyFolder::inProgressPath() const
{
    return m_path + u'/' + inProgress;
}

QList<Copy> CopyFolder::copies() const
{
    QList<Copy> found;
    for (const QFileInfo &folder :
         QDir(m_path).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
        if (std::optional<Copy> copy = copyIn(folder.filePath())) {
            found.append(*std::move(copy));
        }
    }
    std::ranges::stable_sort(found, std::greater(), &Copy::made);
    return found;
}

bool CopyFolder::isDue(const QDate &today) const
{
    const QList<Copy> all = copies();
    return std::ranges::none_of(all, [&](const Copy &copy) {
        return copy.isWhole && isOfTheDesk(copy) && copy.made.date() == today;
    });
}

void CopyFolder::goOnAfter(std::chrono::milliseconds pause) const
{
    if (m_ended()) {
        throw Ended();
    }
    std::this_thread::sleep_for(pause);
}

// Another program's lock ends within moments; this has no window to keep alive.
template <typename Work>
auto CopyFolder::overLocks(const Work &work) const
{
    constexpr int mostTries = 300;
    const store::NoWaiting atOnce;
    for (int tries = 1;; ++tries) {
        try {
            return work();
        } catch (const core::Error &error) {
            if (m_ended()) { // which is why it failed
                throw Ended();
            }
            if (!store::tellsOfLock(error) || tries == mostTries) {
                throw;
            }
        }
        goOnAfter(betweenTries);
    }
}

// Empty for a sound file.
QString CopyFolder::findingIn(const QString &path) const
{
    try {
        return overLocks([&] { return store::damageOf(path, m_ended).value(0); });
    } catch (const core::Error &error) {
        if (!store::tellsOfDamage(error)) {
            throw;
        }
        return error.description();
    }
}

CopiedFile CopyFolder::copyOnce(const QString &from) const
{
    const QString name = QFileInfo(from).fileName();
    const QString to = inProgressPath() + u'/' + name;
    QFile::remove(to);
    overLocks([&] {
        store::copyDatabase(from, to, store::Database::Mode::New, [this] { goOnAfter(betweenSlices); });
    });
    if (const QString finding = findingIn(to); !finding.isEmpty()) {
        throw core::Error(0, to + u": "_s + finding, core::Error::Kind::Damaged);
    }
    core::platform::syncFile(to);
    return {.name = name, .bytes = QFileInfo(to).size(), .rows = rowsIn(to)};
}

// A network that fails for a moment looks like damage, and so does a bad disk under the copies: only the
// desk's own file tells.
CopiedFile CopyFolder::copyChecked(const QString &from) const
{
    try {
        return copyOnce(from);
    } catch (const core::Error &error) {
        if (!store::tellsOfDamage(error)) {
            throw;
        }
    }
    goOnAfter(betweenTries);
    try {
        return copyOnce(from);
    } catch (const core::Error &error) {
        const QString finding = store::tellsOfDamage(error) ? findingIn(from) : QString();
        if (finding.isEmpty()) {
            throw;
        }
        throw Damage(QFileInfo(from).fileName(), finding);
    }
}

// A file that the last copy has, and the desk has not.
void CopyFolder::refuseMissing() const
{
    const QList<Copy> all = copies();
    const auto last = std::ranges::find_if(all, isOfTheDesk);
    for (const QString &path : {m_paths.CustomerFile, m_paths.PhoneBookFile}) {
        const QString name = QFileInfo(path).fileName();
        if (last != all.end() && last->file(name) != nullptr && !QFileInfo::exists(path)) {
            throw Damage(name, u"the database file is missing: "_s + path);
        }
    }
}

// What killed programs have left. What stands beside the lock stays: another desk may be making it.
void CopyFolder::removeLeft() const
{
    QDir(inProgressPath()).removeRecursively();
    for (const QString &written : {m_paths.CustomerFile, m_paths.PhoneBookFile, m_paths.UserLangFile}) {
        core::removeLeftBeside(written);
    }
}

// A program that ends, however it ends, holds no lock of the engine's any longer, on whatever machine.
void CopyFolder::lockedFor(const std::function<void()> &work) const
{
    core::makeFolder(m_path);
    const QString lockFile = m_path + u'/' + lockName;
    bool began = false;
    try {
        store::Database lock(lockFile, store::Database::Mode::New); // or the one that is there
        lock.transaction([&] {
            began = true;
            removeLeft();
            work();
        });
    } catch (const core::Error &error) {
        if (!began && store::tellsOfLock(error)) {
            throw MadeElsewhere();
        }
        throw;
    }
}

std::optional<Copy> CopyFolder::make(const QDateTime &now, Reason reason, bool suspicion) const
{
    const auto isWanted = [&] { return reason != Reason::Day || isDue(now.date()); };
    std::optional<Copy> made;
    if (isWanted() || suspicion || QFileInfo::exists(inProgressPath())) {
        refuseMissing();
        const QStringList files = deskFiles();
        if (!files.isEmpty()) {
            lockedFor([&] { // until then another desk may have made it
                made = isWanted() || suspicion ? makeOf(files, now, reason, isWanted()) : std::nullopt;
                dropSuperfluous(now.date());
            });
        }
    }
    return made;
}

// One that is not wanted is made, checked, and dropped. That before a restore lacks what is damaged.
std::optional<Copy> CopyFolder::makeOf(const QStringList &files, const QDateTime &now, Reason reason,
                                       bool isWanted) const
{
    const QString beside = inProgressPath();
    const auto removed = qScopeGuard([&] { QDir(beside).removeRecursively(); });
    core::makeFolder(beside);
    Copy copy{.folder = freeName(m_path + u'/' + now.toString(nameFormat)),
              .made = now,
              .reason = reason,
              .isWhole = true};
    for (const QString &file : files) {
        try {
            copy.files.append(copyChecked(file));
        } catch (const Damage &) {
            if (reason != Reason::BeforeRestore) {
                throw;
            }
        }
    }
    if (!isWanted || copy.files.isEmpty()) {
        return {};
    }
    core::saveAtomically(beside + u'/' + factsName, factsOf(copy));
    rename(beside, copy.folder);
    return copy;
}

// What stands under another name is no copy, should this be killed in the middle.
void CopyFolder::dropSuperfluous(const QDate &today) const
{
    QList<Copy> all = copies();
    all.removeIf([](const Copy &copy) { return !copy.isWhole; });
    QList<Dated> dated;
    for (const Copy &copy : all) {
        dated.append({copy.made, copy.reason == Reason::BeforeImport});
    }
    const QString beside = inProgressPath();
    for (const qsizetype place : superfluous(dated, today)) {
        if (QDir().rename(all[place].folder, beside)) { // or else the next time: somebody looks into it
            QDir(beside).removeRecursively();
        }
    }
}

std::optional<Copy> CopyFolder::lastSound(const QString &name) const
{
    for (const Copy &copy : copies()) {
        if (copy.isWhole && copy.file(name) != nullptr && findingIn(copy.path(name)).isEmpty()) {
            return copy;
        }
    }
    return {};
}

// The names of those that are to be restored. Throws where one is not what it was when it was made.
QStringList CopyFolder::soundIn(const Copy &copy, const QStringList &names) const
{
    QStringList sound;
    for (const CopiedFile &file : copy.files) {
        if (names.isEmpty() || names.contains(file.name)) {
            const QString path = copy.path(file.name);
            const QString finding = findingIn(path);
            if (!finding.isEmpty() || rowsIn(path) != file.rows) {
                throw core::Error(0, path + u": "_s + finding, core::Error::Kind::Damaged);
            }
            sound.append(file.name);
        }
    }
    return sound;
}

QStringList CopyFolder::restore(const Copy &copy, const QDateTime &now, const QStringList &names) const
{
    const QStringList wanted = soundIn(copy, names);
    const auto pathOf = [this](const QString &name) { return QString(m_paths.StartFolder + u'/' + name); };
    QStringList kept;
    lockedFor([&] {
        const std::optional<Copy> before = makeOf(deskFiles(), now, Reason::BeforeRestore, true);
        QStringList written;
        try {
            for (const QString &name : wanted) {
                if (before && before->file(name) != nullptr) {
                    writeOver(copy.path(name), pathOf(name));
                    written.append(name);
                } else {
                    kept.append(replace(copy.path(name), pathOf(name), now.date()));
                }
            }
        } catch (...) { // the customers of one day do not go with the phone book of another
            for (const QString &name : std::as_const(written)) {
                writeOver(before->path(name), pathOf(name));
            }
            throw;
        }
    });
    kept.removeAll(QString());
    return kept;
}

// Other desks that have it open find new rows in it, and a kill leaves it as it was.
void CopyFolder::writeOver(const QString &from, const QString &to) const
{
    overLocks([&] { store::copyDatabase(from, to, store::Database::Mode::ReadWrite); });
}

// The name that what stood there has now; empty where nothing did.
QString CopyFolder::replace(const QString &from, const QString &to, const QDate &today) const
{
    const QString aside = freeName(to + u" damaged "_s + today.toString(Qt::ISODate));
    const core::FileBeside beside(to);
    overLocks([&] { store::copyDatabase(from, beside.name(), store::Database::Mode::New); });
    store::moveDatabase(to, aside);
    beside.moveIntoPlace();
    return QFileInfo::exists(aside) ? QFileInfo(aside).fileName() : QString();
}

QString usualFolder(const core::Paths &paths)
{
    return paths.StartFolder + u"/Backups"_s;
}

QString chosenFolder(const core::Paths &paths)
{
    constexpr qint64 saneSize = 1 << 12;
    QFile file(paths.CopiesFile);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(saneSize)).trimmed() : QString();
}

void chooseFolder(const core::Paths &paths, const QString &folder)
{
    const QString wanted = QDir::fromNativeSeparators(folder.trimmed());
    if (wanted.isEmpty() || QDir(wanted) == QDir(usualFolder(paths))) {
        if (QFileInfo::exists(paths.CopiesFile) && !QFile::remove(paths.CopiesFile)) {
            throw core::Error(0, u"the file cannot be deleted: "_s + paths.CopiesFile);
        }
        return;
    }
    if (QFileInfo(wanted).isRelative()) {
        throw core::Error(0, u"not a whole path: "_s + wanted);
    }
    core::makeFolder(wanted);
    const core::FileBeside tried(wanted + u'/' + lockName); // may files be written there?
    core::saveAtomically(paths.CopiesFile, wanted.toUtf8());
}

} // namespace copies
