#include "store/engine/SqliteEngine.h"

#include "core/platform.h"
#include "store/Pace.h"
#include "store/TextOrder.h"
#include "store/engine/FileState.h"
#include "store/engine/SqliteEmitter.h"
#include "store/engine/SqliteFunctions.h"
#include "store/engine/SqliteStatement.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <sqlite3.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr auto journal = "-journal"_L1; // behind the file's name

// Says clearly what SQLite would report as trouble with its own innards.
void checkFile(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        throw core::Error(SQLITE_CANTOPEN, u"the database file is missing: "_s + path);
    }
    if (!file.isFile()) {
        throw core::Error(SQLITE_CANTOPEN, u"not a file: "_s + path);
    }
    if (file.size() == 0) {
        throw sqliteError(SQLITE_NOTADB, u"the database file is empty: "_s + path);
    }
}

bool isMarkedReadOnly(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() && !(file.permissions() & QFile::WriteOwner);
}

constexpr int headBytes = 16; // the count of saves, of pages and of free pages

quint32 savesIn(const QByteArray &state)
{
    return qFromBigEndian<quint32>(state.constEnd() - headBytes);
}

// Asked by SQLite each time that it finds the file locked, the first time with 0; 0 says to give up.
int waitOnce(void *, int times)
{
    const auto sleep = [](std::chrono::milliseconds pause) {
        sqlite3_sleep(static_cast<int>(pause.count()));
    };
    return waitForLock(times, sleep) ? 1 : 0;
}

// A disk that refuses may be that of the copy: it tells nothing of the original.
core::Error copyError(int code, const QString &path)
{
    using Kind = core::Error::Kind;
    const core::Error error = sqliteError(code, QString::fromUtf8(sqlite3_errstr(code)) + u": "_s + path);
    const bool ofTheDisk = error.number() == SQLITE_IOERR;
    return {error.number(), error.description(), ofTheDisk ? Kind::Other : error.kind()};
}

} // namespace

void SqliteEngine::Close::operator()(sqlite3 *engine) const
{
    sqlite3_close_v2(engine);
}

SqliteEngine::SqliteEngine(const QString &path, Mode mode, Wildcards wildcards)
    : m_path(path), m_mode(mode), m_wildcards(wildcards)
{
    if (mode != Mode::New) {
        checkFile(path);
    }
    open();
    harden();
    registerFunctions(raw());
    makeReady();
}

SqliteEngine::~SqliteEngine()
{
    forgetPrepared();
    m_engine.reset();
    if (m_mode == Mode::New) {
        QFile::remove(m_path + journal); // what a file that is given up leaves beside itself
    }
}

// The journal goes first: left behind, it would be played back into the next file of that name.
void SqliteEngine::move(const QString &from, const QString &to)
{
    for (const QLatin1StringView part : {journal, ""_L1}) {
        if (QFileInfo::exists(from + part)) {
            core::platform::replaceFile(from + part, to + part);
        }
    }
}

void SqliteEngine::open()
{
    const bool readOnly = m_mode == Mode::Salvage || isMarkedReadOnly(m_path);
    const int access = m_mode == Mode::New ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE
                       : readOnly          ? SQLITE_OPEN_READONLY
                                           : SQLITE_OPEN_READWRITE;
    sqlite3 *engine = nullptr;
    const QByteArray file = QFileInfo(m_path).absoluteFilePath().toUtf8(); // bare, ":memory:" is no file
    const int result = sqlite3_open_v2(file.constData(), &engine, access | SQLITE_OPEN_NOMUTEX, nullptr);
    m_engine.reset(engine);
    if (result != SQLITE_OK) {
        throw sqliteError(result, QString::fromUtf8(sqlite3_errmsg(engine)) + u": "_s + m_path);
    }
    sqlite3_busy_handler(engine, waitOnce, nullptr);
}

