#include "RecordWriter.h"

#include "reception/Records.h"
#include "support/Table.h"

using namespace Qt::StringLiterals;

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

} // namespace

/// The record layout: by byte offset where a column is a byte, and as the program reads it back everywhere.
class tst_RecordWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFieldStandsInItsByteColumns()
    {
        const sim::CodePageChoice gbk(936);
        const QString line(28, u'x'); // both fields are full
        const QString name(15, QChar(0x4E2D));
        const QByteArray record = sim::callRecord(sampleCall(line, name), gbk);
        const std::tuple<int, int, QByteArray> expected[] = {{1, 6, "<CRMV1"},
                                                             {7, 16, ""},
                                                             {23, 8, "007"},
                                                             {31, 19, "2026-11-21 09:30:15"},
                                                             {50, 28, gbk.encode(line)},
                                                             {78, 30, "2125550199"},
                                                             {108, 5, "   > "},
                                                             {113, 30, gbk.encode(name)},
                                                             {143, 1, ""},
                                                             {144, 10, "SPB12"},
                                                             {154, 30, "10.1.2.3"},
                                                             {184, 10, "Y"},
                                                             {194, 10, "G"},
                                                             {204, 16, "2026-11-20 10:42"},
                                                             {220, 8, "201"},
                                                             {228, 15, "5035550106"}};
        for (const auto &[first, width, text] : expected) {
            QCOMPARE(record.mid(first - 1, width), text.leftJustified(width));
        }
        QCOMPARE(record.mid(242), "{RAWCID:[00123]}{DETAILDES:[]}"_ba);
        sim::CallFields bare;
        QCOMPARE(sim::callRecord(bare, {}).size(), 203);
        bare.detail = u"Owner"_s;
        QCOMPARE(sim::callRecord(bare, {}).mid(203), "{RAWCID:[]}{DETAILDES:[Owner]}"_ba);
    }

    void theProgramReadsEveryFieldBack_data()
    {
        const support::Table<int, int, QString> row("page", "receiver", "text"); // page 0: UTF-8
        row("Chinese in UTF-8", 0, 1252, u"总机（前台）"_s);
        row("Chinese in UTF-8, to a Chinese desk", 0, 936, u"总机（前台）"_s);
        row("Polish in UTF-8", 0, 1250, u"Zażółć gęślą"_s);
        row("emoji in UTF-8", 0, 1252, u"☎😀"_s);
        row("simplified Chinese", 936, 936, u"总机前台"_s);
        row("Japanese", 932, 932, u"受付カウンター"_s);
        row("Korean", 949, 949, u"안내 데스크"_s);
        row("Arabic", 1256, 1256, u"مكتب الاستقبال"_s);
    }
    void theProgramReadsEveryFieldBack()
    {
        QFETCH(int, page);
        QFETCH(int, receiver);
        QFETCH(QString, text);
        const sim::CallFields fields = sampleCall(text, text);
        const core::CodePage decoder(receiver);
        const QByteArray bytes =
            sim::callRecord(fields, page == 0 ? sim::CodePageChoice() : sim::CodePageChoice(page));
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

    void aFieldIsCutBeforeHalfACharacter()
    {
        const QString middle(15, QChar(0x4E2D));
        const QString faces = u"😀"_s.repeated(15);
        for (const auto &[page, line, kept] :
             {std::tuple(u"936"_s, middle, middle.left(14)),
              {u"936"_s, u'a' + middle, u'a' + middle.left(13) + u' '},
              {u"utf-8"_s, u'a' + faces, u'a' + faces.left(26) + u' '},
              {u"1250"_s, QString(40, QChar(0x17B)), QString(28, QChar(0x17B))}}) {
            const sim::CodePageChoice choice = sim::CodePageChoice::named(page).value();
            const QByteArray expected = choice.encode(kept) + "2125550199 ";
            QCOMPARE(sim::callRecord(sampleCall(line, QString()), choice).mid(49, expected.size()), expected);
        }
    }
};

QTEST_GUILESS_MAIN(tst_RecordWriter)
#include "tst_RecordWriter.moc"
