#include "conversion/DeskConversion.h"

#include "core/Error.h"
#include "core/platform.h"
#include "oldfiles/OldDatabase.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace conversion {

namespace {

constexpr auto inProgress = "Conversion in progress"_L1;
constexpr auto lockName = "Conversion.lock"_L1;
constexpr auto ready = "Conversion ready "_L1;
constexpr auto oldFiles = "Old files "_L1;

void makeFolder(const QString &path)
{
    if (!QDir(path).exists() && !QDir().mkpath(path)) {
        throw core::Error(0, u"cannot make the folder "_s + path);
    }
}

// The files below a folder, as paths below it.
QStringList filesBelow(const QString &folder)
{
    QStringList paths;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        paths.append(QDir(folder).relativeFilePath(files.next()));
    }
    paths.sort();
    return paths;
}

// A file of a desk always has this table. Where it lacks it, its catalogue is damaged.
QString tableWantedIn(const QString &path)
{
    static const QList<std::pair<QString, QString>> tables = {
        {u"*.ccsm"_s, u"customer"_s},        {u"*.cpbk"_s, u"phonebook"_s}, {u"Lang.mdb"_s, u"Lang"_s},
        {u"AreaCode.mdb"_s, u"placename"_s}, {u"*.lan"_s, u"Language"_s},   {u"*.chlp"_s, u"Help"_s}};
    for (const auto &[pattern, table] : tables) {
        if (QDir::match(pattern, QFileInfo(path).fileName())) {
            return table;
        }
    }
    return {};
}

// Puts the file's name in front of whatever goes wrong.
template <typename Action>
auto namingFile(const QString &path, Action &&action)
{
    try {
        return action();
    } catch (const core::Error &error) {
        throw core::Error(error.number(), path + u": "_s + error.description());
    }
}

// The program of that time keeps a lock file beside each database that it has open.
void refuseOpenElsewhere(const QString &path)
{
    const QFileInfo file(path);
    const QString lock = file.path() + u'/' + file.completeBaseName() + u".ldb"_s;
    if (QFileInfo::exists(lock)) {
        throw core::Error(
            0, u"%1 is open in another program; end it there, or delete %2 if nothing has it open"_s.arg(
                   path, lock));
    }
}

// One conversion of a desk's folder, with the names of its own folders.
class Conversion
{
public:
    explicit Conversion(const QString &folder) : m_folder(QDir(folder).absolutePath()) {}

    // Keeps everybody else from converting the folder until the result is gone.
    auto lock() const
    {
        const QString path = m_folder.filePath(lockName);
        const core::platform::ProcessLock lock = core::platform::takeProcessLock(path);
        if (!lock) {
            throw core::Error(0, u"this folder is being converted already: "_s + m_folder.path());
        }
        return qScopeGuard([path, lock] { QFile::remove(path); });
    }

    // The dates of conversions that were broken off while the files changed places.
    QStringList unfinished() const
    {
        static const QRegularExpression date(u"^\\d{4}-\\d\\d-\\d\\d( \\(\\d+\\))?$"_s);
        QStringList dates = m_folder.entryList({ready + u"*"_s}, QDir::Dirs, QDir::Name);
        dates.replaceInStrings(ready, QString());
        return dates.filter(date);
    }

    bool complete() const
    {
        const QStringList dates = unfinished();
        for (const QString &date : dates) {
            changePlaces(date);
        }
        return !dates.isEmpty();
    }

    // Makes and checks the new files. The last step decides: a conversion that is broken off after it is
    // completed later, not undone.
    QList<ConvertedFile> make(const QStringList &paths, const QString &date, const RowWatcher &watcher) const
    {
        QList<ConvertedFile> files;
        remove(inProgress); // of one that was broken off before anything else was touched
        try {
            for (const QString &path : paths) {
                refuseOpenElsewhere(m_folder.filePath(path));
                files.append(makeOne(path, watcher));
            }
            for (const QString &path : paths) { // nor opened since
                refuseOpenElsewhere(m_folder.filePath(path));
            }
            moveFolder(inProgress, ready + date);
        } catch (...) {
            remove(inProgress);
            throw;
        }
        return files;
    }

    // Moves every file to its new place, or, if one cannot be moved, all of them back.
    void changePlaces(const QString &date) const
    {
        try {
            for (const QString &path : filesBelow(m_folder.filePath(ready + date))) {
                if (exists(path) && !exists(oldFiles + date + u'/' + path)) {
                    move(path, oldFiles + date + u'/' + path);
                }
                if (exists(path)) {
                    throw core::Error(0, u"there is another %1 in the folder"_s.arg(path));
                }
                move(ready + date + u'/' + path, path);
            }
        } catch (...) {
            putBack(date);
            throw;
        }
        removeEmpty(ready + date);
    }

