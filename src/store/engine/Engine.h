#pragma once

#include "core/Error.h"
#include "store/SqlTokens.h"

#include <QByteArrayView>
#include <QStringList>
#include <QVariantList>

#include <chrono>
#include <functional>
#include <memory>

// What the store asks of a database engine. Nothing above it knows which one it talks to.
//
// Statements are in the given words, and each engine turns them into its own. Beside what the schemas and the
// given procedures use, these are: "?" for a value; "rowid", the key that a table's rows have of their own, a
// whole number in the order in which they were added; "cross join", two tables that are gone through in that
// order; "[table] indexed by [index]", where the engine would not find that out; "limit" and "offset"; and
// "returning" behind an insert.
namespace store {

/// One row of a reading, valid only until the next one is asked for. Columns are numbered from 0 in the order
/// of the select list; a Null reads as "" or 0.
class Row
{
public:
    QString text(int column) const;
    /// The text as the engine holds it, in UTF-8.
    virtual QByteArrayView bytes(int column) const = 0;
    qint32 integer(int column) const;
    /// The row's own key, column "rowid".
    virtual qint64 key(int column) const = 0;

protected:
    ~Row() = default;
};

/// One prepared statement, and the row that it stands on.
class Statement : public Row
{
public:
    virtual ~Statement() = default;

    /// Takes as many values as the statement has marks. Throws core::Error.
    virtual void bind(const QVariantList &values) = 0;
    /// True when a row stands ready, false behind the last. Throws core::Error, also where the reading breaks
    /// off at a damaged page.
    virtual bool step() = 0;
    /// Gives up what the reading has locked; to be called as soon as the rows wanted are read.
    virtual void reset() = 0;

    virtual QStringList columnNames() const = 0;
    /// A whole number, a bool for a yes/no column, a double, text or bytes; a null QVariant for Null.
    virtual QVariant value(int column) const = 0;
    virtual QVariantList row() const = 0;
};

/// Resets a statement when the reading of it ends, however it ends.
class StatementReset
{
public:
    explicit StatementReset(Statement &statement) : m_statement(statement) {}
    ~StatementReset() { m_statement.reset(); }
    Q_DISABLE_COPY_MOVE(StatementReset)

private:
    Statement &m_statement;
};

/// An index of a table, under the name that it has in the database.
struct Index
{
    QString name;
    QStringList columns;
    bool ofAllRows; ///< and not of those alone that meet a condition

    /// Given names are a table's own; in the database its name stands in front.
    bool isNamed(const QString &table, const QString &given) const
    {
        return name.compare(table + u'_' + given, Qt::CaseInsensitive) == 0;
    }
};

/// One opened database, shared by whoever reads or writes in it. Its statements must go before it. Every
/// member throws core::Error where the database fails.
class Engine
{
public:
    /// Salvage reads what is left of a damaged database, one that was cut off included, and writes nothing.
    /// New makes one at a place that its caller has taken.
    enum class Mode { ReadWrite, ReadOnly, Salvage, New };

    virtual ~Engine() = default;
    Q_DISABLE_COPY_MOVE(Engine)

    virtual std::unique_ptr<Statement> prepare(const SqlTokens &sql) = 0;
    /// Calls `visit` for each row of a select.
    void forEach(const SqlTokens &select, const QVariantList &bound,
                 const std::function<void(const Row &)> &visit);
    /// Runs one statement; the number of rows changed.
    qint64 execute(const QString &sql, const QVariantList &bound = {});
    /// All of `work` or nothing of it; inside another transaction it becomes a part of that one.
    virtual void transaction(const std::function<void()> &work) = 0;

    /// The names of the tables as they were created.
    virtual QStringList tableNames() = 0;
    virtual QList<Index> indexesOf(const QString &table) = 0;
    /// The name of a table's auto-number column, "" without one.
    virtual QString autoNumberOf(const QString &table) = 0;
    /// Takes the next auto-number for good: two programs that add rows at the same time get two, and one that
    /// gives up leaves a gap. Nothing stays locked until the row is written.
    virtual qint64 reserveNumber(const QString &table) = 0;
    /// Numbers up to that one are not given again.
    virtual void keepLastNumber(const QString &table, qint64 number) = 0;

    /// Where the database stands.
    virtual QString path() const = 0;
    /// Another database stands there now, or none.
    virtual bool isReplaced() const = 0;
    /// Changed by every save of another program, and not by a transaction of this one.
    virtual QByteArray state() const = 0;
    /// What is wrong with it, one finding each. Reads all of it.
    virtual QStringList damage() = 0;
    /// Copies it, as it stands at one moment, over the database at a place, or makes that one (Mode::New).
    /// Between two slices of some milliseconds nothing of it is locked and `between` is called; what that
    /// throws ends the copying, and nothing was copied. Without it all is copied at once.
    virtual void copyTo(const QString &path, Mode mode, const std::function<void()> &between) = 0;
    /// Statements that take long fail as soon as this says so, which they ask now and then.
    virtual void endWhen(std::function<bool()> ended) = 0;

protected:
    Engine() = default;
    virtual qint64 changedRows() const = 0; ///< since it was opened
    void forgetPrepared() { m_lastStatement.reset(); }

private:
    Statement &preparedOnce(const QString &sql);

    QString m_lastSql;
    std::unique_ptr<Statement> m_lastStatement; ///< a loop over one statement prepares it once
};

/// Opens the database at a place; the place tells of which engine it is.
std::shared_ptr<Engine> openEngine(const QString &path, Engine::Mode mode, Wildcards wildcards);

/// Gives a database that nobody has open another name, with what its engine keeps beside it; what is not
/// there is not moved. Throws core::Error.
void moveDatabase(const QString &from, const QString &to);

/// As long as it lives, its thread does not wait for another program's lock: for what nobody has asked for
/// just now.
class NoWaiting
{
public:
    /// Where it does not apply, its thread waits as it did before.
    explicit NoWaiting(bool applies = true);
    ~NoWaiting();
    Q_DISABLE_COPY_MOVE(NoWaiting)

private:
    bool m_before;
};

/// Sleeps for a moment where another program has locked what is needed, `times` being how often it did so
/// before; false to give up. All databases of a thread share one patience of half a second, which grows again
/// while none waits: however many statements a click runs, one behind the other and on however many files,
/// the window stands still for half a second, and not for half a second each.
bool waitForLock(int times, const std::function<void(std::chrono::milliseconds)> &sleep);

} // namespace store
