#include "store/Handle.h"

#include "store/EngineFunctions.h"
#include "store/LockPatience.h"
#include "store/OwnSaves.h"
#include "store/SqlDialect.h"
#include "store/TextOrder.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <QtEndian>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace store {

namespace {

/// Says clearly what the engine would report as trouble with its own innards, or mend by creating a file.
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
        throw core::Error(SQLITE_NOTADB, u"the database file is empty: "_s + path);
    }
}

bool isMarkedReadOnly(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() && !(file.permissions() & QFile::WriteOwner);
}

/// The path as the engine's address, the only form in which it can be told not to create a missing file.
QString address(const QString &path, QLatin1StringView mode)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const QByteArray encoded = QUrl::toPercentEncoding(absolute, "/:");
    const QLatin1StringView root = absolute.startsWith(u'/') ? ""_L1 : "/"_L1;
    return u"file://"_s + root + QString::fromLatin1(encoded) + u"?mode="_s + mode;
}

constexpr int headBytes = 16; // the count of saves, of pages and of free pages

quint32 savesIn(const QByteArray &state)
{
    return qFromBigEndian<quint32>(state.constEnd() - headBytes);
}

/// Our calls on the driver's handle are sound only when both run the same copy of the engine.
void checkSameEngine(const QSqlDatabase &driver)
{
    QSqlQuery query(u"select sqlite_source_id()"_s, driver);
    if (!query.next() || query.value(0).toString() != QLatin1StringView(sqlite3_sourceid())) {
        throw core::Error(SQLITE_MISUSE, u"the database driver brings another engine than the program's"_s);
    }
}

} // namespace

Database::Handle::DriverName::~DriverName()
{
    QSqlDatabase::removeDatabase(name);
}

Database::Handle::Handle(const QString &path, const Options &options, File file)
    : m_path(path), m_options(options), m_driver{u"calldesk-"_s + QString::number(quintptr(this), 16)}
{
    if (file == File::Existing) {
        checkFile(path);
    }
    openDriver(path, file);
    harden();
    registerFunctions(m_engine);
    makeReady(file);
}

void Database::Handle::openDriver(const QString &path, File file)
{
    const bool readOnly = m_options.mode == Mode::Salvage || isMarkedReadOnly(path);
    const QLatin1StringView mode = file == File::New ? "rwc"_L1 : readOnly ? "ro"_L1 : "rw"_L1;
    QSqlDatabase driver = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_driver.name);
    driver.setDatabaseName(address(path, mode));
    driver.setConnectOptions(u"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=0"_s);
    if (!driver.open()) {
        const QSqlError error = driver.lastError();
        throw core::Error(error.nativeErrorCode().toInt(), error.text() + u": "_s + path);
    }
    checkSameEngine(driver);
    m_engine = *static_cast<sqlite3 *const *>(driver.driver()->handle().constData());
    waitForLocks(m_engine);
}

