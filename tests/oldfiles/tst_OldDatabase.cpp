#include "oldfiles/OldDatabase.h"
#include "support/JetWriter.h"
#include "support/TestDesk.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>

using oldfiles::ColumnType;
using oldfiles::OldDatabase;
using oldfiles::Version;
using support::JetColumn;
using support::JetTable;

namespace {

using Rows = QList<QVariantList>;

/// All that a file holds, by table.
QMap<QString, Rows> read(const QByteArray &file)
{
    const OldDatabase database(file);
    QMap<QString, Rows> tables;
    for (const oldfiles::Table &table : database.tables()) {
        Rows &rows = tables[table.name];
        database.forEachRow(table, [&rows](const QVariantList &row) { rows.append(row); });
    }
    return tables;
}

/// What reading it throws; "" when nothing.
QString errorOf(const QByteArray &file)
{
    return support::errorOf([&file] { read(file); });
}

/// Texts of every script, of one byte a character and of two, mixed, and with line breaks.
const QStringList scripts = {u"Ann Smith"_s,      u"Łódź, żółć"_s, u"客户名称"_s,     u"客戶 mixed 中"_s,
                             u"かな カナ 漢字"_s, u"한국어"_s,     u"عميل"_s,         u"לקוח"_s,
                             u"Việt Nam"_s,       u"Ünlü ığİ"_s,   u"two\r\nlines"_s, u" blanks  "_s,
                             u"quotes \"'"_s};

/// A table as large desks have them: a key, texts, memos, and one of each other kind.
JetTable deskTable(int rows, int longestMemo)
{
    constexpr int texts = 39;
    JetTable table{u"customer"_s, {{u"SN"_s, ColumnType::Long, false, true}}, {}};
    for (int i = 1; i <= texts + 4; ++i) {
        const QString name = i <= texts ? u"text%1"_s : u"备注%1"_s;
        table.columns.append({name.arg(i), i <= texts ? ColumnType::Text : ColumnType::Memo, i % 2 == 0});
    }
    table.columns += {{u"flag"_s, ColumnType::YesNo},
                      {u"made"_s, ColumnType::Integer},
                      {u"small"_s, ColumnType::Byte},
                      {u"Real number"_s, ColumnType::Double}};
    for (int i = 0; i < rows; ++i) {
        QVariantList row{i + 1};
        for (int column = 1; column <= texts; ++column) {
            const bool isNull = (i + column) % 5 == 0;
            row.append(isNull ? QVariant() : QVariant(scripts.at((i * 7 + column) % scripts.size())));
        }
        for (int memo = 0; memo < 4; ++memo) {
            const int length = memo == 0 ? 1 + i : memo * 1000 + (i == 3 ? longestMemo / 2 : i);
            row.append(scripts.at((i + memo) % scripts.size()).repeated(length).left(length));
        }
        row << (i % 3 == 0) << -i << i % 256 << i / 4.0;
        table.rows.append(row);
    }
    return table;
}

} // namespace

