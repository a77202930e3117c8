#pragma once

#include <QString>
#include <QStringList>

namespace store {

/// Which of two tables leads in a join, and by which columns its rows are gone through.
struct JoinTables
{
    QString details; ///< the table with many rows for one of the other
    QString masters;
    QString group; ///< the column of the masters that comes first in the result's order
    QString key;   ///< the column of both that joins them, unique among the masters
};

/// A given select over two joined tables, taken apart so that its rows can be read in pieces.
struct JoinSelect
{
    JoinTables tables;
    QString columns;        ///< the select list
    QStringList names;      ///< the bare name of each of its columns
    QStringList conditions; ///< what "and" joins
    QString order;          ///< from "order by" on, "" without

    /// The statement that reads `columnList` instead, with one more condition, the tables gone through from
    /// `first` to `second`.
    QString over(const QString &columnList, const QString &first, const QString &second,
                 const QString &condition) const;
    /// One row by the rowids of its detail and its master.
    QString rowByKeys() const;
};

/// Takes "select LIST from TABLE,TABLE where CONDITIONS" with or without an order apart. Throws core::Error
/// for anything else.
JoinSelect takeApart(const QString &select, const JoinTables &tables);

} // namespace store