/// A file may come from anywhere: its schema runs none of our functions that could do harm, no triggers, no
/// views and no extensions, and cannot be made to write the engine's own tables.
void Database::Handle::harden() const
{
    // A file that lacks pages is opened only by who might mend its schema, here without being able to write.
    const bool salvage = m_options.mode == Mode::Salvage;
    sqlite3_db_config(m_engine, SQLITE_DBCONFIG_DEFENSIVE, salvage ? 0 : 1, nullptr);
    sqlite3_db_config(m_engine, SQLITE_DBCONFIG_WRITABLE_SCHEMA, salvage ? 1 : 0, nullptr);
    sqlite3_db_config(m_engine, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(m_engine, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(m_engine, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(m_engine, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
}

/// The first statements on the file, so what is no database, damaged or locked shows here.
void Database::Handle::makeReady(File file)
{
    execute(u"pragma cell_size_check=on"_s);
    execute(u"select count(*) from sqlite_schema"_s);
    if (sqlite3_db_readonly(m_engine, "main") == 0) {
        execute(u"pragma journal_mode=delete"_s);
        execute(u"pragma synchronous=full"_s);
        renewTextOrder(file);
    }
    if (m_options.mode == Mode::ReadOnly) {
        // Not the engine's own read-only mode: what another program left half saved must still be undone.
        execute(u"pragma query_only=on"_s);
    }
}

/// Indexes that were built with another version of the text order would hide rows. Files without our order
/// are left as they are.
void Database::Handle::renewTextOrder(File file)
{
    const bool current = number(u"pragma user_version"_s) == textOrderVersion;
    const bool ordered = file == File::New ||
                         number(u"select count(*) from sqlite_schema where instr(sql,' COLLATE JET')"_s) > 0;
    if (!current && ordered) {
        transaction([this] {
            execute(u"reindex JET"_s);
            execute(u"pragma user_version="_s + QString::number(textOrderVersion));
        });
    }
}

qint64 Database::Handle::number(const QString &sql) const
{
    Statement statement = prepare(sql);
    return statement.step() ? statement.value(0).toLongLong() : 0;
}

Statement Database::Handle::prepare(const QString &sql) const
{
    return Statement(m_engine, toSqlite(sql, m_options.wildcards));
}

void Database::Handle::forEach(const QString &select, const QVariantList &bound,
                               const std::function<void(const Row &)> &visit) const
{
    Statement statement(m_engine, select);
    statement.bind(bound);
    const Row row(statement.raw());
    while (statement.step()) {
        visit(row);
    }
}

Statement &Database::Handle::preparedOnce(const QString &sql)
{
    if (!m_lastStatement || m_lastSql != sql) {
        m_lastStatement = std::make_unique<Statement>(prepare(sql));
        m_lastSql = sql;
    }
    return *m_lastStatement;
}

qint64 Database::Handle::execute(const QString &sql, const QVariantList &bound)
{
    Statement &statement = preparedOnce(sql);
    const StatementReset reset(statement);
    const int before = sqlite3_total_changes(m_engine);
    statement.bind(bound);
    while (statement.step()) {
    }
    return sqlite3_total_changes(m_engine) - before;
}

bool Database::Handle::isReplaced() const
{
    int moved = 0;
    sqlite3_file_control(m_engine, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

QByteArray Database::Handle::stamp(const QString &path)
{
    const QFileInfo file(path);
    return QByteArray::number(file.size()) + ' ' +
           QByteArray::number(file.lastModified().toMSecsSinceEpoch());
}

QByteArray Database::Handle::state() const
{
    constexpr int offset = 24;
    QByteArray head(headBytes, '\0');
    sqlite3_file *file = nullptr; // a second handle would, when closed, give up the locks of the first
    sqlite3_file_control(m_engine, "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void *>(&file));
    if (file != nullptr && file->pMethods != nullptr) {
        file->pMethods->xRead(file, head.data(), headBytes, offset);
    }
    return stamp(m_path) + head;
}

void Database::Handle::transaction(const std::function<void()> &work)
{
    if (sqlite3_get_autocommit(m_engine) == 0) {
        return work();
    }
    execute(u"begin immediate"_s);
    const QByteArray before = state(); // from here on nobody else saves
    const int changes = sqlite3_total_changes(m_engine);
    try {
        work();
        execute(u"commit"_s);
    } catch (...) {
        rollBack();
        throw;
    }
    const QByteArray after = state();
    if (sqlite3_total_changes(m_engine) != changes && savesIn(after) == savesIn(before) + 1) {
        rememberOwnSave(m_path, before, after);
    }
}

/// After a full disk or a damaged page the engine has rolled back by itself.
void Database::Handle::rollBack()
{
    if (sqlite3_get_autocommit(m_engine) == 0) {
        sqlite3_exec(m_engine, "rollback", nullptr, nullptr, nullptr);
    }
}

} // namespace store
