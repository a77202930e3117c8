#include "RecordWriter.h"
#include "core/CodePage.h"
#include "reception/Records.h"

#include <QMap>
#include <QTest>

using namespace Qt::StringLiterals;
using reception::DatagramKind;

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

reception::DatagramText decoded(const QByteArray &bytes, int number = 1252)
{
    const core::CodePage codePage(number);
    return {codePage.decode(bytes), codePage.columnRule(bytes)};
}

QStringList fieldsOf(const core::CallRecord &record)
{
    return {record.CallerID,  record.IncomingTime.trimmed(),
            record.Channel,   record.LineNo,
            record.SimpleDes, record.DetailDes,
            record.SnText,    record.Source,
            record.IfVIP,     record.IfInBlackList,
            record.RawCid,    record.SenderIp};
}

} // namespace

/// What a datagram says, whoever cut, bent or forged it.
class tst_Records : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordIsReadFieldByField_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("codePage");
        QTest::addColumn<QStringList>("fields");
        const auto full = [](const QString &line) {
            return QStringList{
                u"02087654321"_s, u"2026-11-21 09:30:15"_s, u"012"_s, line,   u"Ada"_s, u"one [two"_s,
                u"7"_s,           u"PHONEBOOK"_s,           u"Y"_s,   u"N"_s, u"123"_s, u"10.1.2.3"_s};
        };
        QTest::newRow("as units send it")
            << unitRecord() << 1252
            << QStringList{
                   u"5550199"_s, u"2009-08-08 12:51:33"_s, u"007"_s, u"5550101"_s, {}, {}, {}, {}, {}, {}, {},
                   u"10.1.2.3"_s};
        QTest::newRow("Chinese line, middle dot")
            << fullRecord(936, u"艾山·买提"_s) << 936 << full(u"艾山·买提"_s);
        QTest::newRow("Japanese line, half-width katakana")
            << fullRecord(932, u"ｴｲｷﾞｮｳ営業"_s) << 932 << full(u"ｴｲｷﾞｮｳ営業"_s);
        QByteArray half = fullRecord(936, u"x"_s);
        half.replace(49 + 27, 1, "\xCF");
        QTest::newRow("half a character") << half << 936 << full(u"x"_s + QString(26, u' ') + u'?');
    }
    void aRecordIsReadFieldByField()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, codePage);
        QFETCH(QStringList, fields);
        const reception::DatagramText datagram = decoded(bytes, codePage);
        QCOMPARE(reception::kindOf(datagram.text), DatagramKind::CallerId);
        QCOMPARE(fieldsOf(reception::parseCallRecord(datagram)), fields);
    }

    void theSendersMatchTellsItsDatabase()
    {
        const QMap<QString, QString> ids = {{u"SPB12"_s, u"PHONEBOOK 12 12"_s},
                                            {u" 0012"_s, u"CUSTOMER 0012 12"_s},
                                            {QString(), u"  0"_s},
                                            {u"SPB"_s, u"PHONEBOOK  0"_s},
                                            {u"spb-1 2"_s, u"CUSTOMER 12 12"_s},
                                            {u"9999999999"_s, u"CUSTOMER 9999999999 0"_s}};
        for (auto id = ids.begin(); id != ids.end(); ++id) {
            sim::CallFields fields;
            fields.match = id.key();
            const core::CallRecord record =
                reception::parseCallRecord(decoded(sim::callRecord(fields, sim::CodePageChoice(1252))));
            QCOMPARE(u"%1 %2 %3"_s.arg(record.Source, record.SnText).arg(record.SN), id.value());
        }
    }

    void aCutRecordReadsAsIfBlanksFollowed()
    {
        const QByteArray whole = fullRecord(936, u"销售一部"_s).first(203) + QByteArray(57, 'T');
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            const reception::DatagramText datagram = decoded(whole.first(length), 936);
            const core::CallRecord record = reception::parseCallRecord(datagram);
            const QByteArray padded = whole.first(length).leftJustified(whole.size());
            QCOMPARE(reception::kindOf(datagram.text) == DatagramKind::CallerId, length >= 6);
            QCOMPARE(fieldsOf(record), fieldsOf(reception::parseCallRecord(decoded(padded, 936))));
            QCOMPARE(record.Tail.size(), qBound(0, length - 203, 39));
        }
    }

    void kindsAreToldApartByTheirFirstCharacters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<DatagramKind>("kind");
        QTest::newRow("empty") << QString() << DatagramKind::Unknown;
        QTest::newRow("one character") << u"<"_s << DatagramKind::Unknown;
        QTest::newRow("short record") << u"<CID"_s << DatagramKind::ShortCid;
        QTest::newRow("detail") << u"<DETAILDES            1"_s << DatagramKind::Detail;
        QTest::newRow("detail that says more") << u"<DETAILDES 1"_s << DatagramKind::Unknown;
        QTest::newRow("message") << u"SENDSMALLMESSAGE"_s << DatagramKind::SmallMessage;
        QTest::newRow("padded") << u"SHUTDOWNALL"_s.leftJustified(50) + u"x"_s << DatagramKind::ShutDown;
        QTest::newRow("too near") << u"SHUTDOWNALL"_s.leftJustified(49) + u"x"_s << DatagramKind::Unknown;
        QTest::newRow("lower case") << u"shutdownall"_s << DatagramKind::Unknown;
        QTest::newRow("status") << u" CHANNELSTATUS"_s << DatagramKind::ChannelStatus;
        QTest::newRow("call") << u"<CRMV1"_s << DatagramKind::CallerId;
        QTest::newRow("leading blank") << u" <CRMV1"_s << DatagramKind::Unknown;
        QTest::newRow("other magic") << u"<crmv1"_s << DatagramKind::Unknown;
    }
    void kindsAreToldApartByTheirFirstCharacters()
    {
        QFETCH(QString, text);
        QTEST(reception::kindOf(text), "kind");
    }

    void aParameterEndsAtTheFirstBracket()
    {
        const QMap<QString, QString> values = {{u"{RAWCID:[123]}"_s, u"123"_s},
                                               {u"{RAWCID:[]}"_s, {}},
                                               {u"{rawcid:[123]}"_s, {}},
                                               {u"{RAWCID]:[123]}"_s, {}},
                                               {u"RAWCID:[1[2"_s, u"1[2"_s},
                                               {u"RAWCID:12"_s, {}},
                                               {u"{RAWCID:[1]}{RAWCID:[2]}"_s, u"1"_s}};
        for (auto value = values.begin(); value != values.end(); ++value) {
            QCOMPARE(reception::GetTcpCmdPara(value.key(), "RAWCID"_L1), value.value());
        }
    }
};

QTEST_GUILESS_MAIN(tst_Records)
#include "tst_Records.moc"
