#pragma once

#include "core/CodePage.h"

#include <QString>

#include <vector>

namespace reception {

/// A text cut by byte columns. Where they end is counted once, however many fields are then cut out of it.
/// The text must outlive it.
class Columns
{
public:
    Columns(QStringView text, const core::ColumnRule &rule);

    /// The byte columns of the whole text.
    qsizetype count() const { return m_isAscii ? m_text.size() : std::ssize(m_ends) - 1; }
    /// See MidByCols.
    QStringView mid(qsizetype startCol, qsizetype width) const;
    /// Each character takes one column.
    bool isAscii() const { return m_isAscii; }

private:
    qsizetype endOf(qsizetype column) const;

    QStringView m_text;
    bool m_isAscii;
    std::vector<qsizetype> m_ends; ///< behind the last character that ends in the column, or before it
};

/// The byte columns that `text` takes.
qsizetype ByteColumns(QStringView text, const core::ColumnRule &rule = {});

/// The characters in `width` byte columns from `startCol` (counted from 1); a double-byte character belongs
/// to the field that holds its second byte. Empty beyond the end of the text.
QString MidByCols(QStringView text, qsizetype startCol, qsizetype width, const core::ColumnRule &rule = {});

} // namespace reception
