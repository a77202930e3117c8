#pragma once

#include "core/AtomicFile.h"
#include "customers/SpreadsheetWriter.h"
#include "store/Database.h"
#include "store/Pace.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <limits>
#include <optional>
#include <thread>

namespace customers {

/// The export of all customers into a spreadsheet file, cut into steps. The file is written beside its place
/// and then moved there: under its name stands what stood there before, or the whole. Before that happens the
/// export may be dropped at any moment. Errors are thrown as core::Error.
class CustomerExport
{
public:
    /// `query` is one of exportQuery(), with the "rowid" and then as many fields as there are headings.
    CustomerExport(const QString &databaseFile, const QString &query, const QStringList &headings,
                   const QString &target);
    /// Waits for a packing that has begun.
    ~CustomerExport();
    /// How many customers would be exported.
    static int countCustomers(store::Database &database);
    Q_DISABLE_COPY_MOVE(CustomerExport)

    /// Writes rows for about that long; true when the file stands at its place.
    bool step(std::chrono::milliseconds time);
    /// All rows are written, and another thread packs the file: the next step is worth a short wait.
    bool isPacking() const { return m_packing.joinable(); }
    int rowsWritten() const { return m_rowsWritten; }
    int rowCount() const { return m_rowCount; }

private:
    void writeRows();
    void startPacking();

    store::Database m_database;
    QString m_select; ///< of the next rows; asks for the key before them, and how many
    store::Pace m_pace;
    core::FileBeside m_beside; ///< beside the target
    std::optional<SpreadsheetWriter> m_writer;
    int m_columnCount;
    int m_rowCount = 0;
    int m_rowsWritten = 0;
    qint64 m_lastKey = std::numeric_limits<qint64>::min();
    std::thread m_packing;
    std::atomic<bool> m_packed = false;
    std::exception_ptr m_failure; ///< of the packing; read once it has ended
};

} // namespace customers
