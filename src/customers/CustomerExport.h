#pragma once

#include "core/AtomicFile.h"
#include "core/Background.h"
#include "customers/SpreadsheetWriter.h"
#include "store/Database.h"
#include "store/Pace.h"

#include <atomic>

namespace customers {

/// The export of all customers into a spreadsheet file, on a thread of its own: the library keeps the rows in
/// a temporary file and packs it in the end, and neither can be held up by an event loop that has others to
/// serve. The rows are read in slices, so that whoever saves a customer meanwhile need not wait. The file is
/// written beside its place and then moved there: under its name stands what stood there before, or the
/// whole. Errors are thrown as core::Error.
class CustomerExport
{
public:
    /// `query` is one of exportQuery(), with the "rowid" and then as many fields as there are headings.
    CustomerExport(const QString &databaseFile, const QString &query, const QStringList &headings,
                   const QString &target);
    /// Drops it, or waits for what cannot be dropped any more.
    ~CustomerExport() { drop(); }
    /// How many customers would be exported.
    static int countCustomers(store::Database &database);
    Q_DISABLE_COPY_MOVE(CustomerExport)

    /// True, once, when the file stands at its place; throws what the export failed with.
    bool hasEnded();
    /// Gives it up: nothing of it comes to its place from now on. False where it is being packed already,
    /// which is nearly done.
    bool drop();
    bool isPacking() const { return m_stage == Stage::Packing; }
    int rowsWritten() const { return m_rowsWritten; }
    int rowCount() const { return m_rowCount; }

private:
    enum class Stage : quint8 { Writing, Packing, Dropped };

    void writeAll(const QString &databaseFile, const QStringList &headings);
    bool writeRows(store::Database &database);
    bool writeSlice(store::Database &database);

    QString m_select; ///< of the next rows; asks for the key before them, and how many
    store::Pace m_pace;
    core::FileBeside m_beside; ///< beside the target
    SpreadsheetWriter m_writer;
    int m_columnCount;
    qint64 m_lastKey;
    std::atomic<int> m_rowCount = 0;
    std::atomic<int> m_rowsWritten = 0;
    std::atomic<Stage> m_stage = Stage::Writing;
    core::Background<void> m_work; ///< last, since it works with what is above
};

} // namespace customers
