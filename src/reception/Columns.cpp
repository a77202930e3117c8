#include "reception/Columns.h"

#include "core/TextUtilities.h"

#include <algorithm>

namespace reception {

qsizetype ByteColumns(QStringView text, const core::ColumnRule &rule)
{
    qsizetype columns = 0;
    for (qsizetype at = 0; at < text.size();) {
        const core::CodePoint character = core::codePointAt(text, at);
        columns += rule.columnsOf(character.code);
        at += character.units;
    }
    return columns;
}

QString MidByCols(QStringView text, qsizetype startCol, qsizetype width, const core::ColumnRule &rule)
{
    const qsizetype lastCol = startCol + width - 1;
    qsizetype column = 0;
    qsizetype first = text.size();
    qsizetype end = 0;
    for (qsizetype at = 0; at < text.size();) {
        const core::CodePoint character = core::codePointAt(text, at);
        column += rule.columnsOf(character.code);
        if (column > lastCol) {
            break;
        }
        if (column >= startCol) {
            first = std::min(first, at);
            end = at + character.units;
        }
        at += character.units;
    }
    return first < end ? text.sliced(first, end - first).toString() : QString();
}

} // namespace reception
