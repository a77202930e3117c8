#include "oldfiles/TableDefinition.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace oldfiles {

namespace {

// The fixed places of a definition, in bytes. The names and what follows them have none and are read one
// after the other.
struct Places
{
    int length, rows, lastAutoNumber, columnsEver, variableColumns, columns, logicalIndexes, realIndexes,
        ownedPages;
    int end; // of the part with fixed places
    int realIndexHead;
    int descriptor, number, variableIndex, scale, flags, fixedOffset, size;
    int nameLength;
    int realIndex, keys, indexFlags;
    int logicalIndex, realNumber, indexType;
};

constexpr Places jet4 = {.length = 8,
                         .rows = 16,
                         .lastAutoNumber = 20,
                         .columnsEver = 41,
                         .variableColumns = 43,
                         .columns = 45,
                         .logicalIndexes = 47,
                         .realIndexes = 51,
                         .ownedPages = 55,
                         .end = 63,
                         .realIndexHead = 12,
                         .descriptor = 25,
                         .number = 5,
                         .variableIndex = 7,
                         .scale = 12,
                         .flags = 15,
                         .fixedOffset = 21,
                         .size = 23,
                         .nameLength = 2,
                         .realIndex = 52,
                         .keys = 4,
                         .indexFlags = 46,
                         .logicalIndex = 28,
                         .realNumber = 8,
                         .indexType = 23};

constexpr Places jet3 = {.length = 8,
                         .rows = 12,
                         .lastAutoNumber = 16,
                         .columnsEver = 21,
                         .variableColumns = 23,
                         .columns = 25,
                         .logicalIndexes = 27,
                         .realIndexes = 31,
                         .ownedPages = 35,
                         .end = 43,
                         .realIndexHead = 8,
                         .descriptor = 18,
                         .number = 1,
                         .variableIndex = 3,
                         .scale = 12,
                         .flags = 13,
                         .fixedOffset = 14,
                         .size = 16,
                         .nameLength = 1,
                         .realIndex = 39,
                         .keys = 0,
                         .indexFlags = 38,
                         .logicalIndex = 20,
                         .realNumber = 4,
                         .indexType = 19};

constexpr int mostColumns = 255;
constexpr quint32 mostIndexes = 1000;

void require(bool truth, const QString &otherwise)
{
    if (!truth) {
        throw Damage(otherwise);
    }
}

// A definition that is longer than a page continues on other pages, behind their heads.
QByteArray wholeDefinition(const Pages &pages, quint32 firstPage)
{
    constexpr qsizetype most = 64;
    constexpr qint64 nextAt = 4;
    constexpr qint64 head = 8;
    QByteArray whole;
    QSet<quint32> seen;
    for (quint32 number = firstPage; number != 0;) {
        require(!seen.contains(number) && seen.size() < most, u"its definition has no end"_s);
        seen.insert(number);
        const Bytes page = pages.page(number, PageType::Definition);
        whole += page.from(whole.isEmpty() ? 0 : head).view();
        number = page.u32(nextAt);
    }
    return whole;
}

// Reads a definition from its beginning to its end.
class DefinitionReader
{
public:
    DefinitionReader(const Pages &pages, quint32 firstPage)
        : m_bytes(wholeDefinition(pages, firstPage)), m_texts(pages.texts()),
          m_places(pages.version() == Version::Jet4 ? jet4 : jet3)
    {
        m_table.page = firstPage;
        const quint32 length = all().u32(m_places.length);
        require(length <= m_bytes.size(), u"its definition is cut off"_s);
        m_bytes.truncate(length);
    }

    TableDefinition read()
    {
        readHead();
        readColumns();
        readIndexes();
        checkColumns();
        std::ranges::sort(m_table.columns, {}, &Column::number);
        return m_table;
    }

private:
    Bytes all() const { return Bytes(m_bytes); }

    Bytes next(qint64 size)
    {
        const Bytes bytes = all().slice(m_at, size);
        m_at += size;
        return bytes;
    }

    QString nextName()
    {
        const Bytes length = next(m_places.nameLength);
        return m_texts.name(next(m_places.nameLength == 1 ? length.u8(0) : length.u16(0)).view());
    }

    void readHead()
    {
        const Bytes head = next(m_places.end);
        m_table.rows = head.u32(m_places.rows);
        m_table.lastAutoNumber = head.number<qint32>(m_places.lastAutoNumber);
        m_table.columnsEver = head.u16(m_places.columnsEver);
        m_table.hasVariable = head.u16(m_places.variableColumns) > 0;
        m_table.ownedPages = head.u32(m_places.ownedPages);
        m_columns = head.u16(m_places.columns);
        m_logicalIndexes = head.u32(m_places.logicalIndexes);
        m_realIndexes = head.u32(m_places.realIndexes);
        const bool possible = m_columns > 0 && m_columns <= mostColumns && m_realIndexes <= mostIndexes &&
                              m_logicalIndexes <= mostIndexes;
        require(possible, u"its definition is impossible"_s);
    }

