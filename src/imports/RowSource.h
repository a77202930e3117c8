#pragma once

#include <QStringList>

#include <optional>

namespace imports {

/// What is read of a row at most.
inline constexpr qsizetype mostColumns = 256;
inline constexpr qsizetype mostCellCharacters = 65536;

/// Why the cells of a row cannot be relied on.
enum class RowTrouble : quint8 {
    None,
    Characters, ///< some are none of the chosen code page
    Unclosed,   ///< a quotation mark that nothing closes, or a cell that is too large
    Columns     ///< more than there may be
};

struct SourceRow
{
    qint64 number = 0; ///< as a spreadsheet counts it, or among the cards; from 1
    QStringList cells = {};
    RowTrouble trouble = RowTrouble::None;
};

/// The rows of a foreign list, one behind the other, whatever its size. Rows of blanks alone are left out.
/// Throws core::Error where the file cannot be read on.
class RowSource
{
public:
    RowSource() = default;
    virtual ~RowSource() = default;
    Q_DISABLE_COPY_MOVE(RowSource)

    /// Nothing behind the last.
    virtual std::optional<SourceRow> next() = 0;
    /// How much of the file has been read, in thousandths.
    virtual int perMille() const = 0;
};

} // namespace imports
