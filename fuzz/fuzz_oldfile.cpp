#include "Support.h"
#include "oldfiles/OldDatabase.h"

#include <cstdint>

/// Reads all of a file that could be anything: it is refused, or every row has a value for each column.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    try {
        const oldfiles::OldDatabase database(
            QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
        for (const oldfiles::Table &table : database.tables()) {
            qint64 rows = 0;
            database.forEachRow(table, [&](const QVariantList &row) {
                ++rows;
                require(row.size() == table.definition.columns.size());
            });
            require(rows >= table.definition.rows);
        }
    } catch (const core::Error &) { // what a damaged file is answered with
    }
    return 0;
}
