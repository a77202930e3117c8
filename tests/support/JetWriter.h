#pragma once

#include "oldfiles/TableDefinition.h"
#include "support/Test.h"

#include <QVariantList>
#include <QtEndian>

#include <cmath>
#include <numeric>

namespace support {

/// Little-endian numbers behind one another, or over what stands there.
struct JetBytes
{
    QByteArray bytes;

    template <typename Number>
    JetBytes &add(Number number)
    {
        const Number little = qToLittleEndian(number);
        bytes.append(reinterpret_cast<const char *>(&little), sizeof(Number));
        return *this;
    }
    JetBytes &add(const QByteArray &more)
    {
        bytes += more;
        return *this;
    }
    JetBytes &zeros(qsizetype count) { return add(QByteArray(count, '\0')); }
    template <typename Number>
    static void put(QByteArray &into, qsizetype at, Number number)
    {
        qToLittleEndian(number, into.data() + at);
    }
};

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
    static constexpr int head4 = 14;
    static constexpr int head3 = 10;

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
        JetBytes::put<quint16>(page(number), 0, 0x0101);
        JetBytes::put<quint32>(page(number), 4, owner);
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
        JetBytes::put<quint16>(page(number), rowsAt() + 2 + 2 * rows, quint16(at | flags));
        JetBytes::put<quint16>(page(number), rowsAt(), quint16(rows + 1));
        JetBytes::put<quint16>(page(number), 2, quint16(at - rowsAt() - 2 - 2 * (rows + 1)));
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
            JetBytes::put<quint32>(row, 1, first);
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
                    JetBytes::put<quint16>(page(map), 0, 0x0105);
                    JetBytes::put<quint32>(row, entry, map);
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

    QByteArray text(const QString &text, bool compressed) const
    {
        if (!m_is4) {
            return core::CodePage(936).encode(text);
        }
        JetBytes plain;
        for (const QChar unit : text) {
            plain.add(quint16(unit.unicode()));
        }
        const bool can = compressed && std::ranges::none_of(text, [](QChar c) { return c.cell() == 0; });
        return can && !text.isEmpty() ? compressedForm(text) : plain.bytes;
    }
    static QByteArray compressedForm(const QString &text)
    {
        JetBytes bytes;
        bytes.add(quint16(0xFEFF));
        bool wide = false;
        for (const QChar unit : text) {
            if (wide != (unit.row() != 0)) {
                wide = !wide;
                bytes.add(quint8(0));
            }
            wide ? bytes.add(quint16(unit.unicode())) : bytes.add(quint8(unit.cell()));
        }
        return bytes.bytes;
    }

    /// Short ones stay in the row, middling ones take a row of another page, long ones a chain of them.
    QByteArray longValue(const QByteArray &value)
    {
        constexpr qsizetype mostInRow = 64;
        const qsizetype mostOnPage = m_size - rowsAt() - 4;
        const quint32 owner = qFromLittleEndian<quint32>("LVAL");
        JetBytes field;
        const auto length = quint32(value.size());
        if (value.size() <= mostInRow) {
            return field.add(length | 0x80000000).zeros(8).add(value).bytes;
        }
        if (value.size() <= mostOnPage) {
            return field.add(length | 0x40000000).add(addRow(newDataPage(owner), value)).zeros(4).bytes;
        }
        quint32 next = 0;
        const qsizetype chunk = mostOnPage - 8;
        for (qsizetype at = (value.size() - 1) / chunk * chunk; at >= 0; at -= chunk) {
            JetBytes piece;
            next = addRow(newDataPage(owner), piece.add(next).add(value.mid(at, chunk)).bytes);
        }
        return field.add(length).add(next).zeros(4).bytes;
    }

    QByteArray value(const JetColumn &column, const QVariant &value)
    {
        using oldfiles::ColumnType;
        JetBytes bytes;
        switch (column.type) {
        case ColumnType::Byte:
            return bytes.add(quint8(value.toInt())).bytes;
        case ColumnType::Integer:
            return bytes.add(qint16(value.toInt())).bytes;
        case ColumnType::Long:
            return bytes.add(qint32(value.toInt())).bytes;
        case ColumnType::Currency:
            return bytes.add(qint64(value.toLongLong())).bytes;
        case ColumnType::Single:
            return bytes.add(value.toFloat()).bytes;
        case ColumnType::Double:
        case ColumnType::Date:
            return bytes.add(value.toDouble()).bytes;
        case ColumnType::Text:
            return text(value.toString(), column.compressed);
        case ColumnType::Memo:
            return longValue(text(value.toString(), column.compressed));
        case ColumnType::Ole:
            return longValue(value.toByteArray());
        default:
            return value.toByteArray(); // binary, GUID, decimal: the bytes themselves
        }
    }

