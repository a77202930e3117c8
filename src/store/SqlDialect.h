#pragma once

#include "store/SqlTokens.h"
#include "store/Wildcards.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace store {

/// A statement in the given words, in SQLite's words. Throws core::Error for an unclosed quote and for more
/// than one statement.
QString toSqlite(QStringView sql, Wildcards wildcards);

/// The statements of a schema text, cut at their semicolons.
QStringList statementsOf(QStringView schemaSql);

/// A select over the rows of a single table, taken apart so that its rows can be found again by their keys.
struct TableSelect
{
    QString table;
    QString columns; ///< the select list
    QString tail;    ///< from "where" or "order by" on, "" without either
    bool ordered = false;

    /// The select of `columnList` instead; where the words give no order, in the order of the table's rows,
    /// which the engine would else swap for that of an index.
    QString inOrder(const QString &columnList) const;
    QString inOrder() const { return inOrder(columns); }
};

/// Nothing when `sql` is a join, a grouping or otherwise more than the rows of one table.
std::optional<TableSelect> asTableSelect(QStringView sql);

} // namespace store
