#include "oldfiles/TableRows.h"

#include "oldfiles/Values.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace oldfiles {

namespace {

constexpr int anyLength = -1;

// How many bytes a value of a type takes.
int sizeOf(const Column &column)
{
    switch (column.type) {
    case ColumnType::Byte:
        return 1;
    case ColumnType::Integer:
        return 2;
    case ColumnType::Long:
    case ColumnType::Single:
        return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::Date:
        return 8;
    case ColumnType::Guid:
        return 16;
    case ColumnType::Decimal:
        return 17;
    default:
        return anyLength;
    }
}

// Our databases cannot store "not a number" and the infinite ones; they become texts.
QVariant realNumber(double number)
{
    return std::isfinite(number) ? QVariant(number) : QVariant(QString::number(number));
}

} // namespace

// The parts of one row: a count of columns, values at fixed places, values of variable length, their ends in
// reverse order, and a mask that tells what is Null. Only the row's end is sure to be where it should, so
// the parts are found from there.
class TableRows::Shape
{
public:
    Shape(const Bytes &row, Version version, bool hasVariable)
        : m_row(row), m_isJet4(version == Version::Jet4)
    {
        m_columns = m_isJet4 ? row.u16(0) : row.u8(0);
        m_maskAt = row.size() - (m_columns + 7) / 8;
        if (m_maskAt < countSize()) {
            throw Damage(u"a row is too short"_s);
        }
        if (hasVariable && m_maskAt >= countSize() + countSize()) {
            m_variables = m_isJet4 ? row.u16(m_maskAt - 2) : row.u8(m_maskAt - 1);
        }
    }

    int columns() const { return m_columns; }
    bool bit(int column) const
    {
        return column < m_columns && ((m_row.u8(m_maskAt + column / 8) >> (column % 8)) & 1) != 0;
    }
    Bytes fixed(int offset, int size) const
    {
        return m_row.slice(0, m_maskAt).slice(countSize() + qint64(offset), size);
    }
    bool hasVariable(int index) const { return index < m_variables; }
    Bytes variable(int index) const
    {
        const qint64 start = end(index);
        const qint64 stop = end(index + 1);
        if (start < countSize() || stop > tableAt()) {
            throw Damage(u"a value lies outside its row"_s);
        }
        return m_row.slice(start, stop - start);
    }

private:
    qint64 countSize() const { return m_isJet4 ? 2 : 1; }
    qint64 jumps() const { return m_isJet4 ? 0 : (m_row.size() - 1) / 256; }
    // Where the ends of the values of variable length begin.
    qint64 tableAt() const
    {
        return m_maskAt - countSize() - jumps() - countSize() * (qint64(m_variables) + 1);
    }
    // Where the value before that index ends, and so the one with it begins.
    qint64 end(int index) const
    {
        if (m_isJet4) {
            return m_row.u16(m_maskAt - 2 - 2 * (qint64(index) + 1));
        }
        const qint64 countAt = m_maskAt - 1;
        qint64 place = m_row.u8(countAt - jumps() - 1 - index);
        for (qint64 i = 1; i <= jumps(); ++i) { // from the value that a jump names on, another 256
            place += m_row.u8(countAt - i) <= index ? 256 : 0;
        }
        return place;
    }

    Bytes m_row;
    bool m_isJet4;
    int m_columns = 0;
    qint64 m_maskAt = 0;
    int m_variables = 0;
};

TableRows::TableRows(const Pages &pages, const TableDefinition &table) : m_pages(pages), m_table(table) {}

// The stored count may lag behind if the writing program was killed, so more rows than it says are no damage.
void TableRows::forEach(const std::function<void(const QVariantList &)> &visit)
{
    m_values.resize(m_table.columns.size());
    for (const quint32 page : m_pages.pagesIn(m_table.ownedPages)) {
        readPage(page, visit);
    }
    if (m_rows < m_table.rows) {
        throw Damage(u"%1 rows are there, but %2 were counted"_s.arg(m_rows).arg(m_table.rows));
    }
}

void TableRows::readPage(quint32 number, const std::function<void(const QVariantList &)> &visit)
{
    const Bytes page = m_pages.page(number, PageType::Data);
    if (Pages::ownerOf(page) != m_table.page) {
        throw Damage(u"page %1 belongs to something else"_s.arg(number));
    }
    const int rows = m_pages.rowsOn(page);
    for (int i = 0; i < rows; ++i) {
        if ((m_pages.flagsOn(page, i) & Pages::Moved) == 0) { // neither deleted nor read by a pointer to it
            const Pages::Row row = m_pages.rowOn(page, i);
            readRow(row.flags == Pages::Pointer ? followed(row) : row.bytes);
            ++m_rows;
            visit(m_values);
        }
    }
}

