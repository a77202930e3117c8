#pragma once

#include "oldfiles/TableDefinition.h"

#include <QVariantList>

#include <functional>

namespace oldfiles {

/// Reads the rows of one table.
class TableRows
{
public:
    TableRows(const Pages &pages, const TableDefinition &table);

    /// Calls `visit` with the values of each row, in the order of the columns. A value is a bool for a yes/no
    /// column, an int, a double, a QString (texts, memos, and what dateText and its like make), a QByteArray
    /// for bare bytes, or null for a Null. Throws Damage unless the table is whole.
    void forEach(const std::function<void(const QVariantList &)> &visit);

private:
    class Shape;
    void readPage(quint32 number, const std::function<void(const QVariantList &)> &visit);
    Bytes followed(Pages::Row row);
    void readRow(const Bytes &row);
    QVariant value(const Shape &row, const Column &column);
    QVariant fixedValue(const Column &column, const Bytes &value) const;
    QVariant variableValue(const Column &column, const Bytes &value);
    QVariant longValue(const Column &column, const Bytes &field);
    QByteArray chained(RowPointer pointer, qint64 length);
    QByteArrayView borrowed(const Bytes &bytes);

    const Pages &m_pages;
    const TableDefinition &m_table;
    QVariantList m_values;
    qint64 m_rows = 0;
    qint64 m_borrowed = 0;
};

} // namespace oldfiles
