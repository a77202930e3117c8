#pragma once

#include "store/TableSource.h"

namespace store {

/// The rows that a condition chooses of one table, found slice by slice in the order of the table's rows. A
/// slice is a run of rows of the table, of a few milliseconds' work; the file is locked only that long.
class SlicedSource : public TableSource
{
public:
    /// Throws core::Error for a condition that the engine does not take.
    SlicedSource(const std::shared_ptr<Database::Handle> &handle, const TableSelect &search);

    bool readOn(std::chrono::milliseconds time) override;
    /// Refused: a seek would leave the rows chosen.
    void setIndex(const QString &name) override { Source::setIndex(name); } // NOLINT: not the table's own

private:
    void readSlice();
    qint64 endOfSlice();

    Statement m_sliceEnd;
    Statement m_slice;
    qint64 m_lastKey = std::numeric_limits<qint64>::min();
    qint64 m_sliceRows = 2000;
    bool m_ended = false;
};

} // namespace store