    void readColumns()
    {
        next(qint64(m_realIndexes) * m_places.realIndexHead);
        for (int i = 0; i < m_columns; ++i) {
            m_table.columns.append(columnOf(next(m_places.descriptor)));
        }
        for (Column &column : m_table.columns) {
            column.name = nextName();
        }
    }

    Column columnOf(const Bytes &descriptor) const
    {
        constexpr quint8 fixed = 0x01;
        constexpr quint8 autoNumber = 0x04;
        Column column;
        column.type = static_cast<ColumnType>(descriptor.u8(0));
        column.number = descriptor.u16(m_places.number);
        column.variableIndex = descriptor.u16(m_places.variableIndex);
        column.scale = column.type == ColumnType::Decimal ? descriptor.u8(m_places.scale) : 0;
        column.fixed = (descriptor.u8(m_places.flags) & fixed) != 0;
        column.autoNumber =
            (descriptor.u8(m_places.flags) & autoNumber) != 0 && column.type == ColumnType::Long;
        column.fixedOffset = descriptor.u16(m_places.fixedOffset);
        column.length = descriptor.u16(m_places.size);
        return column;
    }

    // If two columns could share a place, a small file could make us read endless values.
    void checkColumns() const
    {
        QSet<int> numbers;
        QSet<int> variables;
        QSet<QString> names;
        qint64 fixedBytes = 0;
        for (const Column &column : m_table.columns) {
            const bool isBit = column.type == ColumnType::YesNo;
            bool sound = column.number < m_table.columnsEver && !numbers.contains(column.number);
            sound = sound && !column.name.isEmpty() && !names.contains(column.name.toUpper());
            sound = sound && (column.fixed || isBit || !variables.contains(column.variableIndex));
            require(sound, u"its columns are impossible"_s);
            numbers.insert(column.number);
            names.insert(column.name.toUpper());
            if (!column.fixed && !isBit) {
                variables.insert(column.variableIndex);
            }
            fixedBytes += column.fixed && !isBit ? column.length : 0;
        }
        constexpr qint64 mostBytes = 4096;
        require(fixedBytes <= mostBytes, u"its columns are impossible"_s);
    }

    // A name belongs to a logical index, its keys to a real one, which several may share.
    void readIndexes()
    {
        QList<Index> real;
        for (quint32 i = 0; i < m_realIndexes; ++i) {
            real.append(realIndexOf(next(m_places.realIndex)));
        }
        constexpr quint8 servesRelation = 2;
        QList<Bytes> logical;
        for (quint32 i = 0; i < m_logicalIndexes; ++i) {
            logical.append(next(m_places.logicalIndex));
        }
        for (const Bytes &block : std::as_const(logical)) {
            const QString name = nextName();
            const quint32 number = block.u32(m_places.realNumber);
            require(number < real.size() && !name.isEmpty(), u"its indexes are impossible"_s);
            const bool ours = block.u8(m_places.indexType) != servesRelation;
            if (ours && !real.at(number).keys.isEmpty()) {
                m_table.indexes.append(real.at(number));
                m_table.indexes.last().name = name;
            }
        }
    }

    Index realIndexOf(const Bytes &block) const
    {
        constexpr int mostKeys = 10;
        constexpr quint16 none = 0xFFFF;
        constexpr quint8 unique = 0x01;
        Index index;
        for (int i = 0; i < mostKeys; ++i) {
            const quint16 number = block.u16(m_places.keys + 3 * i);
            if (number == none) {
                continue;
            }
            const auto column = std::ranges::find(m_table.columns, int(number), &Column::number);
            if (column == m_table.columns.end()) { // an index can be done without, unlike a row
                return {};
            }
            index.keys.append({column->name, block.u8(m_places.keys + 3 * i + 2) == 1});
        }
        index.unique = (block.u8(m_places.indexFlags) & unique) != 0;
        return index;
    }

    QByteArray m_bytes;
    const TextForm &m_texts;
    const Places &m_places;
    qint64 m_at = 0;
    int m_columns = 0;
    quint32 m_realIndexes = 0;
    quint32 m_logicalIndexes = 0;
    TableDefinition m_table;
};

} // namespace

TableDefinition readDefinition(const Pages &pages, quint32 firstPage)
{
    return DefinitionReader(pages, firstPage).read();
}

} // namespace oldfiles
