#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace store {

/// One prepared statement of the engine, already in its own words. Rows are read through the engine's
/// interface and not the driver's, which converts every column of every row and ends a broken-off reading
/// without an error.
class Statement
{
public:
    /// Throws core::Error for words that the engine does not take.
    Statement(sqlite3 *engine, const QString &sql);

    void bind(const QVariantList &values);
    /// True when a row stands ready, false behind the last. Throws core::Error.
    bool step();
    /// Gives up the file's lock; to be called as soon as the rows wanted are read.
    void reset();

    int columnCount() const;
    QStringList columnNames() const;
    /// A whole number, a bool for a yes/no column, a double, text or bytes; a null QVariant for Null.
    QVariant value(int column) const;
    QVariantList row() const;
    sqlite3_stmt *raw() const { return m_statement.get(); }

private:
    struct Finalize
    {
        void operator()(sqlite3_stmt *statement) const;
    };
    void bindOne(int position, const QVariant &value);
    bool isYesNo(int column) const;

    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
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

/// Throws what the engine reports of its last failure, with its primary error code and the file's name.
[[noreturn]] void throwEngineError(sqlite3 *engine);

} // namespace store
