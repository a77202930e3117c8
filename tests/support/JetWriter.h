#pragma once

#include "oldfiles/TableDefinition.h"
#include "support/Test.h"

#include <QVariantList>
#include <QtEndian>

#include <cmath>
#include <numeric>

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
    explicit JetWriter(oldfiles::Version version = oldfiles::Version::Jet4)
        : m_is4(version == oldfiles::Version::Jet4), m_size(m_is4 ? 4096 : 2048)
    {
        newPage(); // the header
        newPage(); // the pages that are in use, which no reader asks for
        m_cataloguePage = newPage();
        newMapPage();
    }

    quint32 encodingKey = 0;
    quint8 versionByte = 255; ///< 255: the right one
    QByteArray password = {};

    void add(const JetTable &table)
    {
        const quint32 page = table.type == 1 ? newPage() : 0x05000000;
        if (table.type == 1) {
            write(table, page, 'N');
        }
        m_catalogue.append({int(page), int(0x0F000001), table.name, table.type, 0, {}});
    }

    /// The whole file, with everything that was added.
    QByteArray file()
    {
        using oldfiles::ColumnType;
        JetTable catalogue = {u"MSysObjects"_s,
                              {{u"Id"_s, ColumnType::Long},
                               {u"ParentId"_s, ColumnType::Long},
                               {u"Name"_s, ColumnType::Text},
                               {u"Type"_s, ColumnType::Integer},
                               {u"Flags"_s, ColumnType::Long},
                               {u"LvProp"_s, ColumnType::Ole}},
                              m_catalogue};
        catalogue.rows.prepend(
            {int(m_cataloguePage), int(0x0F000001), catalogue.name, 1, std::numeric_limits<int>::min(), {}});
        write(catalogue, m_cataloguePage, 'S');
        writeHeader();
        return m_pages.join();
    }

