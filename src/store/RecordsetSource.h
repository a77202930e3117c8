#pragma once

#include "store/Recordset.h"
#include "store/engine/Engine.h"

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
std::unique_ptr<Recordset::Source> openSource(const std::shared_ptr<Engine> &engine,
                                              const QString &tableOrSelect, const QVariantList &bound);
} // namespace store
