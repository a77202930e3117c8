#pragma once

#include "oldfiles/TableDefinition.h"
#include "support/Test.h"

#include <QVariantList>
#include <QtEndian>

namespace support {

/// Numbers, little-endian, and bytes behind one another.
template <typename... Parts>
QByteArray jetBytes(const Parts &...parts)
{
    QByteArray bytes;
    const auto append = [&bytes](const auto &part) {
        if constexpr (std::is_convertible_v<decltype(part), QByteArray>) {
            bytes += part;
        } else {
            const auto little = qToLittleEndian(part);
            bytes.append(reinterpret_cast<const char *>(&little), sizeof(little));
        }
    };
    (append(parts), ...);
    return bytes;
}
inline QByteArray zeros(qsizetype count)
{
    return QByteArray(count, '\0');
}
/// Over what stands there.
template <typename Number>
void put(QByteArray &into, qsizetype at, Number number)
{
    qToLittleEndian(number, into.data() + at);
}

struct JetColumn
{
    QString name;
    oldfiles::ColumnType type = oldfiles::ColumnType::Text;
    bool compressed = false; ///< texts: one byte a character where that can be
    bool autoNumber = false;
    int scale = 0;
};

struct JetIndex
{
    QString name;
    QString column;
    bool unique = false;
};

/// A table as a test wants it. Rows are numbered from 0.
struct JetTable
{
    QString name;
    QList<JetColumn> columns;
    QList<QVariantList> rows;
    QList<JetIndex> indexes = {};
    QList<int> deleted = {}; ///< rows that stay in the file, marked so
    QList<int> moved = {};   ///< rows that stand on another page than their place
    int type = 1;            ///< of the catalogue: a table, or a link to one
    int lastAutoNumber = 0;
};

/// Writes small Jet 3 and Jet 4 databases, whole in memory. Only reading them is thought of: what a reader
/// need not look at is not written.
class JetWriter
{
public:
    explicit JetWriter(oldfiles::Version version)
        : m_is4(version == oldfiles::Version::Jet4), m_size(m_is4 ? 4096 : 2048)
    {
        m_pages.resize(cataloguePage + 1, zeros(m_size)); // the header, and one that no reader asks for
    }

    QByteArray file(const QList<JetTable> &tables)
    {
        std::ranges::for_each(tables, [this](const JetTable &table) { add(table); });
        write(m_catalogue, cataloguePage, 'S');
        writeHeader();
        return m_pages.join();
    }

private:
    static constexpr int cataloguePage = 2;
    struct Row
    {
        QByteArray bytes;
        int flags = 0;
    };

    void add(const JetTable &table)
    {
        int page = 0;
        if (table.type == 1) {
            page = newPage();
            write(table, page, 'N');
        }
        m_catalogue.rows.append({page, table.name, table.type, 0, {}});
    }
    int newPage()
    {
        m_pages.append(zeros(m_size));
        return int(m_pages.size() - 1);
    }
    QByteArray only4(const QByteArray &bytes) const { return m_is4 ? bytes : QByteArray(); }
    /// Of two bytes, in the older version of one.
    QByteArray number(qsizetype value) const { return jetBytes(quint16(value)).first(m_is4 ? 2 : 1); }

    // --- rows on pages

    /// Its rows stand at the end of a page, the first one last. Returns the pointer to that.
    quint32 addPage(quint32 owner, const QList<Row> &rows)
    {
        QByteArray places;
        QByteArray bytes;
        for (const Row &row : rows) {
            bytes.prepend(row.bytes);
            places += jetBytes(quint16((m_size - bytes.size()) | row.flags));
        }
        const qsizetype unused = m_size - (m_is4 ? 14 : 10) - places.size() - bytes.size();
        m_pages.append(jetBytes(quint16(0x0101), quint16(unused), owner, only4(zeros(4)),
                                quint16(rows.size()), places, zeros(unused), bytes));
        return quint32(m_pages.size() - 1) << 8;
    }
    void addPages(int owner, const QList<Row> &rows, QList<int> &pages)
    {
        qsizetype from = 0;
        qsizetype size = 0;
        for (qsizetype i = 0; i <= rows.size(); ++i) {
            const qsizetype more = i < rows.size() ? rows.at(i).bytes.size() + 2 : m_size;
            if (i > from && (size + more > m_size - 16 || i - from > 250)) {
                pages.append(int(addPage(quint32(owner), rows.mid(from, i - from)) >> 8));
                from = i;
                size = 0;
            }
            size += more;
        }
    }

