#pragma once

#include "store/Handle.h"

#include <chrono>
#include <optional>

namespace store {

/// A field name and the value it is to get.
using Field = std::pair<QString, QVariant>;

/// The rows behind a cursor, and the one row it stands on. Positions run from 0; -1 is before the first row
/// and count() behind the last. The writing half throws for rows that are not those of one table.
class Recordset::Source
{
public:
    virtual ~Source() = default;

    virtual const QStringList &names() const = 0;
    virtual qint64 count() = 0;
    virtual qint64 position() = 0;
    virtual void standOn(qint64 position) = 0;
    virtual qint64 positionOf(qint64) { return -1; }
    /// Reads more of the rows where they are read in slices; true when all are known.
    virtual bool readOn(std::chrono::milliseconds) { return true; }
    /// The row at hand, nothing when there is none.
    virtual const QVariantList *row() = 0;

    virtual void setIndex(const QString &name);
    virtual bool seek(const QVariant &key);
    /// The name of the auto-number column, "" without one.
    virtual QString autoNumber() const { return {}; }
    virtual qint64 reserveNumber();
    virtual void insert(const QList<Field> &fields);
    virtual void update(const QList<Field> &fields);
    virtual void remove();
};

/// The source for a table's name, or for a select.
std::unique_ptr<Recordset::Source> openSource(const std::shared_ptr<Database::Handle> &handle,
                                              const QString &tableOrSelect, const QVariantList &bound);
/// The same for a select whose rows are to be read in slices, where it can be cut into such.
std::unique_ptr<Recordset::Source> openSliced(const std::shared_ptr<Database::Handle> &handle,
                                              const QString &select);

} // namespace store
