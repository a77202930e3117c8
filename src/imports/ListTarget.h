#pragma once

#include "core/Paths.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <functional>

namespace imports {

/// What a field makes of the text that it is given.
enum class FieldShape : quint8 {
    Name,    ///< one line; several columns are parted by blanks
    Line,    ///< one line; several columns are parted by commas
    Lines,   ///< a text of any length, with its line breaks
    Numbers, ///< phone numbers, parted by commas
    Flag     ///< yes or no, which reach the column as "1" and "0"
};

/// A column of the table that rows are imported into.
struct TargetField
{
    QString column;
    QString captionKey; ///< the text key that names it
    FieldShape shape = FieldShape::Line;
    qsizetype width = 0; ///< in characters; 0: as many as a cell may have
    std::function<QVariant(const QString &text)> stored;
};

/// What tells that a row is on file already.
enum class RowKey : quint8 { Nothing, Number, Id, Name };

/// A table that rows are imported into.
struct ListTarget
{
    QString file;
    QString table;
    QList<TargetField> fields = {};
    QVariantList defaults = {}; ///< of a new row, in the order of the fields
    QList<int> names = {};      ///< fields; the first one tells the row, others stand in where it is blank
    QList<int> numbers = {};
    int id = -1;              ///< the field that no two rows may share; -1: none
    bool needsNumber = false; ///< rows without one are refused, else those without a name
    bool namesNotes = false;  ///< call notes stand under the name, and follow it

    int fieldOf(QStringView column) const;
    /// The fields that tell a row by that key.
    QList<int> fieldsOf(RowKey key) const;
};

ListTarget customersOf(const core::Paths &paths);
ListTarget phoneBookOf(const core::Paths &paths);

} // namespace imports
