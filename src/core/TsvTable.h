#pragma once

#include <QList>
#include <QStringList>

namespace core {

/// Tab-separated text whose first line names the columns. In a field "\n" stands for a line break and "\\"
/// for one backslash. The last column may be named in brackets: a line may end before it, and nothing of it
/// is kept.
struct TsvTable
{
    QStringList columns;     ///< without one in brackets
    QList<QStringList> rows; ///< each as long as `columns`

    /// The field of a row by its column's name. Throws Error when there is no such column.
    QString field(const QStringList &row, const QString &column) const;
};

/// `name` stands in the message of the Error that is thrown for a line with too few or too many fields.
TsvTable parseTsv(const QString &text, const QString &name);

} // namespace core
