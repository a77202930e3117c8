#pragma once

#include <QDateTime>
#include <QList>

namespace copies {

/// A copy's part in what is kept.
struct Dated
{
    QDateTime made;
    bool beforeImport = false;
};

/// Which copies are not kept, by their places in the list. Kept are all of the last 7 days that have any; of
/// the last 4 weeks and the last 12 months that have any, those of the last day, of each the first one; and
/// the last one made before an import. A clock that was wrong for a while costs nothing: days are counted as
/// they are there, not back from today, and those in the future are counted apart.
QList<qsizetype> superfluous(const QList<Dated> &copies, const QDate &today);

} // namespace copies
