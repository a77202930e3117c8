#pragma once

#include "core/Error.h"
#include "store/Recordset.h"
#include "store/Wildcards.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <functional>
#include <memory>
#include <optional>

struct sqlite3_stmt;

namespace store {

/// One row of a forward-only reading, valid only inside the callback. Columns are numbered from 0 in the
/// order of the select list; a Null reads as "" or 0.
class Row
{
public:
    explicit Row(sqlite3_stmt *statement) : m_statement(statement) {}
    QString text(int column) const;
    /// The text as the engine holds it, in UTF-8.
    QByteArrayView bytes(int column) const;
    qint32 integer(int column) const;
    /// The engine's own key of a row, column "rowid".
    qint64 key(int column) const;

private:
    sqlite3_stmt *m_statement;
};

/// A database file, open from construction to destruction. The engine's functions and text order are
/// registered; statements are in the given words and pass the SqlDialect on their way.
class Database
{
public:
    /// Salvage reads what is left of a damaged file, one that was cut off included, and writes nothing.
    enum class Mode { ReadWrite, ReadOnly, Salvage };
    struct Options
    {
        Mode mode = Mode::ReadWrite;
        Wildcards wildcards = Wildcards::Asterisk;
    };

    /// Opens an existing database file; never creates one. Throws core::Error when it is missing, no
    /// database, damaged or may not be opened. A file marked read-only opens in either mode; only writing
    /// then fails.
    explicit Database(const QString &path, Mode mode = Mode::ReadWrite);
    Database(const QString &path, const Options &options);
    ~Database();
    Database(Database &&) noexcept;
    Database &operator=(Database &&) noexcept;

    /// A cursor over a table (its name alone) or over the result of a select. Throws core::Error.
    Recordset OpenRecordset(const QString &tableOrSelect, const QVariantList &bound = {});

    /// Runs one statement; the number of rows changed. Throws core::Error.
    qint64 Execute(const QString &sql, const QVariantList &bound = {});

    /// Calls `visit` for each row of a select, in order, without keeping any. The fastest way to read a whole
    /// table. Throws core::Error also when the reading breaks off at a damaged page.
    void forEachRow(const QString &select, const std::function<void(const Row &)> &visit);
    /// The same with values for the marks in the select.
    void forEachBoundRow(const QString &select, const QVariantList &bound,
                         const std::function<void(const Row &)> &visit);
    /// The same for the named columns of a whole table.
    void forEachRow(const QString &table, const QStringList &columns,
                    const std::function<void(const Row &)> &visit);

    /// The names of the tables as they were created.
    QStringList tableNames() const;

    /// Runs `work` as one transaction: all of it is written or, where it throws, nothing. Not to be nested.
    /// To stateOf() such a save is this desk's own, which tells whoever has to know of it.
    void transaction(const std::function<void()> &work);

    /// Where the file stands.
    QString path() const;

    /// Another file stands under the path now, or none. The engine writes nothing from then on.
    bool isReplaced() const;

    class Handle; // the driver's side, shared with the open recordsets and the readings
    const std::shared_ptr<Handle> &handle() const { return m_handle; }

private:
    friend void createDatabase(const QString &, const QString &, const std::function<void(Database &)> &);
    explicit Database(std::shared_ptr<Handle> handle);

    std::shared_ptr<Handle> m_handle;
};

/// Whether another program's lock is what has failed.
bool tellsOfLock(const core::Error &error);
/// Whether what has failed is a page of the file, or the lack of one.
bool tellsOfDamage(const core::Error &error);
/// What to throw where the contents of a file contradict each other.
core::Error damageError(const QString &description);
/// Whether another program's lock keeps the file from being read or written right now; does not wait for it.
/// A file that is missing or damaged is not locked.
bool isLocked(const QString &path);

/// What tells one state of a file from another: changed by every save of another program, and where another
/// file takes its place; not by a transaction of this desk's own, as long as nobody else saves just then.
/// Nothing while another program has it locked, for which this does not wait; a file that is missing or
/// damaged has a state, too.
std::optional<QByteArray> stateOf(const QString &path);

/// What the engine finds wrong with a file's pages and indexes, one finding each; empty for a sound file.
/// Reads all of it. Throws core::Error where it cannot be opened.
QStringList damageOf(const QString &path);

/// Makes a new database file from a schema in the given words and what `fill` adds, in one step: the file is
/// built beside its place and then renamed, so it is whole or not there. Throws core::Error, also when the
/// file exists.
void createDatabase(const QString &path, const QString &schemaSql,
                    const std::function<void(Database &)> &fill);

} // namespace store
