#include "DatagramTemplate.h"

#include "core/CodePage.h"
#include "reception/Records.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The record layout: by byte offset where a column is a byte, and as the program reads it back everywhere.
class tst_RecordWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFieldStandsInItsByteColumns_data();
    void everyFieldStandsInItsByteColumns();
    void theProgramReadsEveryFieldBack_data();
    void theProgramReadsEveryFieldBack();
    void aFieldIsCutBeforeHalfACharacter_data();
    void aFieldIsCutBeforeHalfACharacter();
    void parameterBlocksFollowTheTail();
    void theShortAndTheDetailRecordAreReadBack();
    void aMessageBeginsWithCharacter204();
    void textMayHoldRunningNumbersAndAnyByte_data();
    void textMayHoldRunningNumbersAndAnyByte();
};

namespace {

sim::CallFields sampleCall(const QString &line, const QString &name)
{
    sim::CallFields fields;
    fields.channel = u"007"_s;
    fields.time = u"2026-11-21 09:30:15"_s;
    fields.line = line;
    fields.number = u"2125550199"_s;
    fields.name = name;
    fields.match = u"SPB12"_s;
    fields.ip = u"10.1.2.3"_s;
    fields.blackList = u"Y"_s;
    fields.vip = u"G"_s;
    fields.tailTime = u"2026-11-20 10:42"_s;
    fields.tailExt = u"201"_s;
    fields.tailTel = u"5035550106"_s;
    fields.rawCid = u"00123"_s;
    return fields;
}

sim::CodePageChoice codePage(const QString &name)
{
    return sim::CodePageChoice::named(name).value();
}

} // namespace

void tst_RecordWriter::everyFieldStandsInItsByteColumns_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("name");
    QTest::newRow("ASCII as UTF-8") << u"utf-8"_s << u"5550100"_s << u"Ada Park"_s;
    QTest::newRow("simplified Chinese") << u"936"_s << u"总机前台"_s << u"老街火锅店"_s;
    QTest::newRow("traditional Chinese") << u"950"_s << u"總機"_s << u"臺南府城旅店"_s;
    QTest::newRow("Polish") << u"1250"_s << u"Żółw"_s << u"Słodka Chwila"_s;
    QTest::newRow("full fields") << u"936"_s << QString(28, u'x') << QString(15, QChar(0x4E2D));
}

void tst_RecordWriter::everyFieldStandsInItsByteColumns()
{
    QFETCH(QString, page);
    QFETCH(QString, line);
    QFETCH(QString, name);
    const sim::CodePageChoice choice = codePage(page);
    const QByteArray record = sim::callRecord(sampleCall(line, name), choice);
    const std::tuple<int, int, QByteArray> expected[] = {
        {1, 6, "<CRMV1"},
        {7, 16, ""},
        {23, 8, "007"},
        {31, 19, "2026-11-21 09:30:15"},
        {50, 28, choice.encode(line)},
        {78, 30, "2125550199"},
        {108, 5, "   > "},
        {113, 30, choice.encode(name)},
        {143, 1, ""},
        {144, 10, "SPB12"},
        {154, 30, "10.1.2.3"},
        {184, 10, "Y"},
        {194, 10, "G"},
        {204, 16, "2026-11-20 10:42"},
        {220, 8, "201"},
        {228, 15, "5035550106"},
    };
    for (const auto &[first, width, text] : expected) {
        QCOMPARE(record.mid(first - 1, width), text.leftJustified(width));
    }
    QCOMPARE(record.mid(242), "{RAWCID:[00123]}{DETAILDES:[]}"_ba);
}

void tst_RecordWriter::theProgramReadsEveryFieldBack_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("receiver");
    QTest::addColumn<QString>("text");
    QTest::newRow("ASCII") << u"utf-8"_s << 1252 << u"Front desk"_s;
    QTest::newRow("Chinese in UTF-8") << u"utf-8"_s << 1252 << u"总机（前台）"_s;
    QTest::newRow("Chinese in UTF-8, to a Chinese desk") << u"utf-8"_s << 936 << u"总机（前台）"_s;
    QTest::newRow("Polish in UTF-8") << u"utf-8"_s << 1250 << u"Zażółć gęślą"_s;
    QTest::newRow("emoji in UTF-8") << u"utf-8"_s << 1252 << u"☎😀"_s;
    QTest::newRow("simplified Chinese") << u"936"_s << 936 << u"总机前台"_s;
    QTest::newRow("traditional Chinese") << u"950"_s << 950 << u"總機"_s;
    QTest::newRow("Japanese") << u"932"_s << 932 << u"受付カウンター"_s;
    QTest::newRow("Korean") << u"949"_s << 949 << u"안내 데스크"_s;
    QTest::newRow("Arabic") << u"1256"_s << 1256 << u"مكتب الاستقبال"_s;
    QTest::newRow("Turkish") << u"1254"_s << 1254 << u"Danışma İğne"_s;
}

void tst_RecordWriter::theProgramReadsEveryFieldBack()
{
    QFETCH(QString, page);
    QFETCH(int, receiver);
    QFETCH(QString, text);
    const sim::CallFields fields = sampleCall(text, text);
    const core::CodePage decoder(receiver);
    const QByteArray bytes = sim::callRecord(fields, codePage(page));
    const core::CallRecord record =
        reception::parseCallRecord({decoder.decode(bytes), decoder.columnRule(bytes)});
    QCOMPARE(record.LineNo, text);
    QCOMPARE(record.SimpleDes, text);
    QCOMPARE(record.CallerID, fields.number);
    QCOMPARE(record.SnText, u"12"_s);
    QCOMPARE(record.SenderIp, fields.ip);
    QCOMPARE(record.IfVIP, u"G"_s);
    QCOMPARE(record.RawCid, u"00123"_s);
    QCOMPARE(record.Tail.right(15).trimmed(), fields.tailTel);
}

