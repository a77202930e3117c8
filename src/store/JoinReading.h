#pragma once

#include "store/Database.h"
#include "store/JoinSelect.h"

#include <QElapsedTimer>

#include <limits>
#include <optional>
#include <vector>

namespace store {

/// Reads the result of a given select over two joined tables in slices of some milliseconds. Between slices
/// nothing is open, so that no desk's saving waits for the reading; rows changed meanwhile show as they are
/// when their turn comes. Where no order is given, the rows come by group and key.
class JoinReading
{
public:
    /// Keys: for each row of the result the rowid of its detail and of its master instead of its columns.
    enum class Columns { Given, Keys };

    /// With `group` only the rows of that one group are gone through. The database must outlive the reading.
    JoinReading(Database &database, const JoinSelect &select, Columns columns,
                const std::optional<QString> &group = {});

    /// Reads one slice; false when it was the last. Throws core::Error.
    bool readOn(const std::function<void(const Row &)> &visit);

private:
    using Visit = std::function<void(const Row &)>;

    /// Few hits far apart are found soonest by looking through one table alone, many by going through the
    /// masters in order.
    enum class Step { Hits, Rows, Ended };

    /// One table, and the conditions that it can answer without the other.
    struct Alone
    {
        QString table;
        QString conditions;
    };
    void lookThrough(const QString &table);

    void collectHits();
    void endCollecting(bool all);
    void readHits(const Visit &visit);
    void readRowsWithoutGroup(const Visit &visit);
    void readRows(const Visit &visit);
    std::optional<QVariantList> nextBound();
    QString boundSelect() const;
    QString beyond() const;
    void fitSlice(const QElapsedTimer &timer);

    Database &m_database;
    JoinSelect m_select;
    QString m_columns;
    std::optional<QString> m_group;
    std::vector<Alone> m_alone; ///< still to be looked through; the last one first
    Step m_step = Step::Rows;
    qint64 m_lastRow = std::numeric_limits<qint64>::min();
    std::vector<qint64> m_hits;
    QVariantList m_from; ///< group and key, or key alone, of the last master read; empty at first
    qint64 m_slice;      ///< rows to go through at once
};

} // namespace store