// A file may come from anywhere: its schema runs none of our functions that could do harm, no triggers, no
// views and no extensions, and cannot be made to write the engine's own tables.
void SqliteEngine::harden() const
{
    // A file that lacks pages is opened only by who might mend its schema, here without being able to write.
    const bool salvage = m_mode == Mode::Salvage;
    sqlite3_db_config(raw(), SQLITE_DBCONFIG_DEFENSIVE, salvage ? 0 : 1, nullptr);
    sqlite3_db_config(raw(), SQLITE_DBCONFIG_WRITABLE_SCHEMA, salvage ? 1 : 0, nullptr);
    sqlite3_db_config(raw(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(raw(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(raw(), SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(raw(), SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
}

// The first statements on the file, so what is no database, damaged or locked shows here.
void SqliteEngine::makeReady()
{
    execute(u"pragma cell_size_check=on"_s);
    execute(u"select count(*) from sqlite_schema"_s);
    if (sqlite3_db_readonly(raw(), "main") == 0) {
        execute(u"pragma journal_mode=delete"_s);
        execute(u"pragma synchronous=full"_s);
        // In pages of 4 kB. What a large transaction changes stays in memory up to that, for once some of it
        // is written to the file nobody can read there until all of it is.
        execute(u"pragma cache_spill=65536"_s);
        renewTextOrder();
    }
    if (m_mode == Mode::ReadOnly) {
        // Not SQLite's own read-only mode: what another program left half saved must still be undone.
        execute(u"pragma query_only=on"_s);
    }
}

// Indexes that were built with another version of the text order would hide rows. Files without our order
// are left as they are.
void SqliteEngine::renewTextOrder()
{
    const bool current = first(u"pragma user_version"_s).toInt() == textOrderVersion;
    const bool ordered =
        m_mode == Mode::New ||
        first(u"select count(*) from sqlite_schema where instr(sql,' COLLATE JET')"_s).toInt() > 0;
    if (!current && ordered) {
        transaction([this] {
            execute(u"reindex JET"_s);
            execute(u"pragma user_version="_s + QString::number(textOrderVersion));
        });
    }
}

std::unique_ptr<Statement> SqliteEngine::prepare(const SqlTokens &sql)
{
    return std::make_unique<SqliteStatement>(raw(), toSqlite(sql, m_wildcards));
}

qint64 SqliteEngine::changedRows() const
{
    return sqlite3_total_changes64(raw());
}

// The first column of the first row; null without one.
QVariant SqliteEngine::first(const QString &select, const QVariantList &bound)
{
    const std::unique_ptr<Statement> statement = prepare(select);
    statement->bind(bound);
    return statement->step() ? statement->value(0) : QVariant();
}

// The first column of all rows.
QStringList SqliteEngine::texts(const QString &select, const QVariantList &bound)
{
    QStringList found;
    forEach(select, bound, [&](const Row &row) { found.append(row.text(0)); });
    return found;
}

QStringList SqliteEngine::tableNames()
{
    return texts(u"select name from sqlite_schema where type='table' and substr(name,1,7)<>'sqlite_'"_s);
}

QList<Index> SqliteEngine::indexesOf(const QString &table)
{
    QList<Index> indexes;
    forEach(u"select name,partial from pragma_index_list(?)"_s, {table}, [&](const Row &row) {
        const QString name = row.text(0);
        indexes.append({name, texts(u"select name from pragma_index_info(?) order by seqno"_s, {name}),
                        row.integer(1) == 0});
    });
    return indexes;
}

QString SqliteEngine::autoNumberOf(const QString &table)
{
    const QString key = first(u"select name from pragma_table_info(?) where pk=1"_s, {table}).toString();
    int isAutoNumber = 0;
    sqlite3_table_column_metadata(raw(), "main", table.toUtf8().constData(), key.toUtf8().constData(),
                                  nullptr, nullptr, nullptr, nullptr, &isAutoNumber);
    return isAutoNumber != 0 ? key : QString();
}

// Counts as SQLite itself would.
qint64 SqliteEngine::reserveNumber(const QString &table)
{
    const QString last = u"(select ifnull(max(rowid),0) from "_s + bracketed(table) + u')';
    qint64 number = 0;
    transaction([&] {
        const qint64 changed =
            execute(u"update sqlite_sequence set seq=max(seq,"_s + last + u")+1 where lower(name)=lower(?)"_s,
                    {table});
        if (changed == 0) {
            execute(u"insert into sqlite_sequence(name,seq) select name,"_s + last +
                        u"+1 from sqlite_schema where lower(name)=lower(?) and type='table'"_s,
                    {table});
        }
        number = first(u"select seq from sqlite_sequence where lower(name)=lower(?)"_s, {table}).toLongLong();
    });
    return number;
}

void SqliteEngine::keepLastNumber(const QString &table, qint64 number)
{
    execute(u"delete from sqlite_sequence where name=?"_s, {table});
    execute(u"insert into sqlite_sequence (name,seq) values (?,?)"_s, {table, number});
}

QString SqliteEngine::path() const
{
    return QString::fromUtf8(sqlite3_db_filename(raw(), "main"));
}

bool SqliteEngine::isReplaced() const
{
    int moved = 0;
    sqlite3_file_control(raw(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

QStringList SqliteEngine::damage()
{
    QStringList findings = texts(u"pragma integrity_check"_s);
    findings.removeAll(u"ok"_s);
    return findings;
}

void SqliteEngine::endWhen(std::function<bool()> ended)
{
    constexpr int instructions = 10'000;
    m_ended = std::move(ended);
    const auto ask = [](void *engine) { return static_cast<SqliteEngine *>(engine)->m_ended() ? 1 : 0; };
    sqlite3_progress_handler(raw(), instructions, m_ended ? +ask : nullptr, this);
}

// A save of another connection begins the copying anew. So that it comes to an end however often others save,
// the slices then grow. Over a database that stands, all is copied in one: that one is locked meanwhile.
void SqliteEngine::copyTo(const QString &path, Mode mode, const std::function<void()> &between)
{
    constexpr int mostRefusals = 1000;
    constexpr qint64 mostPages = 1 << 30;
    const SqliteEngine target(path, mode, m_wildcards);
    const std::unique_ptr<sqlite3_backup, decltype(&sqlite3_backup_finish)> copying(
        sqlite3_backup_init(target.raw(), "main", raw(), "main"), sqlite3_backup_finish);
    if (!copying) {
        throwSqliteError(target.raw());
    }
    Pace pace(100);
    qint64 growth = 1;
    int refusals = 0;
    int left = std::numeric_limits<int>::max();
    for (int result = SQLITE_OK; result != SQLITE_DONE;) {
        const qint64 slice = std::min(pace.begin() * growth, mostPages);
        result = sqlite3_backup_step(copying.get(), between ? static_cast<int>(slice) : -1);
        pace.end();
        const bool refused = (result == SQLITE_BUSY || result == SQLITE_LOCKED) && between;
        if (result != SQLITE_OK && result != SQLITE_DONE && (!refused || ++refusals == mostRefusals)) {
            throw copyError(result, m_path);
        }
        const int leftNow = sqlite3_backup_remaining(copying.get());
        growth = leftNow > left && growth < mostPages ? growth * 2 : growth;
        left = refused ? left : leftNow;
        if (result != SQLITE_DONE && between) {
            between();
        }
    }
}

// Size and time of the file, and what its head counts.
QByteArray SqliteEngine::stateWithOwnSaves() const
{
    constexpr int offset = 24;
    QByteArray head(headBytes, '\0');
    sqlite3_file *file = nullptr; // a second handle would, when closed, give up the locks of the first
    sqlite3_file_control(raw(), "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void *>(&file));
    if (file != nullptr && file->pMethods != nullptr) {
        file->pMethods->xRead(file, head.data(), headBytes, offset);
    }
    return stampOf(m_path) + head;
}

QByteArray SqliteEngine::state() const
{
    return withoutOwnSaves(m_path, stateWithOwnSaves());
}

void SqliteEngine::transaction(const std::function<void()> &work)
{
    if (sqlite3_get_autocommit(raw()) == 0) {
        return work();
    }
    execute(u"begin immediate"_s);
    const QByteArray before = stateWithOwnSaves(); // from here on nobody else saves
    const qint64 changes = changedRows();
    try {
        work();
        execute(u"commit"_s);
    } catch (...) {
        rollBack();
        throw;
    }
    const QByteArray after = stateWithOwnSaves();
    if (changedRows() != changes && savesIn(after) == savesIn(before) + 1) {
        rememberOwnSave(m_path, before, after);
    }
}

// After a full disk or a damaged page SQLite has rolled back by itself.
void SqliteEngine::rollBack()
{
    if (sqlite3_get_autocommit(raw()) == 0) {
        sqlite3_exec(raw(), "rollback", nullptr, nullptr, nullptr);
    }
}

} // namespace store
