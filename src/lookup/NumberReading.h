#pragma once

#include "core/CodePage.h"
#include "core/RunLog.h"
#include "lookup/NumberEntries.h"
#include "store/Database.h"

#include <QStringList>

#include <limits>

namespace lookup {

/// Adds the numbers text of a row: what `count` columns from `first` on hold, with commas between them.
void appendNumbers(QString &text, const store::Row &row, int first, int count);

/// The reading of one table's numbers, cut into pieces of a few milliseconds, so that a desk of a million
/// customers keeps nothing else waiting. Between two pieces the file is not locked.
class NumberReading
{
public:
    /// The numbers of a row are those of its `numberColumns`, in that order. Throws core::Error.
    NumberReading(core::RunLog &log, const core::CodePage &codePage, const QString &file,
                  const QString &table, const QStringList &numberColumns);

    /// Reads one piece; true when it was the last. Throws core::Error, also when no row holds a number.
    bool readOn();
    /// What was read; once, after the last piece.
    NumberEntries take() { return std::move(m_entries); }

private:
    void readRows();
    void append(const store::Row &row);

    core::RunLog &m_log;
    const core::CodePage &m_codePage;
    store::Database m_database;
    QString m_table;
    QString m_columns;
    int m_columnCount;
    qint64 m_lastKey = std::numeric_limits<qint64>::min() + 1;
    bool m_hasRows = false;
    bool m_rowsEnded = false;
    QString m_numbers; ///< of the row at hand
    NumberEntries m_entries;
};

} // namespace lookup
