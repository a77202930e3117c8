#pragma once

#include "DeskSources.h"

#include <functional>

namespace store {
class Database;
}

namespace mkdesk {

/// One database file of the desk.
struct DeskFile
{
    QString path; ///< below the desk's folder
    QString schema;
    std::function<void(store::Database &)> fill;
};

/// Every file that is delivered, in the order in which they are made. Without `sample` the customers and the
/// phone book are empty. `sources` must outlive the result. Throws core::Error for sources that are damaged.
QList<DeskFile> deskFiles(const DeskSources &sources, bool sample);

/// The area database, from a tab-separated file with the columns AreaCode, Area and PlaceName. Throws
/// core::Error.
DeskFile areaFile(const DeskSources &sources, const QString &tablePath);

/// The names of all database files of a desk, as file patterns.
QStringList databasePatterns();

enum class Made { New, Kept };

/// Makes the file below `folder` unless it is there; folders are made as needed. Throws core::Error.
Made makeDeskFile(const DeskFile &file, const QString &folder);

} // namespace mkdesk