    // A name that no folder of an earlier conversion has.
    QString nameFor(const QDate &today) const
    {
        const QString date = today.toString(Qt::ISODate);
        QString name = date;
        for (int i = 2; exists(oldFiles + name) || exists(ready + name); ++i) {
            name = date + u" (%1)"_s.arg(i);
        }
        return name;
    }

private:
    ConvertedFile makeOne(const QString &path, const RowWatcher &watcher) const
    {
        const QString beside = m_folder.filePath(inProgress + u'/' + path);
        makeFolder(QFileInfo(beside).path());
        return namingFile(path, [&] {
            ConvertedFile file{path, convertFile(m_folder.filePath(path), beside, watcher)};
            const QString wanted = tableWantedIn(path);
            const bool found = std::ranges::any_of(file.tables, [&](const ConvertedTable &table) {
                return table.name.compare(wanted, Qt::CaseInsensitive) == 0;
            });
            if (!wanted.isEmpty() && !found) {
                throw core::Error(0, u"it has no table "_s + wanted);
            }
            return file;
        });
    }

    // If a file cannot be put back now, the next conversion completes this one.
    void putBack(const QString &date) const
    {
        try {
            for (const QString &path : filesBelow(m_folder.filePath(oldFiles + date))) {
                if (exists(path)) {
                    move(path, ready + date + u'/' + path);
                }
                move(oldFiles + date + u'/' + path, path);
            }
            removeEmpty(oldFiles + date);
            moveFolder(ready + date, inProgress);
            remove(inProgress);
        } catch (const core::Error &) { // the failure that led here is the one to tell
        }
    }

    bool exists(const QString &path) const { return m_folder.exists(path); }
    void move(const QString &from, const QString &to) const
    {
        makeFolder(QFileInfo(m_folder.filePath(to)).path());
        core::platform::replaceFile(m_folder.filePath(from), m_folder.filePath(to));
    }
    // Files can be moved over others; no system does that with folders.
    void moveFolder(const QString &from, const QString &to) const
    {
        if (!QDir(m_folder).rename(from, to)) {
            throw core::Error(0, u"cannot rename the folder "_s + m_folder.filePath(from));
        }
    }
    // A folder that holds nothing but an empty folder of help files; any other stays.
    void removeEmpty(const QString &path) const
    {
        m_folder.rmdir(path + u"/Help"_s);
        m_folder.rmdir(path);
    }
    void remove(const QString &path) const { QDir(m_folder.filePath(path)).removeRecursively(); }

    QDir m_folder;
};

} // namespace

QStringList oldDatabasesIn(const QString &folder)
{
    const QStringList endings = {u"ccsm"_s, u"cpbk"_s, u"mdb"_s, u"lan"_s, u"chlp"_s};
    QStringList found;
    for (const QString &below : {QString(), u"Help/"_s}) {
        const QDir place(folder + u'/' + below);
        for (const QString &name : place.entryList(QDir::Files, QDir::Name)) {
            if (endings.contains(QFileInfo(name).suffix(), Qt::CaseInsensitive) &&
                oldfiles::isOldDatabase(place.filePath(name))) {
                found.append(below + name);
            }
        }
    }
    return found;
}

bool isOldDesk(const QString &folder)
{
    return !isBrokenOff(folder) && std::ranges::any_of(oldDatabasesIn(folder), [](const QString &path) {
        return !tableWantedIn(path).isEmpty();
    });
}

QList<ConvertedFile> oldTablesIn(const QString &folder)
{
    QList<ConvertedFile> files;
    for (const QString &path : oldDatabasesIn(folder)) {
        ConvertedFile file{path, {}};
        namingFile(path, [&] {
            const oldfiles::OldDatabase old = oldfiles::OldDatabase::fromFile(folder + u'/' + path);
            for (const oldfiles::Table &table : old.tables()) {
                file.tables.append({table.name, table.definition.rows});
            }
        });
        files.append(file);
    }
    return files;
}

bool isAmongOldFiles(const QString &path)
{
    return path.startsWith(oldFiles);
}

Report convertDesk(const QString &folder, const QDate &today, const RowWatcher &watcher)
{
    const Conversion conversion(folder);
    const auto only = conversion.lock();
    Report report;
    report.resumed = conversion.complete();
    const QStringList paths = oldDatabasesIn(folder);
    if (!paths.isEmpty()) {
        const QString date = conversion.nameFor(today);
        report.files = conversion.make(paths, date, watcher);
        conversion.changePlaces(date);
        report.oldFiles = oldFiles + date;
    }
    return report;
}

bool isBrokenOff(const QString &folder)
{
    return !Conversion(folder).unfinished().isEmpty();
}

bool completeConversion(const QString &folder)
{
    const Conversion conversion(folder);
    if (conversion.unfinished().isEmpty()) { // nothing is written to the folder of a desk that has none
        return false;
    }
    const auto only = conversion.lock();
    return conversion.complete();
}

} // namespace conversion
