#include "RecordWriter.h"
#include "core/CodePage.h"
#include "reception/Columns.h"
#include "reception/Records.h"
#include "support/Table.h"

using namespace Qt::StringLiterals;

namespace {

/// The shape of a unit's record, laid by hand: the line begins in column 51, the number in column 81.
QByteArray unitRecord()
{
    return "<CRMV1" + QByteArray(15, ' ') + "0007     2009-08-08 12:51:33 " +
           QByteArray("5550101").leftJustified(30) + QByteArray("5550199").leftJustified(30) +
           QByteArray(">").leftJustified(43) + QByteArray("10.1.2.3").leftJustified(15);
}

QByteArray fullRecord(int codePage, const QString &line)
{
    sim::CallFields fields;
    fields.channel = u"012"_s;
    fields.time = u"2026-11-21 09:30:15"_s;
    fields.line = line;
    fields.number = u"02087654321"_s;
    fields.name = u"Ada"_s;
    fields.match = u"SPB7"_s;
    fields.ip = u"10.1.2.3"_s;
    fields.blackList = u"N"_s;
    fields.vip = u"Y"_s;
    fields.rawCid = u"123"_s;
    fields.detail = u"one [two] three"_s;
    return sim::callRecord(fields, sim::CodePageChoice(codePage));
}

core::CallRecord parsed(const QByteArray &bytes, int number)
{
    const core::CodePage codePage(number);
    return reception::parseCallRecord({codePage.decode(bytes), codePage.columnRule(bytes)});
}

QString fieldsOf(const core::CallRecord &record)
{
    return QStringList{record.CallerID,  record.IncomingTime.trimmed(),
                       record.Channel,   record.LineNo,
                       record.SimpleDes, record.DetailDes,
                       record.SnText,    record.Source,
                       record.IfVIP,     record.IfInBlackList,
                       record.RawCid,    record.SenderIp}
        .join(u'|');
}

} // namespace

/// What a datagram says, whoever cut, bent or forged it.
class tst_Records : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsAreCutByColumns_data()
    {
        const support::Table<QString, int, int, QString> row("text", "start", "width", "field");
        row("double bytes", u"中文abc"_s, 5, 2, u"ab"_s);
        row("second byte inside", u"a中b"_s, 3, 2, u"中b"_s);
        row("second byte outside", u"a中b"_s, 1, 2, u"a"_s);
        row("pair of surrogates", u"a🙂b"_s, 2, 2, u"🙂"_s);
        row("beyond the end", u"abc"_s, 3, 30, u"c"_s);
        row("behind the end", u"abc"_s, 4, 30, u""_s);
        row("less than none", u"abc"_s, 144, -141, u""_s);
    }
    void fieldsAreCutByColumns()
    {
        QFETCH(QString, text);
        QFETCH(int, start);
        QFETCH(int, width);
        QTEST(reception::MidByCols(text, start, width), "field");
        QCOMPARE(reception::ByteColumns(u"\u00FE\u00FF\u4E2D🙂"), 7);
    }

    void aRecordIsReadFieldByField()
    {
        const QString full =
            u"02087654321|2026-11-21 09:30:15|012|%1|Ada|one [two|7|PHONEBOOK|Y|N|123|10.1.2.3"_s;
        QCOMPARE(fieldsOf(parsed(unitRecord(), 1252)),
                 u"5550199|2009-08-08 12:51:33|007|5550101||||||||10.1.2.3"_s);
        QCOMPARE(fieldsOf(parsed(fullRecord(936, u"艾山·买提"_s), 936)), full.arg(u"艾山·买提"_s));
        QCOMPARE(fieldsOf(parsed(fullRecord(932, u"ｴｲｷﾞｮｳ営業"_s), 932)), full.arg(u"ｴｲｷﾞｮｳ営業"_s));
        const QByteArray half = fullRecord(936, u"x"_s).replace(49 + 27, 1, "\xCF");
        QCOMPARE(fieldsOf(parsed(half, 936)), full.arg(u"x"_s.leftJustified(27) + u'?'));
    }

    void theSendersMatchTellsItsDatabase()
    {
        for (const auto &[match, id] : {std::pair(u"SPB12"_s, u"PHONEBOOK 12 12"_s),
                                        {u" 0012"_s, u"CUSTOMER 0012 12"_s},
                                        {u""_s, u"  0"_s},
                                        {u"SPB"_s, u"PHONEBOOK  0"_s},
                                        {u"spb-1 2"_s, u"CUSTOMER 12 12"_s},
                                        {u"9999999999"_s, u"CUSTOMER 9999999999 0"_s}}) {
            sim::CallFields fields;
            fields.match = match;
            const core::CallRecord record = parsed(sim::callRecord(fields, {}), 1252);
            QCOMPARE(u"%1 %2 %3"_s.arg(record.Source, record.SnText).arg(record.SN), id);
        }
    }

    void aCutRecordReadsAsIfBlanksFollowed()
    {
        const QByteArray whole = fullRecord(936, u"销售一部"_s).first(203) + QByteArray(57, 'T');
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            const core::CallRecord record = parsed(whole.first(length), 936);
            const QByteArray padded = whole.first(length).leftJustified(whole.size());
            QCOMPARE(fieldsOf(record), fieldsOf(parsed(padded, 936)));
            QCOMPARE(record.Tail.size(), qBound(0, length - 203, 39));
        }
    }

    void aParameterEndsAtTheFirstBracket()
    {
        for (const auto &[text, value] : {std::pair(u"{RAWCID:[123]}"_s, u"123"_s),
                                          {u"{rawcid:[123]}"_s, u""_s},
                                          {u"{RAWCID]:[123]}"_s, u""_s},
                                          {u"RAWCID:[1[2"_s, u"1[2"_s},
                                          {u"RAWCID:12"_s, u""_s},
                                          {u"{RAWCID:[1]}{RAWCID:[2]}"_s, u"1"_s}}) {
            QCOMPARE(reception::GetTcpCmdPara(text, "RAWCID"_L1), value);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Records)
#include "tst_Records.moc"
