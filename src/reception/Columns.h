#pragma once

#include "core/CodePage.h"

#include <QString>

namespace reception {

/// The byte columns that `text` takes.
qsizetype ByteColumns(QStringView text, const core::ColumnRule &rule = {});

/// The characters in `width` byte columns from `startCol` (counted from 1); a double-byte character belongs
/// to the field that holds its second byte. Empty beyond the end of the text.
QString MidByCols(QStringView text, qsizetype startCol, qsizetype width, const core::ColumnRule &rule = {});

} // namespace reception
