#include "store/Database.h"

#include "store/Handle.h"
#include "store/LockPatience.h"
#include "store/OwnSaves.h"
#include "store/RecordsetSource.h"
#include "store/Select.h"
#include "store/SqliteEmitter.h"

#include <QFileInfo>

#include <sqlite3.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace store {

namespace {

/// An extended code tells more in its upper bits.
int primaryCode(const core::Error &error)
{
    return error.number() & 0xFF;
}

} // namespace

QByteArrayView Row::bytes(int column) const
{
    sqlite3_value *value = sqlite3_column_value(m_statement, column); // asked for once, not for each of both
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return text != nullptr ? QByteArrayView(text, sqlite3_value_bytes(value)) : QByteArrayView("");
}

QString Row::text(int column) const
{
    return QString::fromUtf8(bytes(column));
}

qint32 Row::integer(int column) const
{
    const qint64 number = sqlite3_column_int64(m_statement, column);
    const bool fits = number == static_cast<qint32>(number); // one cut to 32 bits would name another row
    return fits ? static_cast<qint32>(number) : 0;
}

qint64 Row::key(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

Database::Database(const QString &path, Mode mode) : Database(path, Options{mode, Wildcards::Asterisk}) {}

Database::Database(const QString &path, const Options &options)
    : m_handle(std::make_shared<Handle>(path, options))
{}

Database::Database(std::shared_ptr<Handle> handle) : m_handle(std::move(handle)) {}

Database::~Database() = default;
Database::Database(Database &&) noexcept = default;
Database &Database::operator=(Database &&) noexcept = default;

Recordset Database::OpenRecordset(const QString &tableOrSelect, const QVariantList &bound)
{
    return Recordset(openSource(m_handle, tableOrSelect, bound));
}

qint64 Database::Execute(const QString &sql, const QVariantList &bound)
{
    return m_handle->execute(sql, bound);
}

void Database::forEachRow(const QString &select, const std::function<void(const Row &)> &visit)
{
    forEachBoundRow(select, {}, visit);
}

void Database::forEachBoundRow(const QString &select, const QVariantList &bound,
                               const std::function<void(const Row &)> &visit)
{
    const std::vector<SqlToken> tokens = tokenize(select);
    const std::optional<Select> apart = parseSelect(tokens, m_handle->wildcards());
    m_handle->forEach(apart && apart->tables.size() == 1
                          ? apart->inOrder(apart->columns)
                          : SqliteEmitter(tokens, m_handle->wildcards()).emitted(),
                      bound, visit);
}

void Database::forEachRow(const QString &table, const QStringList &columns,
                          const std::function<void(const Row &)> &visit)
{
    forEachRow(u"select "_s + columns.join(u',') + u" from "_s + table, visit);
}

QStringList Database::tableNames() const
{
    QStringList names;
    Statement statement = m_handle->prepare(
        u"select name from sqlite_schema where type='table' and substr(name,1,7)<>'sqlite_'"_s);
    while (statement.step()) {
        names.append(statement.value(0).toString());
    }
    return names;
}

void Database::transaction(const std::function<void()> &work)
{
    m_handle->transaction(work);
}

QString Database::path() const
{
    return QString::fromUtf8(sqlite3_db_filename(m_handle->engine(), "main"));
}

bool Database::isReplaced() const
{
    return m_handle->isReplaced();
}

std::optional<QByteArray> stateOf(const QString &path)
{
    const NoWaiting atOnce;
    try {
        return withoutOwnSaves(path, Database(path, Database::Mode::ReadOnly).handle()->state());
    } catch (const core::Error &error) {
        return tellsOfLock(error) ? std::nullopt : std::optional(Database::Handle::stamp(path));
    }
}

QStringList damageOf(const QString &path)
{
    Database database(path, Database::Mode::ReadOnly);
    QStringList findings;
    database.forEachRow(u"pragma integrity_check"_s, [&](const Row &row) { findings.append(row.text(0)); });
    findings.removeAll(u"ok"_s);
    return findings;
}

bool tellsOfLock(const core::Error &error)
{
    const int code = primaryCode(error);
    return code == SQLITE_BUSY || code == SQLITE_LOCKED;
}

bool tellsOfDamage(const core::Error &error)
{
    const int code = primaryCode(error);
    return code == SQLITE_CORRUPT || code == SQLITE_IOERR;
}

core::Error damageError(const QString &description)
{
    return {SQLITE_CORRUPT, description};
}

bool isLocked(const QString &path)
{
    const NoWaiting atOnce;
    try {
        Database database(path);
        database.transaction([] {});
        return false;
    } catch (const core::Error &error) {
        return tellsOfLock(error);
    }
}

} // namespace store
