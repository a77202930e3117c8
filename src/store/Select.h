#pragma once

#include "store/SqlTokens.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace store {

/// A select over the rows of one table, or of two that its conditions join, taken apart so that its rows can
/// be found again by their keys and gone through in pieces. Every piece stands in the given words.
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
        QString words;
        std::vector<ColumnName> names; ///< keywords and numbers among them
    };
    QString columns;   ///< the select list
    QStringList names; ///< the bare name of each of its columns
    QStringList tables;
    std::vector<Condition> conditions;
    QString order;       ///< what stands behind "order by", "" without
    QString orderColumn; ///< the same where it is a single column, upwards; else ""

    const QString &table() const { return tables.front(); }
    bool isWholeTable() const { return conditions.empty() && order.isEmpty(); }

    /// The columns of all rows of a table.
    static Select wholeTable(const QString &table, const QString &columns = QStringLiteral("*"));
    /// The statement that reads `columnList` instead; where the words give no order, in the order of the
    /// table's rows, which the engine would else swap for that of an index. Of one table only.
    QString inOrder(const QString &columnList) const;
};

/// Whether a condition can be answered by the columns of `table` alone, `others` being those of the table
/// that it is joined with.
bool isAbout(const Select::Condition &condition, const QString &table, const QStringList &columns,
             const QStringList &others);

/// The pieces of a select over so many tables. Throws core::Error for anything else.
Select selectOf(const QString &sql, qsizetype tables);

/// Nothing for what is no such select: a grouping, a computed column, a select within, a bracket too many.
std::optional<Select> parseSelect(const std::vector<SqlToken> &tokens);

} // namespace store
