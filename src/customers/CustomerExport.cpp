#include "customers/CustomerExport.h"

#include <QElapsedTimer>
#include <QFile>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr int rowsAtOnce = 200;

} // namespace

// The row's key in front of the fields tells where the next run begins.
CustomerExport::CustomerExport(const QString &databaseFile, const QString &query, const QStringList &headings,
                               const QString &target)
    : m_database(databaseFile),
      m_select(u"select rowid,"_s + query.mid(u"select "_s.size()) +
               u" where rowid>%1 order by rowid limit "_s + QString::number(rowsAtOnce)),
      m_beside(target), m_columnCount(int(headings.size()))
{
    m_rowCount = countCustomers(m_database);
    m_writer.emplace(m_beside.name());
    m_writer->writeHeadings(headings);
    writeRows();
}

CustomerExport::~CustomerExport()
{
    if (m_packing.joinable()) {
        m_packing.join();
    }
}

int CustomerExport::countCustomers(store::Database &database)
{
    int count = 0;
    database.forEachRow(u"select count(*) from customer"_s,
                        [&count](const store::Row &row) { count = row.integer(0); });
    return count;
}

bool CustomerExport::step(std::chrono::milliseconds time)
{
    QElapsedTimer timer;
    timer.start();
    while (!isPacking() && timer.elapsed() < time.count()) {
        writeRows();
    }
    if (!m_packed) {
        return false;
    }
    m_packing.join();
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
    return true;
}

void CustomerExport::writeRows()
{
    int rows = 0;
    m_database.forEachRow(m_select.arg(m_lastKey), [&](const store::Row &row) {
        m_lastKey = row.key(0);
        m_writer->beginRow();
        for (int column = 0; column < m_columnCount; ++column) {
            if (const QByteArrayView text = row.bytes(column + 1); !text.isEmpty()) {
                m_writer->writeCell(column, text);
            }
        }
        ++rows;
    });
    m_rowsWritten += rows;
    if (rows < rowsAtOnce) {
        startPacking();
    }
}

// The library packs in one call of seconds, which no event loop can wait for.
void CustomerExport::startPacking()
{
    m_packing = std::thread([this] {
        try {
            m_writer->close();
            m_beside.moveIntoPlace();
        } catch (...) {
            m_failure = std::current_exception();
        }
        m_packed = true;
    });
}

} // namespace customers