// A row that has outgrown its page stands on another one; its old place holds a pointer to it.
Bytes TableRows::followed(Pages::Row row)
{
    constexpr int mostHops = 16;
    for (int hop = 0; hop < mostHops; ++hop) {
        const RowPointer pointer = row.bytes.u32(0);
        const Bytes page = m_pages.page(pointer >> 8, PageType::Data);
        row = m_pages.rowOn(page, static_cast<int>(pointer & 0xFF));
        if (Pages::ownerOf(page) != m_table.page || row.flags == Pages::Deleted) {
            throw Damage(u"a row has gone astray"_s);
        }
        if ((row.flags & Pages::Pointer) == 0) {
            borrowed(row.bytes);
            return row.bytes;
        }
    }
    throw Damage(u"a row has gone astray"_s);
}

void TableRows::readRow(const Bytes &row)
{
    const Shape shape(row, m_pages.version(), m_table.hasVariable);
    if (shape.columns() > m_table.columnsEver) {
        throw Damage(u"a row has too many columns"_s);
    }
    for (qsizetype i = 0; i < m_table.columns.size(); ++i) {
        m_values[i] = value(shape, m_table.columns.at(i));
    }
}

QVariant TableRows::value(const Shape &row, const Column &column)
{
    if (column.type == ColumnType::YesNo) {
        return row.bit(column.number);
    }
    if (!row.bit(column.number)) { // Null, or the row is older than the column
        return {};
    }
    if (column.fixed) {
        const int size = sizeOf(column) == anyLength ? column.length : sizeOf(column);
        return fixedValue(column, row.fixed(column.fixedOffset, size));
    }
    return row.hasVariable(column.variableIndex) ? variableValue(column, row.variable(column.variableIndex))
                                                 : QVariant();
}

QVariant TableRows::variableValue(const Column &column, const Bytes &value)
{
    if (column.type == ColumnType::Memo || column.type == ColumnType::Ole) {
        return value.size() > 0 ? longValue(column, value) : QVariant();
    }
    if (sizeOf(column) != anyLength && value.size() != sizeOf(column)) {
        throw Damage(u"a value of %1 has a wrong length"_s.arg(column.name));
    }
    return fixedValue(column, value);
}

QVariant TableRows::fixedValue(const Column &column, const Bytes &value) const
{
    switch (column.type) {
    case ColumnType::Byte:
        return int(value.u8(0));
    case ColumnType::Integer:
        return int(value.number<qint16>(0));
    case ColumnType::Long:
        return value.number<qint32>(0);
    case ColumnType::Currency:
        return currencyText(value.number<qint64>(0));
    case ColumnType::Single:
        return realNumber(value.number<float>(0));
    case ColumnType::Double:
        return realNumber(value.number<double>(0));
    case ColumnType::Date:
        return dateText(value.number<double>(0));
    case ColumnType::Text:
        return m_pages.texts().value(value.view());
    case ColumnType::Guid:
        return guidText(value);
    case ColumnType::Decimal:
        return decimalText(value, column.scale);
    default:
        return value.view().toByteArray();
    }
}

// A memo or an object: in the row itself, as one row of another page, or as a chain of such rows.
QVariant TableRows::longValue(const Column &column, const Bytes &field)
{
    constexpr quint32 inRow = 0x80000000;
    constexpr quint32 oneRow = 0x40000000;
    constexpr quint32 lengthBits = 0x3FFFFFFF;
    constexpr qint64 head = 12;
    const quint32 word = field.u32(0);
    const qint64 length = word & lengthBits;
    const RowPointer pointer = field.u32(4);
    QByteArray value;
    if ((word & inRow) != 0) {
        value = field.from(head).slice(0, length).view().toByteArray();
    } else if ((word & oneRow) != 0) {
        value = borrowed(m_pages.row(pointer).bytes.slice(0, length)).toByteArray();
    } else {
        value = chained(pointer, length);
    }
    return column.type == ColumnType::Memo ? QVariant(m_pages.texts().value(value)) : QVariant(value);
}

QByteArray TableRows::chained(RowPointer pointer, qint64 length)
{
    constexpr qint64 head = 4;
    QByteArray value;
    while (value.size() < length) {
        const Bytes piece = m_pages.row(pointer).bytes;
        const qint64 size = std::min<qint64>(piece.size() - head, length - value.size());
        if (size <= 0) {
            throw Damage(u"a memo is cut off"_s);
        }
        value += borrowed(piece.slice(head, size));
        pointer = piece.u32(0);
    }
    return value;
}

// In a sound file every byte belongs to one value, so all that the pointers of a table lead to is never more
// than the file. Counting it ends every circle, and the trick of a thousand rows that point at one value.
QByteArrayView TableRows::borrowed(const Bytes &bytes)
{
    m_borrowed += bytes.size();
    if (m_borrowed > m_pages.fileSize()) {
        throw Damage(u"its values go round in a circle"_s);
    }
    return bytes.view();
}

} // namespace oldfiles