    /// A list of pages as bits, or where that is too short, as pages of bits.
    quint32 addMap(const QList<int> &pages)
    {
        const int first = pages.value(0) & ~7;
        QByteArray row = jetBytes(quint8(0), quint32(first), zeros(m_is4 ? 64 : 128));
        if (pages.isEmpty() || pages.last() - first < 8 * (row.size() - 5)) {
            for (const int number : pages) {
                setBit(row, 5, number - first);
            }
            return addPage(0, {{row}});
        }
        const int perMap = (m_size - 4) * 8;
        QMap<int, QByteArray> maps;
        for (const int number : pages) {
            QByteArray &map = maps[number / perMap];
            map = map.isEmpty() ? jetBytes(quint32(0x0105), zeros(m_size - 4)) : map;
            setBit(map, 4, number % perMap);
        }
        row = jetBytes(quint8(1), zeros(row.size() - 1));
        for (auto map = maps.begin(); map != maps.end(); ++map) {
            m_pages.append(*map);
            put<quint32>(row, 1 + 4 * map.key(), quint32(m_pages.size() - 1));
        }
        return addPage(0, {{row}});
    }
    static void setBit(QByteArray &bytes, qsizetype at, int bit)
    {
        bytes[at + bit / 8] = char(bytes.at(at + bit / 8) | (1 << (bit % 8)));
    }

    // --- values

    QByteArray text(const QString &text, bool compressed = false) const
    {
        if (!m_is4) {
            return core::CodePage(936).encode(text);
        }
        if (text.isEmpty() || !compressed ||
            std::ranges::any_of(text, [](QChar c) { return c.cell() == 0; })) {
            return {reinterpret_cast<const char *>(text.utf16()), 2 * text.size()};
        }
        QByteArray bytes = "\xFF\xFE";
        bool wide = false;
        for (const QChar unit : text) {
            if (wide != (unit.row() != 0)) {
                wide = !wide;
                bytes += '\0';
            }
            bytes += wide ? jetBytes(quint16(unit.unicode())) : QByteArray(1, char(unit.cell()));
        }
        return bytes;
    }

    /// Short ones stay in the row, middling ones take a row of another page, long ones a chain of them.
    QByteArray longValue(const QByteArray &value)
    {
        constexpr qsizetype mostInRow = 64;
        const qsizetype mostOnPage = m_size - (m_is4 ? 16 : 12);
        const quint32 owner = qFromLittleEndian<quint32>("LVAL");
        const auto length = quint32(value.size());
        if (value.size() <= mostInRow) {
            return jetBytes(length | 0x80000000, zeros(8), value);
        }
        if (value.size() <= mostOnPage) {
            return jetBytes(length | 0x40000000, addPage(owner, {{value}}), zeros(4));
        }
        quint32 next = 0;
        const qsizetype chunk = mostOnPage - 8;
        for (qsizetype at = (value.size() - 1) / chunk * chunk; at >= 0; at -= chunk) {
            next = addPage(owner, {{jetBytes(next, value.mid(at, chunk))}});
        }
        return jetBytes(length, next, zeros(4));
    }

    QByteArray value(const JetColumn &column, const QVariant &value)
    {
        switch (column.type) {
        case oldfiles::ColumnType::Text:
            return text(value.toString(), column.compressed);
        case oldfiles::ColumnType::Memo:
            return longValue(text(value.toString(), column.compressed));
        case oldfiles::ColumnType::Ole:
            return longValue(value.toByteArray());
        case oldfiles::ColumnType::Single:
            return jetBytes(value.toFloat());
        case oldfiles::ColumnType::Double:
        case oldfiles::ColumnType::Date:
            return jetBytes(value.toDouble());
        default: // numbers; or binary, GUID, decimal
            const bool isBytes = value.typeId() == QMetaType::QByteArray;
            return isBytes ? value.toByteArray() : jetBytes(value.toLongLong()).first(sizeOf(column));
        }
    }

