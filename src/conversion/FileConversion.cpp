#include "conversion/FileConversion.h"

#include "oldfiles/OldDatabase.h"
#include "store/Database.h"

#include <QFile>
#include <QHash>

#include <bit>

using namespace Qt::StringLiterals;

namespace conversion {

namespace {

// Tells whether two tables hold the same: the number of rows, and a sum over all cells that does not depend
// on the order of the rows.
class TableSum
{
public:
    void add(const QVariantList &row)
    {
        size_t hash = 0;
        for (const QVariant &cell : row) {
            hash = hashOf(cell, hash * 31 + 1);
        }
        m_sum += hash;
        ++m_rows;
    }
    qint64 rows() const { return m_rows; }
    bool operator==(const TableSum &) const = default;

private:
    static size_t hashOf(const QVariant &cell, size_t seed)
    {
        switch (cell.typeId()) {
        case QMetaType::UnknownType:
            return seed;
        case QMetaType::Double:
            return qHash(std::bit_cast<quint64>(cell.toDouble() + 0.0), seed); // both noughts are one
        case QMetaType::QString:
            return qHash(cell.toString(), seed);
        case QMetaType::QByteArray:
            return qHash(cell.toByteArray(), seed);
        default:
            return qHash(cell.toLongLong(), seed);
        }
    }

    qint64 m_rows = 0;
    size_t m_sum = 0;
};

QString quoted(const QString &name)
{
    if (name.contains(u'[') || name.contains(u']')) {
        throw core::Error(0, u"the name %1 cannot be kept"_s.arg(name));
    }
    return u'[' + name + u']';
}

// A column's type in the given words. A type without a counterpart is kept as text, so that no digit is lost,
// or as bare bytes.
QString typeOf(const oldfiles::Column &column)
{
    using oldfiles::ColumnType;
    switch (column.type) {
    case ColumnType::YesNo:
        return u"bit"_s;
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::Long:
        return column.autoNumber ? u"counter"_s : u"long"_s;
    case ColumnType::Single:
    case ColumnType::Double:
        return u"double"_s;
    case ColumnType::Text:
    case ColumnType::Currency:
    case ColumnType::Date:
    case ColumnType::Guid:
    case ColumnType::Decimal:
        return u"text(255)"_s;
    case ColumnType::Memo:
        return u"memo"_s;
    default:
        return u"blob"_s;
    }
}

void createTable(store::Database &database, const oldfiles::Table &table)
{
    QStringList columns;
    for (const oldfiles::Column &column : table.definition.columns) {
        columns.append(quoted(column.name) + u' ' + typeOf(column));
    }
    database.Execute(u"Create Table "_s + quoted(table.name) + u" ("_s + columns.join(u',') + u')');
}

// Two texts that differ in the old order of texts may be equal in ours. Then the index is made without
// "unique".
void createIndex(store::Database &database, const QString &table, const oldfiles::Index &index)
{
    QStringList keys;
    for (const oldfiles::Index::Key &key : index.keys) {
        keys.append(quoted(key.column) + (key.ascending ? u""_s : u" desc"_s));
    }
    const QString rest = u"index %1 on %2 (%3)"_s.arg(quoted(index.name), quoted(table), keys.join(u','));
    try {
        database.Execute((index.unique ? u"create unique "_s : u"create "_s) + rest);
    } catch (const core::Error &error) {
        if (!index.unique || error.kind() != core::Error::Kind::Duplicate) {
            throw;
        }
        database.Execute(u"create "_s + rest);
    }
}

// The new table goes on counting where the old one stopped, so that no new row gets the number of a deleted
// one.
void keepLastNumber(store::Database &database, const oldfiles::Table &table)
{
    const QList<oldfiles::Column> &columns = table.definition.columns;
    if (std::any_of(columns.begin(), columns.end(), [](const auto &column) { return column.autoNumber; })) {
        database.keepLastNumber(table.name, table.definition.lastAutoNumber);
    }
}

TableSum copyTable(const oldfiles::OldDatabase &old, const oldfiles::Table &table, store::Database &database,
                   const RowWatcher &watcher)
{
    createTable(database, table);
    const QString marks = QStringList(table.definition.columns.size(), u"?"_s).join(u',');
    const QString insert = u"insert into "_s + quoted(table.name) + u" values ("_s + marks + u')';
    TableSum sum;
    old.forEachRow(table, [&](const QVariantList &row) {
        database.Execute(insert, row);
        sum.add(row);
        watcher();
    });
    for (const oldfiles::Index &index : table.definition.indexes) {
        createIndex(database, table.name, index);
    }
    keepLastNumber(database, table);
    return sum;
}

TableSum sumOf(store::Database &database, const QString &table, const RowWatcher &watcher)
{
    TableSum sum;
    store::Recordset rows = database.OpenRecordset(u"select * from "_s + quoted(table));
    const int columns = static_cast<int>(rows.fieldNames().size());
    QVariantList row(columns);
    for (; !rows.EOFile(); rows.MoveNext()) {
        for (int column = 0; column < columns; ++column) {
            row[column] = rows.value(column);
        }
        sum.add(row);
        watcher();
    }
    return sum;
}

void compare(const QString &path, const QMap<QString, TableSum> &expected, const RowWatcher &watcher)
{
    store::Database made(path, store::Database::Mode::ReadOnly);
    for (auto table = expected.begin(); table != expected.end(); ++table) {
        if (sumOf(made, table.key(), watcher) != table.value()) {
            throw core::Error(0, u"the table %1 did not come over as it was"_s.arg(table.key()));
        }
    }
}

} // namespace

QList<ConvertedTable> convertFile(const QString &oldPath, const QString &newPath, const RowWatcher &watcher)
{
    const oldfiles::OldDatabase old = oldfiles::OldDatabase::fromFile(oldPath);
    QList<ConvertedTable> tables;
    QMap<QString, TableSum> sums;
    store::createDatabase(newPath, {}, [&](store::Database &database) {
        for (const oldfiles::Table &table : old.tables()) {
            const TableSum sum = copyTable(old, table, database, watcher);
            sums.insert(table.name, sum);
            tables.append({table.name, sum.rows()});
        }
    });
    try {
        compare(newPath, sums, watcher);
    } catch (...) {
        QFile::remove(newPath);
        throw;
    }
    return tables;
}

} // namespace conversion