private:
    quint32 newPage()
    {
        m_pages.append(QByteArray(m_size, '\0'));
        return quint32(m_pages.size() - 1);
    }
    QByteArray &page(quint32 number) { return m_pages[number]; }
    int rowsAt() const { return m_is4 ? 12 : 8; }

    quint32 newDataPage(quint32 owner)
    {
        const quint32 number = newPage();
        put<quint16>(page(number), 0, 0x0101);
        put<quint32>(page(number), 4, owner);
        return number;
    }

    // --- rows on pages

    int rowsOn(quint32 number) { return qFromLittleEndian<quint16>(page(number).data() + rowsAt()); }
    int lowest(quint32 number)
    {
        const int rows = rowsOn(number);
        return rows == 0 ? m_size
                         : qFromLittleEndian<quint16>(page(number).data() + rowsAt() + 2LL * rows) & 0x1FFF;
    }
    bool fits(quint32 number, qsizetype size)
    {
        return lowest(number) - size >= rowsAt() + 2 + 2 * (rowsOn(number) + 1);
    }
    quint32 addRow(quint32 number, const QByteArray &row, quint16 flags = 0)
    {
        const int at = int(lowest(number) - row.size());
        const int rows = rowsOn(number);
        page(number).replace(at, row.size(), row);
        put<quint16>(page(number), rowsAt() + 2 + 2 * rows, quint16(at | flags));
        put<quint16>(page(number), rowsAt(), quint16(rows + 1));
        put<quint16>(page(number), 2, quint16(at - rowsAt() - 2 - 2 * (rows + 1)));
        return number << 8 | quint32(rows);
    }
    /// On the last of the pages, or a new one.
    quint32 addRow(QList<quint32> &pages, quint32 owner, const QByteArray &row, quint16 flags = 0)
    {
        if (pages.isEmpty() || !fits(pages.last(), row.size()) || rowsOn(pages.last()) > 250) {
            pages.append(newDataPage(owner));
        }
        return addRow(pages.last(), row, flags);
    }

    // --- usage maps

    void newMapPage() { m_mapPage = newDataPage(0); }
    quint32 addMap(const QList<quint32> &pages)
    {
        const int span = m_is4 ? 512 : 1024;
        QByteArray row(m_is4 ? 69 : 133, '\0');
        const quint32 first = pages.isEmpty() ? 0 : pages.first() & ~7U;
        if (pages.isEmpty() || pages.last() - first < quint32(span)) {
            put<quint32>(row, 1, first);
            for (const quint32 number : pages) {
                setBit(row, 5, number - first);
            }
        } else {
            const quint32 perMap = quint32(m_size - 4) * 8;
            row[0] = 1;
            for (const quint32 number : pages) {
                const qsizetype entry = 1 + 4 * qsizetype(number / perMap);
                quint32 map = qFromLittleEndian<quint32>(row.data() + entry);
                if (map == 0) {
                    map = newPage();
                    put<quint16>(page(map), 0, 0x0105);
                    put<quint32>(row, entry, map);
                }
                setBit(page(map), 4, number % perMap);
            }
        }
        if (!fits(m_mapPage, row.size())) {
            newMapPage();
        }
        return addRow(m_mapPage, row);
    }
    static void setBit(QByteArray &bytes, qsizetype at, quint32 bit)
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
        const qsizetype mostOnPage = m_size - rowsAt() - 4;
        const quint32 owner = qFromLittleEndian<quint32>("LVAL");
        const auto length = quint32(value.size());
        if (value.size() <= mostInRow) {
            return jetBytes(length | 0x80000000, zeros(8), value);
        }
        if (value.size() <= mostOnPage) {
            return jetBytes(length | 0x40000000, addRow(newDataPage(owner), value), zeros(4));
        }
        quint32 next = 0;
        const qsizetype chunk = mostOnPage - 8;
        for (qsizetype at = (value.size() - 1) / chunk * chunk; at >= 0; at -= chunk) {
            next = addRow(newDataPage(owner), jetBytes(next, value.mid(at, chunk)));
        }
        return jetBytes(length, next, zeros(4));
    }

    QByteArray value(const JetColumn &column, const QVariant &value)
    {
        using oldfiles::ColumnType;
        if (column.type == ColumnType::Text) {
            return text(value.toString(), column.compressed);
        }
        if (column.type == ColumnType::Memo || column.type == ColumnType::Ole) {
            const bool isText = column.type == ColumnType::Memo;
            return longValue(isText ? text(value.toString(), column.compressed) : value.toByteArray());
        }
        if (column.type == ColumnType::Single) {
            return jetBytes(value.toFloat());
        }
        if (column.type == ColumnType::Double || column.type == ColumnType::Date) {
            return jetBytes(value.toDouble());
        }
        const bool isNumber = value.typeId() != QMetaType::QByteArray; // or binary, GUID, decimal
        return isNumber ? jetBytes(value.toLongLong()).first(sizeOf(column)) : value.toByteArray();
    }

    static bool isFixed(const JetColumn &column) { return sizeOf(column) > 0; }
    static int sizeOf(const JetColumn &column)
    {
        static const QMap<int, int> sizes = {{1, 1}, {2, 1}, {3, 2},   {4, 4},   {5, 8},  {6, 4},
                                             {7, 8}, {8, 8}, {15, 16}, {16, 17}, {17, 16}};
        return sizes.value(int(column.type), 0);
    }

    // --- rows as bytes

    /// Of two bytes, in the older version of one.
    QByteArray number(qsizetype value) const { return jetBytes(quint16(value)).first(m_is4 ? 2 : 1); }

    QByteArray row(const JetTable &table, const QVariantList &values)
    {
        const int columns = int(values.size()); // fewer than the table has: the row is older than the others
        QByteArray mask((columns + 7) / 8, '\0');
        QByteArray bytes = number(columns);
        QByteArrayList variable;
        for (int i = 0; i < columns; ++i) {
            const JetColumn &column = table.columns.at(i);
            const QVariant &given = values.at(i);
            const bool isBit = column.type == oldfiles::ColumnType::YesNo;
            if (isBit ? given.toBool() : !given.isNull()) {
                setBit(mask, 0, quint32(i));
            }
            if (!isFixed(column)) {
                variable.append(given.isNull() ? QByteArray() : value(column, given));
            } else if (!isBit) {
                bytes += given.isNull() ? zeros(sizeOf(column)) : value(column, given);
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

    void write(const JetTable &table, quint32 definition, char kind)
    {
        QList<quint32> pages;
        QList<quint32> farPages;
        qint64 rows = 0;
        for (int i = 0; i < table.rows.size(); ++i) {
            const QByteArray bytes = row(table, table.rows.at(i));
            if (table.deleted.contains(i)) {
                addRow(pages, definition, bytes, 0xC000);
                continue;
            }
            ++rows;
            if (table.moved.contains(i)) {
                const quint32 place = addRow(farPages, definition, bytes, 0x8000);
                addRow(pages, definition, jetBytes(place, "left-over"_ba), 0x4000);
            } else {
                addRow(pages, definition, bytes);
            }
        }
        pages += farPages;
        std::ranges::sort(pages);
        writeDefinition(table, definition, kind, rows, addMap(pages));
    }

    QByteArray only4(const QByteArray &bytes) const { return m_is4 ? bytes : QByteArray(); }

    QByteArray descriptor(const JetColumn &column, int place, int variable, int fixedAt) const
    {
        const bool isDecimal = column.type == oldfiles::ColumnType::Decimal;
        const auto flags = quint8((isFixed(column) ? 1 : 0) | 2 | (column.autoNumber ? 4 : 0));
        QByteArray bytes = jetBytes(quint8(column.type), only4(jetBytes(quint32(1625))), quint16(place),
                                    quint16(variable), zeros(m_is4 ? 6 : 8), flags,
                                    only4(jetBytes(quint8(column.compressed ? 1 : 0), zeros(4))),
                                    quint16(fixedAt), quint16(isFixed(column) ? sizeOf(column) : 510));
        bytes[11] = char(isDecimal ? 28 : 9); // precision, or sort order
        bytes[12] = char(isDecimal ? column.scale : 4);
        return bytes;
    }
    QByteArray named(const QString &name) const { return number(text(name).size()) + text(name); }
    QByteArray indexes(const JetTable &table) const
    {
        QByteArray bytes;
        for (const JetIndex &index : table.indexes) {
            const auto column = std::ranges::find(table.columns, index.column, &JetColumn::name);
            bytes += only4(zeros(4)) + jetBytes(quint16(column - table.columns.begin()), quint8(1)) +
                     "\xFF\xFF\1"_ba.repeated(9) + zeros(m_is4 ? 12 : 8) + (index.unique ? '\1' : '\0') +
                     only4(zeros(5));
        }
        for (int i = 0; i < table.indexes.size(); ++i) {
            bytes += only4(zeros(4)) + jetBytes(quint32(i), quint32(i), zeros(12)) + only4(zeros(4));
        }
        for (const JetIndex &index : table.indexes) {
            bytes += named(index.name);
        }
        return bytes;
    }

    void writeDefinition(const JetTable &table, quint32 first, char kind, qint64 rows, quint32 map)
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
            fixedAt += isFixed(column) && column.type != oldfiles::ColumnType::YesNo ? sizeOf(column) : 0;
        }
        const auto count = quint16(table.columns.size());
        const auto indexCount = quint32(table.indexes.size());
        QByteArray bytes = jetBytes(quint16(0x0102), zeros(10), only4(jetBytes(quint32(1625))), quint32(rows),
                                    quint32(table.lastAutoNumber), only4(jetBytes(quint32(1), zeros(12))),
                                    quint8(kind), count, quint16(variable), count, indexCount, indexCount,
                                    map, map, zeros(qsizetype(indexCount) * (m_is4 ? 12 : 8))) +
                           columns + names + indexes(table) + "\xFF\xFF";
        put<quint32>(bytes, 8, quint32(bytes.size()));
        putDefinition(bytes, first);
    }
    void putDefinition(const QByteArray &bytes, quint32 first)
    {
        page(first).replace(0, std::min<qsizetype>(m_size, bytes.size()),
                            bytes.first(std::min<qsizetype>(m_size, bytes.size())));
        quint32 last = first;
        for (qsizetype at = m_size; at < bytes.size(); at += m_size - 8) {
            const quint32 more = newPage();
            const QByteArray piece = bytes.mid(at, m_size - 8);
            put<quint16>(page(more), 0, 0x0102);
            page(more).replace(8, piece.size(), piece);
            put<quint32>(page(last), 4, more);
            last = more;
        }
    }

    // --- the header

    void writeHeader()
    {
        constexpr double created = 36526;
        QByteArray &header = page(0);
        header.replace(0, 20, QByteArray("\0\1\0\0Standard Jet DB\0", 20));
        header[0x14] = char(versionByte != 255 ? versionByte : m_is4 ? 1 : 0);
        put<quint32>(header, 0x18, 0x100);
        put<quint32>(header, 0x1C, 0x101);
        put<quint32>(header, 0x20, 2);
        put<quint16>(header, 0x3A, m_is4 ? 0 : 0x0409);
        put<quint16>(header, 0x3C, m_is4 ? 1252 : 936);
        put<quint32>(header, 0x3E, encodingKey);
        for (int i = 0; i < 40 && m_is4; ++i) {
            const char letter = i % 2 == 0 && i / 2 < password.size() ? password.at(i / 2) : '\0';
            header[0x42 + i] = char(letter ^ char(quint32(created) >> (8 * (i % 4))));
        }
        if (m_is4) {
            put<quint32>(header, 0x6E, 0x0409);
            qToLittleEndian(created, header.data() + 0x72);
        }
        mask(header, 0x18, m_is4 ? 128 : 126);
    }
    static void mask(QByteArray &bytes, int from, int size)
    {
        const QList<int> key = {0xC7, 0xDA, 0x39, 0x6B};
        QList<int> s(256);
        std::iota(s.begin(), s.end(), 0);
        for (int i = 0, j = 0; i < 256; ++i) {
            j = (j + s.at(i) + key.at(i % 4)) % 256;
            s.swapItemsAt(i, j);
        }
        for (int n = 0, i = 0, j = 0; n < size; ++n) {
            i = (i + 1) % 256;
            j = (j + s.at(i)) % 256;
            s.swapItemsAt(i, j);
            bytes[from + n] = char(bytes.at(from + n) ^ s.at((s.at(i) + s.at(j)) % 256));
        }
    }

    bool m_is4;
    int m_size;
    QList<QByteArray> m_pages;
    quint32 m_cataloguePage = 0;
    quint32 m_mapPage = 0;
    QList<QVariantList> m_catalogue;
};

} // namespace support
