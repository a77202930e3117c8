#pragma once

#include "store/Recordset.h"
#include "store/engine/Engine.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

#include <functional>
#include <memory>
#include <optional>

namespace core {
class TextLookup;
}

namespace store {

/// A database, open from construction to destruction. Statements are in the given words.
class Database
{
public:
    using Mode = Engine::Mode;

    /// Opens an existing database; only Mode::New makes one. Throws core::Error when it is missing, no
    /// database, damaged or may not be opened. A file marked read-only opens in either mode; only writing
    /// then fails.
    explicit Database(const QString &path, Mode mode = Mode::ReadWrite,
                      Wildcards wildcards = Wildcards::Asterisk);
    Database(Database &&) noexcept = default;
    Database &operator=(Database &&) noexcept = default;
    ~Database() = default;

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
    /// Whether the given name of an index of that table is taken: a table that was renamed keeps its indexes
    /// under their names.
    bool hasIndex(const QString &table, const QString &name) const;
    /// Auto-numbers of a table up to that one are not given again.
    void keepLastNumber(const QString &table, qint64 number);

    /// Runs `work` as one transaction: all of it is written or, where it throws, nothing. Not to be nested.
    /// To stateOf() such a save is this desk's own, which tells whoever has to know of it.
    void transaction(const std::function<void()> &work);

    /// Where it stands.
    QString path() const;
    /// Another database stands there now, or none. Nothing is written from then on.
    bool isReplaced() const;

    /// Shared with the open recordsets and the readings.
    const std::shared_ptr<Engine> &engine() const { return m_engine; }

private:
    std::shared_ptr<Engine> m_engine;
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
/// What the operator is told of a database that could not be written to, and, where another desk or program
/// holds it, that this is why.
QString notWrittenText(const core::TextLookup &texts, const QString &key, const QString &path);

/// What tells one state of a file from another: changed by every save of another program, and where another
/// file takes its place; not by a transaction of this desk's own, as long as nobody else saves just then.
/// Nothing while another program has it locked, for which this does not wait; a file that is missing or
/// damaged has a state, too.
std::optional<QByteArray> stateOf(const QString &path);

/// What the engine finds wrong with a file's pages and indexes, one finding each; empty for a sound file.
/// Reads all of it. Throws core::Error where it cannot be opened, and soon after `ended` says so.
QStringList damageOf(const QString &path, const std::function<bool()> &ended = {});

/// Copies a database, as it stands at one moment, over another one or, with Mode::New, into a file at a place
/// that its caller has taken. Between two slices it is not locked, and `between` is called, which may throw
/// to end the copying; without it all is copied at once. Throws core::Error; the other is then as it was.
void copyDatabase(const QString &from, const QString &to, Database::Mode mode,
                  const std::function<void()> &between = {});

/// Makes a new database file from a schema in the given words and what `fill` adds, in one step: the file is
/// built beside its place and then renamed, so it is whole or not there. Throws core::Error, also when the
/// file exists.
void createDatabase(const QString &path, const QString &schemaSql,
                    const std::function<void(Database &)> &fill);

} // namespace store