    static bool isFixed(const JetColumn &column)
    {
        using oldfiles::ColumnType;
        return column.type != ColumnType::Text && column.type != ColumnType::Memo &&
               column.type != ColumnType::Ole && column.type != ColumnType::Binary;
    }
    static int sizeOf(const JetColumn &column)
    {
        static const QMap<int, int> sizes = {{1, 1}, {2, 1}, {3, 2},   {4, 4},    {5, 8},   {6, 4},
                                             {7, 8}, {8, 8}, {9, 510}, {10, 510}, {15, 16}, {16, 17}};
        return sizes.value(int(column.type), 0);
    }

    // --- rows as bytes

    QByteArray row(const JetTable &table, const QVariantList &values)
    {
        const int columns = int(values.size()); // fewer than the table has: the row is older than the others
        QByteArray mask((columns + 7) / 8, '\0');
        JetBytes fixed;
        QList<QByteArray> variable;
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
                given.isNull() ? fixed.zeros(sizeOf(column)) : fixed.add(value(column, given));
            }
        }
        return m_is4 ? row4(columns, fixed.bytes, variable, mask)
                     : row3(columns, fixed.bytes, variable, mask);
    }
    static QList<int> endsOf(int start, const QList<QByteArray> &variable)
    {
        QList<int> ends{start};
        for (const QByteArray &value : variable) {
            ends.append(ends.last() + int(value.size()));
        }
        return ends;
    }
    static QByteArray row4(int columns, const QByteArray &fixed, const QList<QByteArray> &variable,
                           const QByteArray &mask)
    {
        JetBytes row;
        row.add(quint16(columns)).add(fixed).add(variable.join());
        if (!variable.isEmpty()) {
            const QList<int> ends = endsOf(2 + int(fixed.size()), variable);
            for (qsizetype i = ends.size() - 1; i >= 0; --i) {
                row.add(quint16(ends.at(i)));
            }
            row.add(quint16(variable.size()));
        }
        return row.add(mask).bytes;
    }
    static QByteArray row3(int columns, const QByteArray &fixed, const QList<QByteArray> &variable,
                           const QByteArray &mask)
    {
        JetBytes row;
        row.add(quint8(columns)).add(fixed).add(variable.join());
        if (variable.isEmpty()) {
            return row.add(mask).bytes;
        }
        const QList<int> ends = endsOf(1 + int(fixed.size()), variable);
        const qsizetype without = row.bytes.size() + ends.size() + 1 + mask.size();
        qsizetype jumps = 0; // each of them makes the row longer, too
        while ((without + jumps - 1) / 256 > jumps) {
            ++jumps;
        }
        for (qsizetype i = ends.size() - 1; i >= 0; --i) {
            row.add(quint8(ends.at(i) & 0xFF));
        }
        for (qsizetype jump = jumps; jump >= 1; --jump) {
            const auto first =
                std::ranges::find_if(std::as_const(ends), [&](int end) { return end >= 256 * jump; });
            row.add(first == ends.cend() ? quint8(0xFF) : quint8(first - ends.cbegin()));
        }
        return row.add(quint8(variable.size())).add(mask).bytes;
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
                addRow(pages, definition, JetBytes().add(place).add("left-over"_ba).bytes, 0x4000);
            } else {
                addRow(pages, definition, bytes);
            }
        }
        pages += farPages;
        std::ranges::sort(pages);
        writeDefinition(table, definition, kind, rows, addMap(pages));
    }

    JetBytes descriptor(const JetColumn &column, int number, int variable, int fixedAt) const
    {
        const auto flags = quint8((isFixed(column) ? 1 : 0) | 2 | (column.autoNumber ? 4 : 0));
        JetBytes bytes;
        bytes.add(quint8(column.type));
        if (m_is4) {
            bytes.add(quint32(1625));
        }
        bytes.add(quint16(number)).add(quint16(variable)).zeros(m_is4 ? 2 : 4);
        const bool isDecimal = column.type == oldfiles::ColumnType::Decimal;
        bytes.zeros(4);
        bytes.bytes[11] = char(isDecimal ? 28 : 9); // precision, or sort order
        bytes.bytes[12] = char(isDecimal ? column.scale : 4);
        bytes.add(flags);
        if (m_is4) {
            bytes.add(quint8(column.compressed ? 1 : 0)).zeros(4);
        }
        return bytes.add(quint16(fixedAt)).add(quint16(sizeOf(column)));
    }
    void addName(JetBytes &bytes, const QString &name) const
    {
        const QByteArray text = this->text(name, false);
        m_is4 ? bytes.add(quint16(text.size())) : bytes.add(quint8(text.size()));
        bytes.add(text);
    }
    void addIndexes(JetBytes &bytes, const JetTable &table) const
    {
        for (const JetIndex &index : table.indexes) {
            const auto named = [&](const JetColumn &column) { return column.name == index.column; };
            const auto number = std::ranges::find_if(table.columns, named) - table.columns.begin();
            bytes.zeros(m_is4 ? 4 : 0);
            for (int key = 0; key < 10; ++key) {
                bytes.add(key == 0 ? quint16(number) : quint16(0xFFFF)).add(quint8(1));
            }
            bytes.zeros(m_is4 ? 12 : 8).add(quint8(index.unique ? 1 : 0)).zeros(m_is4 ? 5 : 0);
        }
        for (int i = 0; i < table.indexes.size(); ++i) {
            bytes.zeros(m_is4 ? 4 : 0).add(quint32(i)).add(quint32(i)).zeros(11);
            bytes.add(quint8(0)).zeros(m_is4 ? 4 : 0);
        }
        for (const JetIndex &index : table.indexes) {
            addName(bytes, index.name);
        }
    }

    void writeDefinition(const JetTable &table, quint32 first, char kind, qint64 rows, quint32 map)
    {
        const auto variables =
            std::ranges::count_if(table.columns, [](const JetColumn &c) { return !isFixed(c); });
        const auto indexes = quint32(table.indexes.size());
        JetBytes bytes;
        bytes.add(quint16(0x0102)).zeros(10);
        if (m_is4) {
            bytes.add(quint32(1625));
        }
        bytes.add(quint32(rows)).add(quint32(table.lastAutoNumber));
        m_is4 ? bytes.add(quint32(1)).zeros(12) : bytes;
        bytes.add(quint8(kind)).add(quint16(table.columns.size())).add(quint16(variables));
        bytes.add(quint16(table.columns.size())).add(indexes).add(indexes).add(map).add(map);
        bytes.zeros(qsizetype(indexes) * (m_is4 ? 12 : 8));
        int variable = 0;
        int fixedAt = 0;
        for (int i = 0; i < table.columns.size(); ++i) {
            const JetColumn &column = table.columns.at(i);
            bytes.add(descriptor(column, i, variable, fixedAt).bytes);
            variable += isFixed(column) ? 0 : 1;
            fixedAt += isFixed(column) && column.type != oldfiles::ColumnType::YesNo ? sizeOf(column) : 0;
        }
        for (const JetColumn &column : table.columns) {
            addName(bytes, column.name);
        }
        addIndexes(bytes, table);
        bytes.add(quint16(0xFFFF));
        JetBytes::put<quint32>(bytes.bytes, 8, quint32(bytes.bytes.size()));
        putDefinition(bytes.bytes, first);
    }
    void putDefinition(const QByteArray &bytes, quint32 first)
    {
        page(first).replace(0, std::min<qsizetype>(m_size, bytes.size()),
                            bytes.first(std::min<qsizetype>(m_size, bytes.size())));
        quint32 last = first;
        for (qsizetype at = m_size; at < bytes.size(); at += m_size - 8) {
            const quint32 more = newPage();
            const QByteArray piece = bytes.mid(at, m_size - 8);
            JetBytes::put<quint16>(page(more), 0, 0x0102);
            page(more).replace(8, piece.size(), piece);
            JetBytes::put<quint32>(page(last), 4, more);
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
        JetBytes::put<quint32>(header, 0x18, 0x100);
        JetBytes::put<quint32>(header, 0x1C, 0x101);
        JetBytes::put<quint32>(header, 0x20, 2);
        JetBytes::put<quint16>(header, 0x3A, m_is4 ? 0 : 0x0409);
        JetBytes::put<quint16>(header, 0x3C, m_is4 ? 1252 : 936);
        JetBytes::put<quint32>(header, 0x3E, encodingKey);
        for (int i = 0; i < 40 && m_is4; ++i) {
            const char letter = i % 2 == 0 && i / 2 < password.size() ? password.at(i / 2) : '\0';
            header[0x42 + i] = char(letter ^ char(quint32(created) >> (8 * (i % 4))));
        }
        if (m_is4) {
            JetBytes::put<quint32>(header, 0x6E, 0x0409);
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
