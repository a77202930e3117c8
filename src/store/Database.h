#pragma once

#include "core/Error.h"
#include "store/Recordset.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

#include <functional>
#include <memory>

struct sqlite3_stmt;

namespace store {

/// One row of a forward-only reading, valid only inside the callback. Columns are numbered from 0 in the
/// order of the select list; a Null reads as "" or 0.
class Row
{
public:
    explicit Row(sqlite3_stmt *statement) : m_statement(statement) {}
    QString text(int column) const;
    qint32 integer(int column) const;
    bool isNull(int column) const;

private:
    sqlite3_stmt *m_statement;
};

/// A database file, open from construction to destruction. The engine's functions and text order are
/// registered; statements are in the given words and pass the SqlDialect on their way.
class Database
{
public:
    enum class Mode { ReadWrite, ReadOnly };

    /// Opens an existing database file; never creates one. Throws core::Error when it is missing, no
    /// database, damaged or may not be opened. Another program's lock is waited for at most half a second.
    explicit Database(const QString &path, Mode mode = Mode::ReadWrite);
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

    /// The names of the tables as they were created.
    QStringList tableNames() const;

    class Connection; // the driver's side, shared with the open recordsets
private:
    std::shared_ptr<Connection> m_connection;
};

} // namespace store