/// The reader of old databases, by files that tests/support/JetWriter.h makes.
class tst_OldDatabase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindOfValueIsReadAsItIs_data()
    {
        QTest::addColumn<ColumnType>("type");
        QTest::addColumn<QVariant>("written");
        QTest::addColumn<QVariant>("wanted");
        const auto row = [](const char *name, ColumnType type, const QVariant &written,
                            const QVariant &wanted) { QTest::newRow(name) << type << written << wanted; };
        row("yes", ColumnType::YesNo, true, true);
        row("no", ColumnType::YesNo, false, false);
        row("byte", ColumnType::Byte, 255, 255);
        row("integer", ColumnType::Integer, -32768, -32768);
        row("long", ColumnType::Long, -2147483647 - 1, -2147483647 - 1);
        row("currency", ColumnType::Currency, -9223372036854775807LL - 1, u"-922337203685477.5808"_s);
        row("currency without a fraction", ColumnType::Currency, 1000000, u"100"_s);
        row("small currency", ColumnType::Currency, -500, u"-0.05"_s);
        row("single", ColumnType::Single, 0.5F, 0.5);
        row("double", ColumnType::Double, 1e300, 1e300);
        row("date", ColumnType::Date, 38852.75, u"2006-05-15 18:00:00"_s);
        row("date before the epoch", ColumnType::Date, -1.25, u"1899-12-29 06:00:00"_s);
        row("date of another century", ColumnType::Date, -49141.53125, u"1765-06-14 12:45:00"_s);
        row("a second that is rounded up", ColumnType::Date, 1.9999999, u"1900-01-01 00:00:00"_s);
        row("binary", ColumnType::Binary, "\0\1\xFF"_ba, "\0\1\xFF"_ba);
        row("empty text", ColumnType::Text, u""_s, u""_s);
        row("text that looks like a number", ColumnType::Text, u"007"_s, u"007"_s);
        row("object", ColumnType::Ole, QByteArray(5000, 'x'), QByteArray(5000, 'x'));
        QByteArray decimal(17, '\0');
        decimal[0] = char(0x80);
        decimal[9] = 1; // 2^32 and 5
        decimal[13] = 5;
        row("decimal", ColumnType::Decimal, decimal, u"-4294967.301"_s);
        row("GUID", ColumnType::Guid, QByteArray::fromHex("33221100554477668899aabbccddeeff"),
            u"{00112233-4455-6677-8899-AABBCCDDEEFF}"_s);
        row("unknown kind", ColumnType(0x11), QVariant(), QVariant());
        for (const int length : {1, 31, 32, 33, 2037, 2040, 2041, 4080, 150000}) {
            const QString memo = u"中"_s.repeated(length);
            QTest::addRow("memo of %d bytes", length * 2)
                << ColumnType::Memo << QVariant(memo) << QVariant(memo);
        }
    }
    void everyKindOfValueIsReadAsItIs()
    {
        QFETCH(ColumnType, type);
        QFETCH(QVariant, written);
        QFETCH(QVariant, wanted);
        const QVariant no = type == ColumnType::YesNo ? QVariant(false) : QVariant();
        const JetTable table{u"a table"_s,
                             {{u"before"_s, ColumnType::Text},
                              {u"value"_s, type, false, false, 3},
                              {u"after"_s, ColumnType::Memo}},
                             {{u"x"_s, written, u"y"_s}, {{}, no, {}}}};
        const Rows expected{{u"x"_s, wanted, u"y"_s}, {{}, no, {}}};
        QCOMPARE(read(support::jetFile({table}, Version::Jet3)).value(table.name), expected);
        QCOMPARE(read(support::jetFile({table})).value(table.name), expected);
    }

    void aLargeTableIsReadWholeAndAsAnotherReaderDoes()
    {
        JetTable table = deskTable(300, 60000);
        table.deleted = {5, 100, 101};
        table.moved = {0, 7, 250};
        table.lastAutoNumber = 400;
        table.indexes = {{u"SN"_s, u"SN"_s, true}, {u"by memo"_s, u"备注40"_s, false}};
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"a.ccsm"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(support::jetFile({table})) > 0 && file.flush());

        const OldDatabase database = OldDatabase::fromFile(file.fileName());
        QCOMPARE(database.tables().size(), 1);
        const oldfiles::TableDefinition &definition = database.tables().first().definition;
        QCOMPARE(definition.lastAutoNumber, 400);
        QCOMPARE(definition.rows, 297);
        QStringList indexes;
        for (const oldfiles::Index &index : definition.indexes) {
            indexes.append(index.name + u'=' + index.keys.first().column + (index.unique ? u"!"_s : u""_s));
        }
        QCOMPARE(indexes, (QStringList{u"SN=SN!"_s, u"by memo=备注40"_s}));
        Rows expected = table.rows;
        for (const int row : {101, 100, 5}) {
            expected.removeAt(row);
        }
        const Rows rows = read(support::jetFile({table})).value(table.name);
        QCOMPARE(rows, expected);
        compareWithMdbJson(file.fileName(), table.columns, rows);
    }

    void everyShapeOfATableIsReadWhole()
    {
        const JetTable grown{u"a column came later"_s,
                             {{u"SN"_s, ColumnType::Long}, {u"a"_s}, {u"b"_s, ColumnType::Memo}},
                             {{0x00FF00FF}, {2, u"x"_s}, {3, u"y"_s, u"z"_s}}};
        // Four bytes that would be UTF-8, too; and rows of more than 256 bytes, whose ends need two.
        JetTable coded{u"客户"_s, {{u"名"_s}, {u"b"_s}, {u"c"_s}, {u"number"_s, ColumnType::Long}}, {}};
        for (const int length : {1, 100, 127, 128, 250}) {
            coded.rows.append(
                {u"联通"_s, u"中"_s.repeated(length).left(255), u"x"_s.repeated(length), length});
        }
        coded.moved = {1};
        JetTable large{u"a definition of several pages"_s, {}, {}};
        for (int i = 0; i < 120; ++i) {
            large.columns.append({u"a column with a rather long name, number %1"_s.arg(i), ColumnType::Long});
        }
        for (int row = 0; row < 6000; ++row) { // more pages than the short form of a list of pages holds
            large.rows.append(QVariantList(120, row));
        }
        for (const auto &[table, version] : {std::pair(grown, Version::Jet3),
                                             {grown, Version::Jet4},
                                             {coded, Version::Jet3},
                                             {large, Version::Jet4}}) {
            Rows expected = table.rows;
            for (QVariantList &row : expected) {
                row.resize(table.columns.size());
            }
            QCOMPARE(read(support::jetFile({table}, version)).value(table.name), expected);
        }
    }

    void whatCannotBeReadIsRefusedWithAClearText()
    {
        const JetTable table{u"T"_s, {{u"a"_s}}, {{u"x"_s}}};
        QByteArray later = support::jetFile({});
        later[0x14] = 2;
        const QByteArray linked = support::jetFile({{u"far away"_s, {}, {}, {}, {}, {}, 6}});
        for (const auto &[file, told] :
             {std::pair(""_ba, u"no Jet database"_s),
              {"SQLite format 3"_ba.leftJustified(8192), u"no Jet database"_s},
              {support::encodedJetFile(), u"is encoded"_s},
              {later, u"newer version"_s},
              {linked, u"far away is a link"_s},
              {support::jetFile({table}).chopped(qsizetype(3) * 4096), u"is damaged"_s}}) {
            const QString error = errorOf(file);
            QVERIFY2(error.contains(told), qPrintable(told + u": "_s + error));
        }
    }

    // Memos that lead into themselves, definitions that go on in themselves, rows that point at each other.
    void nothingGoesRoundInACircle()
    {
        const QByteArray file = support::jetFile({deskTable(20, 20000)});
        for (qsizetype page = 1; page < file.size() / 4096; ++page) {
            QByteArray circle = file;
            const quint32 self = quint32(page) << 8;
            const bool memos = file.mid(page * 4096 + 4, 4) == "LVAL";
            if (memos) {
                const auto row = qFromLittleEndian<quint16>(file.constData() + page * 4096 + 14);
                support::put<quint32>(circle, page * 4096 + row, self);
            } else if (file.at(page * 4096) == 2) {
                support::put<quint32>(circle, page * 4096 + 4, quint32(page));
            } else {
                continue;
            }
            const QString error = errorOf(circle);
            QVERIFY2(memos || error.contains(u"no end"_s), qPrintable(error));
        }
    }

    void damagedCopiesNeverGiveAPartForTheWhole()
    {
        constexpr int copies = 2000;
        JetTable table = deskTable(12, 6000);
        table.moved = {2, 4};
        table.deleted = {8};
        const QByteArray file =
            support::jetFile({table, {u"other"_s, {{u"a"_s, ColumnType::Long}}, Rows(100, {5})}});
        const QMap<QString, qsizetype> rowsOfWhole = {{u"customer"_s, 11}, {u"other"_s, 100}};
        QCOMPARE(errorOf(file), QString());
        QRandomGenerator random(20061115);
        int refused = 0;
        for (int copy = 0; copy < copies; ++copy) {
            try {
                const QMap<QString, Rows> tables = read(damaged(file, random));
                for (auto found = tables.begin(); found != tables.end(); ++found) {
                    QVERIFY2(found->size() >= rowsOfWhole.value(found.key(), 0), qPrintable(found.key()));
                }
            } catch (const core::Error &) {
                ++refused;
            }
        }
        QVERIFY2(refused > copies / 10, qPrintable(QString::number(refused)));
    }

