#include "customers/CustomerExport.h"

#include <limits>
#include <thread>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr qint64 firstRows = 200; // 27 cells of each
constexpr std::chrono::milliseconds betweenTries{50};

} // namespace

CustomerExport::CustomerExport(const QString &databaseFile, const QString &query, const QStringList &headings,
                               const QString &target)
    : m_select(query + u" where rowid>? order by rowid limit ?"_s), m_pace(firstRows), m_beside(target),
      m_writer(m_beside.name()), m_columnCount(int(headings.size())),
      m_lastKey(std::numeric_limits<qint64>::min()),
      m_work([this, databaseFile, headings] { writeAll(databaseFile, headings); })
{}

int CustomerExport::countCustomers(store::Database &database)
{
    int count = 0;
    database.forEachRow(u"select count(*) from customer"_s,
                        [&count](const store::Row &row) { count = row.integer(0); });
    return count;
}

bool CustomerExport::hasEnded()
{
    if (!m_work.isDone()) {
        return false;
    }
    m_work.take();
    return true;
}

bool CustomerExport::drop()
{
    Stage stage = Stage::Writing;
    return m_stage.compare_exchange_strong(stage, Stage::Dropped) || stage == Stage::Dropped;
}

void CustomerExport::writeAll(const QString &databaseFile, const QStringList &headings)
{
    store::Database database(databaseFile);
    m_rowCount = countCustomers(database);
    m_writer.writeHeadings(headings);
    while (m_stage == Stage::Writing && writeRows(database)) {
    }
    Stage stage = Stage::Writing;
    if (m_stage.compare_exchange_strong(stage, Stage::Packing)) {
        m_writer.close();
        m_beside.moveIntoPlace();
    }
}

// False behind the last row. As long as another program locks the file, the export waits: it is on a thread
// of its own, and can be dropped.
bool CustomerExport::writeRows(store::Database &database)
{
    try {
        return writeSlice(database);
    } catch (const core::Error &error) {
        if (!store::tellsOfLock(error)) {
            throw;
        }
        std::this_thread::sleep_for(betweenTries);
        return true;
    }
}

bool CustomerExport::writeSlice(store::Database &database)
{
    int rows = 0;
    const qint64 wanted = m_pace.begin();
    database.forEachBoundRow(m_select, {m_lastKey, wanted}, [&](const store::Row &row) {
        m_lastKey = row.key(0);
        m_writer.beginRow();
        for (int column = 0; column < m_columnCount; ++column) {
            if (const QByteArrayView text = row.bytes(column + 1); !text.isEmpty()) {
                m_writer.writeCell(column, text);
            }
        }
        ++rows;
    });
    m_pace.end();
    m_rowsWritten += rows;
    return rows == wanted;
}

} // namespace customers
