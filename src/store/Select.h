#pragma once

#include "store/SqlTokens.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace store {

/// A select over the rows of one table, or of two that its conditions join, taken apart so that its rows can
/// be found again by their keys and gone through in pieces. Every part stands in the given words.
struct Select
{
    /// A column as a condition names it.
    struct ColumnName
    {
        QString table; ///< "" where the condition leaves it open
        QString name;
    };
    /// One of what "and" joins, in brackets.
    struct Condition
    {
        SqlTokens words;
        std::vector<ColumnName> names; ///< keywords and numbers among them
    };
    SqlTokens columns; ///< the select list
    QStringList names; ///< the bare name of each of its columns
    QStringList tables;
    std::vector<Condition> conditions;
    SqlTokens order;     ///< what stands behind "order by", nothing without
    QString orderColumn; ///< the same where it is a single column, upwards; else ""

    const QString &table() const { return tables.front(); }
    bool isWholeTable() const { return conditions.empty() && order.empty(); }

    /// All columns of all rows of a table.
    static Select wholeTable(const QString &table);
    /// "where" with the conditions, and one more; nothing where there is none.
    SqlTokens where(const SqlTokens &oneMore = {}) const;
    /// The statement that reads `columnList` instead; where the words give no order, in the order of the
    /// table's rows, which the engine would else swap for that of an index. Of one table only.
    SqlTokens inOrder(const SqlTokens &columnList) const;
};

/// Whether a condition can be answered by the columns of `table` alone, `others` being those of the table
/// that it is joined with.
bool isAbout(const Select::Condition &condition, const QString &table, const QStringList &columns,
             const QStringList &others);

/// The pieces of a select over so many tables. Throws core::Error for anything else.
Select selectOf(const QString &sql, qsizetype tables);

/// Nothing for what is no such select: a grouping, a computed column, a select within, a bracket too many.
std::optional<Select> parseSelect(const SqlTokens &tokens);

} // namespace store
