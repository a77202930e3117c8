#pragma once

#include "store/Pace.h"
#include "store/Select.h"
#include "store/engine/Engine.h"

#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace store {

/// Which of two tables leads in a join, and by which columns its rows are gone through.
struct JoinTables
{
    QString details; ///< the table with many rows for one of the other
    QString masters;
    QString group; ///< the column of the masters that comes first in the result's order
    QString key;   ///< the column of both that joins them, unique among the masters
    std::optional<QString> onlyGroup = {}; ///< the one group that the conditions leave
};

/// Reads the result of a select over one table or two in slices of some milliseconds. Between slices nothing
/// is open, so that no desk's saving waits for the reading; rows changed meanwhile show as they are when
/// their turn comes. Without an order, the rows come in that of the table or, of two, by group and key.
class SlicedReading
{
public:
    using Visit = std::function<void(const Row &)>;
    /// Keys: for each row of the result its rowid, or those of its detail and of its master, instead of its
    /// columns.
    enum class Columns { Given, Keys };

    /// The rows of one table. An order that no index gives has to be read at once.
    SlicedReading(std::shared_ptr<Engine> engine, const Select &select);
    /// The rows of two.
    SlicedReading(std::shared_ptr<Engine> engine, const Select &select, const JoinTables &tables,
                  Columns columns);

    /// Reads one slice; false when it was the last. Throws core::Error.
    bool readOn(const Visit &visit);

    /// How many rows there are in all, where the table's own count tells it. Throws core::Error.
    std::optional<qint64> total() const;

private:
    /// Rows of the leading table that are gone through by some of its columns.
    struct Run
    {
        QString condition;
        QVariantList bound;
        QStringList by;
        bool shared = false;    ///< rows may have the same values in these
        QVariantList from = {}; ///< where the slice before ended; empty at first
    };
    /// One of two tables, and the conditions that it can answer without the other.
    struct Alone
    {
        QString table;
        SqlTokens conditions; ///< each with "and" in front
    };
    QString indexBy(const QString &column) const;
    QString indexOfKeys() const;
    void lookThroughAlone(const QString &table, const QString &other);
    SqlTokens rows(const QString &condition) const;

    void collectHits();
    void readHits(const Visit &visit);
    void readRun(const Visit &visit);
    std::optional<QVariantList> endOfSlice(const Run &run, qint64 count) const;

    std::shared_ptr<Engine> m_engine;
    Select m_select;
    SqlTokens m_columns;
    QStringList m_tables;       ///< the leading one first
    QString m_byIndex;          ///< names the index by which it is gone through, where the engine would not
    std::vector<Alone> m_alone; ///< still to be looked through for few hits; the last one first
    std::vector<qint64> m_hits;
    qint64 m_lastHit = std::numeric_limits<qint64>::min();
    std::vector<Run> m_runs; ///< still to be read; the last one first
    Pace m_pace;
};

} // namespace store
