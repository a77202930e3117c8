#pragma once

#include "conversion/FileConversion.h"

#include <QDate>
#include <QStringList>

namespace conversion {

struct ConvertedFile
{
    QString path; ///< below the desk's folder
    QList<ConvertedTable> tables;
};

struct Report
{
    bool resumed = false; ///< a conversion that was broken off has been brought to its end first
    QList<ConvertedFile> files;
    QString
        oldFiles; ///< the folder, below the desk's, where the old files stand now; empty when there were none
};

/// The old databases of a desk's folder and its folder of help files, as paths below it.
QStringList oldDatabasesIn(const QString &folder);

/// Whether a database under one of the desk's own names is an old one. Not so while a conversion that was
/// broken off waits to be completed.
bool isOldDesk(const QString &folder);

/// What convertDesk() would convert, with the numbers of rows as the files themselves tell them. Throws
/// core::Error for a file that cannot be read.
QList<ConvertedFile> oldTablesIn(const QString &folder);

/// Whether a path below a desk's folder leads into one where conversions put the old files.
bool isAmongOldFiles(const QString &path);

/// Converts all of them, or none: a failure leaves the folder as it was and throws core::Error. Where the
/// program is ended in the middle, the next call finds out how far it came:
///
///     Conversion in progress/      the new files are being made; nothing else was touched: begun anew
///     Conversion ready <date>/     all are made and checked, and now change places: completed
///     Old files <date>/            where the old ones go; nothing ever writes to them
///
/// The one step between the first and the second is the renaming of the folder.
Report convertDesk(
    const QString &folder, const QDate &today, const RowWatcher &watcher = [] {});

/// Whether a conversion was broken off while the files changed places.
bool isBrokenOff(const QString &folder);

/// Brings a conversion to its end that was broken off while the files changed places; true where there was
/// one. Throws core::Error.
bool completeConversion(const QString &folder);

} // namespace conversion