private:
    // Where every number of the format stands: the beginnings and ends of pages get most of it.
    static QByteArray damaged(QByteArray file, QRandomGenerator &random)
    {
        for (int i = random.bounded(1, 5); i > 0; --i) {
            const std::array within = {random.bounded(100), 4095 - random.bounded(100), random.bounded(4096)};
            const qsizetype page = random.bounded(file.size() / 4096) * 4096;
            file[page + within.at(size_t(i) % 3)] = char(random.bounded(2) == 0 ? 0xFF : random.bounded(256));
        }
        return file;
    }

    /// An independent reader. It leaves out what is Null.
    static void compareWithMdbJson(const QString &path, const QList<JetColumn> &columns, const Rows &rows)
    {
        QProcess reader;
        reader.start(u"mdb-json"_s, {path, u"customer"_s});
        QVERIFY2(reader.waitForFinished(), "mdb-json (package mdbtools) is missing");
        const QList<QByteArray> lines = reader.readAllStandardOutput().trimmed().split('\n');
        QCOMPARE(lines.size(), rows.size());
        QMap<int, QJsonObject> bySn; // moved rows come in another order
        for (const QByteArray &line : lines) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            bySn.insert(object.value(u"SN"_s).toInt(), object);
        }
        for (const QVariantList &row : rows) {
            const QJsonObject object = bySn.value(row.first().toInt());
            for (qsizetype i = 0; i < columns.size(); ++i) {
                const QVariant theirs = object.value(columns.at(i).name).toVariant();
                QVERIFY2(row.at(i).isNull() || theirs == row.at(i), qPrintable(theirs.toString()));
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_OldDatabase)
#include "tst_OldDatabase.moc"
