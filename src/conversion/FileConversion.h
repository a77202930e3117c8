#pragma once

#include <QList>
#include <QString>

namespace conversion {

struct ConvertedTable
{
    QString name;
    qint64 rows = 0;
};

/// Makes a database file of our own with every table, column, row and index of an old one, which is only
/// read. Numbers of rows are kept, and none is given again. The new file is read back and compared before
/// this returns. Throws core::Error; there is no new file then.
QList<ConvertedTable> convertFile(const QString &oldPath, const QString &newPath);

} // namespace conversion