void tst_RecordWriter::aFieldIsCutBeforeHalfACharacter_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("kept");
    const QString fifteen(15, QChar(0x4E2D));
    const QString faces = u"😀😀😀😀😀😀😀😀😀😀😀😀😀😀😀"_s;
    QTest::newRow("even") << u"936"_s << fifteen << fifteen.left(14);
    QTest::newRow("odd") << u"936"_s << u"a"_s + fifteen << u"a"_s + fifteen.left(13) + u" "_s;
    QTest::newRow("odd in UTF-8") << u"utf-8"_s << u"a"_s + fifteen << u"a"_s + fifteen.left(13) + u" "_s;
    QTest::newRow("surrogate pairs") << u"utf-8"_s << u"a"_s + faces << u"a"_s + faces.left(26) + u" "_s;
    QTest::newRow("single bytes") << u"1250"_s << QString(40, QChar(0x17B)) << QString(28, QChar(0x17B));
}

void tst_RecordWriter::aFieldIsCutBeforeHalfACharacter()
{
    QFETCH(QString, page);
    QFETCH(QString, line);
    QFETCH(QString, kept);
    const sim::CodePageChoice choice = codePage(page);
    const QByteArray record = sim::callRecord(sampleCall(line, QString()), choice);
    const QByteArray expected = choice.encode(kept) + "2125550199 ";
    QCOMPARE(record.mid(49, expected.size()), expected);
}

void tst_RecordWriter::parameterBlocksFollowTheTail()
{
    sim::CallFields fields;
    QCOMPARE(sim::callRecord(fields, {}).size(), 203);
    fields.detail = u"Owner"_s;
    const QByteArray blocks = "{RAWCID:[]}{DETAILDES:[Owner]}";
    QCOMPARE(sim::callRecord(fields, {}).mid(203), blocks);
    fields.tailExt = u"201"_s;
    QCOMPARE(sim::callRecord(fields, {}).mid(219), "201                    " + blocks);
}

void tst_RecordWriter::theShortAndTheDetailRecordAreReadBack()
{
    sim::CallFields fields = sampleCall(u"总机"_s, u"火锅店"_s);
    fields.detail = u"Owner: 刘川\r\nCalls at noon"_s;
    const core::CodePage decoder(936);
    const auto datagram = [&](const QByteArray &bytes) {
        return reception::DatagramText{decoder.decode(bytes), decoder.columnRule(bytes)};
    };

    const auto shortCid = datagram(sim::cidRecord(fields, codePage(u"936"_s)));
    QCOMPARE(reception::kindOf(shortCid.text), reception::DatagramKind::ShortCid);
    QCOMPARE(reception::parseShortCid(shortCid).number, fields.number);
    QCOMPARE(reception::parseShortCid(shortCid).name.trimmed(), fields.name);

    const auto detail = datagram(sim::detailRecord(fields, codePage(u"936"_s)));
    QCOMPARE(reception::kindOf(detail.text), reception::DatagramKind::Detail);
    QCOMPARE(reception::parseDetail(detail).SimpleDes.trimmed(), fields.name);
    QCOMPARE(reception::parseDetail(detail).DetailDes, fields.detail.value());
}

void tst_RecordWriter::aMessageBeginsWithCharacter204()
{
    for (const QString &sendTo : {u"ALL"_s, u"陈思远"_s, QString(60, u'z')}) {
        const QString text = QString::fromUtf8(sim::messageRecord(sendTo, u"回来了 }}} bye"_s, {}));
        QCOMPARE(text.first(50).trimmed(), u"SENDSMALLMESSAGE"_s);
        QCOMPARE(text.sliced(50, 150), sendTo.left(50).leftJustified(150));
        QCOMPARE(text.sliced(200), u"{{{回来了 }}} bye}}}"_s);
    }
}

void tst_RecordWriter::textMayHoldRunningNumbersAndAnyByte_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("plain") << u"hello 中"_s << "hello \xD6\xD0"_ba;
    QTest::newRow("numbers") << u"{n}-{n:2}-555{n:4}"_s << "7-07-5550007"_ba;
    QTest::newRow("no numbers of ours") << u"{no}{n:}{n"_s << "{no}{n:}{n"_ba;
    QTest::newRow("line breaks") << u"a\\r\\nb\\t\\\\"_s << "a\r\nb\t\\"_ba;
    QTest::newRow("bytes") << u"\\x00\\xffz"_s << QByteArray("\0\xffz", 3);
    QTest::newRow("unknown escapes") << u"C:\\dir\\xZZ\\"_s << "C:\\dir\\xZZ\\"_ba;
}

void tst_RecordWriter::textMayHoldRunningNumbersAndAnyByte()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    sim::DatagramTemplate wanted;
    wanted.kind = sim::DatagramTemplate::Kind::Text;
    wanted.text = text;
    wanted.codePage = codePage(u"936"_s);
    QCOMPARE(sim::makeDatagram(wanted, 7, {}), bytes);
}

QTEST_GUILESS_MAIN(tst_RecordWriter)
#include "tst_RecordWriter.moc"