    static bool isFixed(const JetColumn &column) { return sizeOf(column) > 0; }
    static bool isBit(const JetColumn &column) { return column.type == oldfiles::ColumnType::YesNo; }
    static int sizeOf(const JetColumn &column)
    {
        static const QMap<int, int> sizes = {{1, 1}, {2, 1}, {3, 2},   {4, 4},   {5, 8},  {6, 4},
                                             {7, 8}, {8, 8}, {15, 16}, {16, 17}, {17, 16}};
        return sizes.value(int(column.type), 0);
    }

    /// A row of fewer values than the table has columns is older than the others.
    QByteArray row(const JetTable &table, const QVariantList &values)
    {
        QByteArray mask = zeros((values.size() + 7) / 8);
        QByteArray bytes = number(values.size());
        QByteArrayList variable;
        for (int i = 0; i < values.size(); ++i) {
            const JetColumn &column = table.columns.at(i);
            const bool isNull = values.at(i).isNull();
            if (isBit(column) ? values.at(i).toBool() : !isNull) {
                setBit(mask, 0, i);
            }
            if (!isFixed(column)) {
                variable.append(isNull ? QByteArray() : value(column, values.at(i)));
            } else if (!isBit(column)) {
                bytes += isNull ? zeros(sizeOf(column)) : value(column, values.at(i));
            }
        }
        if (variable.isEmpty()) {
            return bytes + mask;
        }
        QList<qsizetype> ends{bytes.size()};
        for (const QByteArray &value : std::as_const(variable)) {
            bytes += value;
            ends.prepend(bytes.size());
        }
        for (const qsizetype end : std::as_const(ends)) {
            bytes += number(end);
        }
        return bytes + (m_is4 ? QByteArray() : jumps(ends, bytes.size() + 1 + mask.size())) +
               number(variable.size()) + mask;
    }
    /// The older version's places of one byte tell where they pass each 256; what tells it makes the row
    /// longer, too.
    static QByteArray jumps(const QList<qsizetype> &ends, qsizetype without)
    {
        QByteArray places;
        while ((without + places.size() - 1) / 256 > places.size()) {
            const auto behind = std::ranges::count_if(
                ends, [limit = 256 * (places.size() + 1)](qsizetype end) { return end >= limit; });
            places.prepend(behind > 0 ? char(ends.size() - behind) : '\xFF');
        }
        return places;
    }

    // --- tables

    void write(const JetTable &table, int definition, char kind)
    {
        QList<int> pages;
        QList<Row> rows;
        for (int i = 0; i < table.rows.size(); ++i) {
            rows.append({row(table, table.rows.at(i)), table.deleted.contains(i) ? 0xC000 : 0});
            if (table.moved.contains(i)) {
                const quint32 place = addPage(quint32(definition), {{rows.last().bytes, 0x8000}});
                rows.last() = {jetBytes(place, "left-over"_ba), 0x4000};
                pages.append(int(place >> 8));
            }
        }
        addPages(definition, rows, pages);
        writeDefinition(table, definition, kind, addMap(pages));
    }

