#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace conversion {

struct ConvertedTable
{
    QString name;
    qint64 rows = 0;
};

/// Hears of each row that was copied and, again, compared; on the thread that converts. What it throws ends
/// the conversion.
using RowWatcher = std::function<void()>;

/// Makes a database file of our own with every table, column, row and index of an old one, which is only
/// read. Numbers of rows are kept, and none is given again. The new file is read back and compared before
/// this returns. Throws core::Error; there is no new file then.
QList<ConvertedTable> convertFile(const QString &oldPath, const QString &newPath, const RowWatcher &watcher);

} // namespace conversion
