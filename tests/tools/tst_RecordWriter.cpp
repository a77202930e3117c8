#include "RecordWriter.h"

#include "reception/Records.h"
#include "support/Table.h"

using namespace Qt::StringLiterals;

/// The record layout: by byte offset where a column is a byte, and as the program reads it back everywhere.
class tst_RecordWriter : public QObject
{
    Q_OBJECT

    static sim::CallFields sampleCall(const QString &line, const QString &name)
    {
        return {u"007"_s,      u"2026-11-21 09:30:15"_s,
                line,          u"2125550199"_s,
                name,          u"SPB12"_s,
                u"10.1.2.3"_s, u"Y"_s,
                u"G"_s,        u"2026-11-20 10:42"_s,
                u"201"_s,      u"5035550106"_s,
                u"00123"_s,    {}};
    }

private Q_SLOTS:
    void everyFieldStandsInItsByteColumns()
    {
        const sim::CodePageChoice gbk(936);
        const QString line(28, u'x'); // both fields are full
        const QString name(15, QChar(0x4E2D));
        const auto field = [](const char *text, qsizetype width) {
            return QByteArray(text).leftJustified(width);
        };
        QCOMPARE(sim::callRecord(sampleCall(line, name), gbk),
                 field("<CRMV1", 22) + field("007", 8) + "2026-11-21 09:30:15" + gbk.encode(line) +
                     field("2125550199", 30) + "   > " + gbk.encode(name) + ' ' + field("SPB12", 10) +
                     field("10.1.2.3", 30) + field("Y", 10) + field("G", 10) + "2026-11-20 10:42" +
                     field("201", 8) + field("5035550106", 15) + "{RAWCID:[00123]}{DETAILDES:[]}");
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
        row("emoji in UTF-8", 0, 1252, u"☎😀"_s);
        row("simplified Chinese", 936, 936, u"总机前台"_s);
        row("Japanese", 932, 932, u"受付カウンター"_s);
    }
    void theProgramReadsEveryFieldBack()
    {
        QFETCH(int, page);
        QFETCH(int, receiver);
        QFETCH(QString, text);
        const core::CodePage decoder(receiver);
        const QByteArray bytes = sim::callRecord(
            sampleCall(text, text), page == 0 ? sim::CodePageChoice() : sim::CodePageChoice(page));
        const core::CallRecord record =
            reception::parseCallRecord({decoder.decode(bytes), decoder.columnRule(bytes)});
        QCOMPARE(QStringList({record.LineNo, record.SimpleDes, record.CallerID, record.SnText,
                              record.SenderIp, record.IfVIP, record.RawCid, record.Tail.right(15).trimmed()}),
                 QStringList({text, text, u"2125550199"_s, u"12"_s, u"10.1.2.3"_s, u"G"_s, u"00123"_s,
                              u"5035550106"_s}));
    }

    void aFieldIsCutBeforeHalfACharacter()
    {
        const QString middle(15, QChar(0x4E2D));
        const QString faces = u"😀"_s.repeated(15);
        for (const auto &[page, line, kept] :
             {std::tuple(u"936"_s, u'a' + middle, u'a' + middle.left(13) + u' '),
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
