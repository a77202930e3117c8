#pragma once

#include "imports/ListFile.h"
#include "imports/ListTarget.h"

namespace imports {

/// What can be told of a list by its first rows.
struct Guess
{
    bool hasHeadings = false;
    QList<int> fieldOfColumn; ///< a field of the target for each column; -1 where none fits
};

/// By the headings, in whatever language of the program, and otherwise by what the cells look like.
Guess guessOf(const ListTarget &target, ListKind kind, const QList<QStringList> &rows);
/// The same where it is known whether the first row holds headings.
QList<int> fieldsOf(const ListTarget &target, bool hasHeadings, const QList<QStringList> &rows);

} // namespace imports
