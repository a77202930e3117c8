#pragma once

#include "store/engine/Engine.h"

struct sqlite3;
struct sqlite3_stmt;

namespace store {

/// A statement of SQLite, already in its own words.
class SqliteStatement final : public Statement
{
public:
    /// Throws core::Error for words that SQLite does not take.
    SqliteStatement(sqlite3 *engine, const QString &sql);

    void bind(const QVariantList &values) override;
    bool step() override;
    void reset() override;
    QStringList columnNames() const override;
    QByteArrayView bytes(int column) const override;
    qint64 key(int column) const override;
    QVariant value(int column) const override;
    QVariantList row() const override;

private:
    struct Finalize
    {
        void operator()(sqlite3_stmt *statement) const;
    };
    sqlite3_stmt *raw() const { return m_statement.get(); }
    void bindOne(int position, const QVariant &value);
    bool isYesNo(int column) const;

    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// A failure with the primary number of SQLite's code, and what kind it is.
core::Error sqliteError(int code, const QString &description);

/// Throws what SQLite reports of its last failure, with its primary error code and the file's name.
[[noreturn]] void throwSqliteError(sqlite3 *engine);

} // namespace store