    QByteArray descriptor(const JetColumn &column, int place, int variable, int fixedAt) const
    {
        const auto flags = quint8((isFixed(column) ? 1 : 0) | 2 | (column.autoNumber ? 4 : 0));
        QByteArray bytes = jetBytes(quint8(column.type), only4(zeros(4)), quint16(place), quint16(variable),
                                    zeros(m_is4 ? 6 : 8), flags,
                                    only4(jetBytes(quint8(column.compressed ? 1 : 0), zeros(4))),
                                    quint16(fixedAt), quint16(isFixed(column) ? sizeOf(column) : 510));
        bytes[12] = char(column.scale);
        return bytes;
    }
    QByteArray named(const QString &name) const { return number(text(name).size()) + text(name); }
    QByteArray indexes(const JetTable &table) const
    {
        QByteArray real;
        QByteArray logical;
        QByteArray names;
        for (quint32 i = 0; i < table.indexes.size(); ++i) {
            const JetIndex &index = table.indexes.at(i);
            const auto column = std::ranges::find(table.columns, index.column, &JetColumn::name);
            real += only4(zeros(4)) + jetBytes(quint16(column - table.columns.begin()), quint8(1)) +
                    "\xFF\xFF\1"_ba.repeated(9) + zeros(m_is4 ? 12 : 8) + (index.unique ? '\1' : '\0') +
                    only4(zeros(5));
            logical += only4(zeros(4)) + jetBytes(i, i, zeros(12)) + only4(zeros(4));
            names += named(index.name);
        }
        return real + logical + names;
    }

    void writeDefinition(const JetTable &table, int first, char kind, quint32 map)
    {
        QByteArray columns;
        QByteArray names;
        int variable = 0;
        int fixedAt = 0;
        for (int i = 0; i < table.columns.size(); ++i) {
            const JetColumn &column = table.columns.at(i);
            columns += descriptor(column, i, variable, fixedAt);
            names += named(column.name);
            variable += isFixed(column) ? 0 : 1;
            fixedAt += isFixed(column) && !isBit(column) ? sizeOf(column) : 0;
        }
        const auto count = quint16(table.columns.size());
        const auto indexCount = quint32(table.indexes.size());
        const auto rows = quint32(table.rows.size() - table.deleted.size());
        QByteArray bytes =
            jetBytes(quint16(0x0102), zeros(10), only4(zeros(4)), rows, quint32(table.lastAutoNumber),
                     only4(jetBytes(quint32(1), zeros(12))), quint8(kind), count, quint16(variable), count,
                     indexCount, indexCount, map, map, zeros(qsizetype(indexCount) * (m_is4 ? 12 : 8))) +
            columns + names + indexes(table) + "\xFF\xFF";
        put<quint32>(bytes, 8, quint32(bytes.size()));
        int page = first;
        for (; bytes.size() > m_size; bytes = jetBytes(quint32(0x0102), quint32(0), bytes.mid(m_size))) {
            const int next = newPage();
            put<quint32>(bytes, 4, quint32(next));
            m_pages[std::exchange(page, next)] = bytes.first(m_size);
        }
        m_pages[page] = bytes.leftJustified(m_size, '\0');
    }

    /// The mask is the same in every file.
    void writeHeader()
    {
        const QByteArray mask = QByteArray::fromHex("7b42fb8abc4e");
        QByteArray clear = jetBytes(quint16(m_is4 ? 1252 : 936), quint32(0));
        for (qsizetype i = 0; i < mask.size(); ++i) {
            clear[i] = char(clear.at(i) ^ mask.at(i));
        }
        m_pages[0] = QByteArray("\0\1\0\0Standard Jet DB\0", 20) +
                     jetBytes(quint8(m_is4 ? 1 : 0), zeros(0x3C - 21), clear);
        m_pages[0].resize(m_size, '\0');
    }

    bool m_is4;
    int m_size;
    QByteArrayList m_pages;
    JetTable m_catalogue{u"MSysObjects"_s,
                         {{u"Id"_s, oldfiles::ColumnType::Long},
                          {u"Name"_s},
                          {u"Type"_s, oldfiles::ColumnType::Integer},
                          {u"Flags"_s, oldfiles::ColumnType::Long},
                          {u"LvProp"_s, oldfiles::ColumnType::Ole}},
                         {{cataloguePage, u"MSysObjects"_s, 1, std::numeric_limits<int>::min(), {}}}};
};

/// A database of these tables.
inline QByteArray jetFile(const QList<JetTable> &tables, oldfiles::Version version = oldfiles::Version::Jet4)
{
    return JetWriter(version).file(tables);
}
/// One whose pages could be read by its password alone.
inline QByteArray encodedJetFile()
{
    QByteArray file = jetFile({});
    file[0x3E] = char(~file.at(0x3E));
    return file;
}

} // namespace support
