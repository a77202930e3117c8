#include "RecordWriter.h"
#include "core/CodePage.h"
#include "reception/Columns.h"
#include "reception/Records.h"
#include "support/Test.h"

/// What a datagram says, whoever cut, bent or forged it.
class tst_Records : public QObject
{
    Q_OBJECT

    /// Every field of a call, in the order in which they are declared.
    static sim::CallFields sampleCall(const QString &line)
    {
        return {u"012"_s,      u"2026-11-21 09:30:15"_s,
                line,          u"   02087654321"_s,
                line.left(15), u"SPB7"_s,
                u"10.1.2.3"_s, u"N"_s,
                u"Y"_s,        u"2026-11-20 10:42"_s,
                u"201"_s,      u"5035550106"_s,
                u"123"_s,      u"one [two] three"_s};
    }

    static core::CallRecord parsed(const QByteArray &bytes, int number)
    {
        return reception::parseCallRecord(core::CodePage(number).decode(bytes));
    }

    static QString fieldsOf(const core::CallRecord &record)
    {
        return record.CallerID + u'|' + record.IncomingTime.trimmed() + u'|' + record.Channel + u'|' +
               record.LineNo + u'|' + record.SimpleDes + u'|' + record.DetailDes + u'|' + record.SnText +
               u'|' + record.Source + u'|' + record.IfVIP + u'|' + record.IfInBlackList + u'|' +
               record.RawCid + u'|' + record.SenderIp;
    }

private Q_SLOTS:
    void fieldsAreCutByColumns()
    {
        QCOMPARE(reception::ByteColumns(u"\u00FE\u00FF\u4E2D🙂"), 7);
        QCOMPARE(reception::MidByCols(u"中文abc"_s, 5, 2), u"ab"_s);
        QCOMPARE(reception::MidByCols(u"a中b"_s, 3, 2), u"中b"_s); // from its second byte on
        QCOMPARE(reception::MidByCols(u"a中b"_s, 1, 2), u"a"_s);
        QCOMPARE(reception::MidByCols(u"a🙂b"_s, 2, 2), u"🙂"_s);
        QCOMPARE(reception::MidByCols(u"abc"_s, 4, 30), QString());
        QCOMPARE(reception::MidByCols(u"abc"_s, 144, -141), QString());
    }

    void theLastCallerIsToldWithHisPlaceAndHisPreviousCall()
    {
        core::CallRecord record;
        record.CallerID = u"5550144"_s;
        record.SimpleDes = u"Ada\n"_s;
        for (const auto &[tail, told] :
             {std::pair(u"2026-11-20 10:42201     5550106        "_s,
                        u"last call time:2026-11-20 10:42 ext:201      tel:5550106        "_s),
              {u"{RAWCID:[1234567890123456]}"_s, u"last call time: ext: tel:"_s}}) {
            record.Tail = tail;
            QCOMPARE(reception::lastCallerText(record, u"London"_s),
                     u"   5550144     Ada      London\r\n"_s + told);
        }
    }

    void theWriterLaysEveryFieldInItsByteColumns()
    {
        const sim::CodePageChoice gbk(936);
        const QString middle(28, QChar(0x4E2D)); // fills every field
        const QByteArray record = sim::callRecord(sampleCall(middle), gbk);
        const auto field = [](const char *text, qsizetype width) {
            return QByteArray(text).leftJustified(width);
        };
        QCOMPARE(record, field("<CRMV1", 22) + field("012", 8) + "2026-11-21 09:30:15" +
                             gbk.encode(middle.left(14)) + field("   02087654321", 30) + "   > " +
                             gbk.encode(middle.left(15)) + ' ' + field("SPB7", 10) + field("10.1.2.3", 30) +
                             field("N", 10) + field("Y", 10) + "2026-11-20 10:42" + field("201", 8) +
                             field("5035550106", 15) + "{RAWCID:[123]}{DETAILDES:[one [two] three]}");
    }

    void theParserReadsEveryFieldBack()
    {
        const QString chinese = u"总机（前台）"_s;
        const QString dotted = u"艾山·买提"_s;
        const QString halfWidth = u"ｴｲｷﾞｮｳ営業"_s;
        for (const auto &[page, receiver, line, read] :
             {std::tuple(u"utf-8"_s, 1252, u" 5550101"_s, u"5550101"_s),
              {u"utf-8"_s, 1252, chinese, chinese},
              {u"utf-8"_s, 1252, u"☎😀"_s, u"☎😀"_s},
              {u"936"_s, 936, dotted, dotted},
              {u"932"_s, 932, halfWidth, halfWidth},
              {u"936"_s, 936, u"3楼"_s, u"3楼"_s}, // could be UTF-8
              {u"949"_s, 949, u"천"_s, u"천"_s},
              {u"1258"_s, 1258, u"Nguyễn Thị Ánh"_s, u"Nguyễn Thị Ánh"_s},
              {u"1258"_s, 1258, u"Ha\u0300 Nô\u0323i"_s, u"Hà Nội"_s}, // as keyboards write it
              {u"936"_s, 936, u"a"_s + QString(15, u'中'), u"a"_s + QString(13, u'中')}, // no half is cut off
              {u"utf-8"_s, 1252, u"a"_s + u"😀"_s.repeated(15), u"a"_s + u"😀"_s.repeated(13)}}) {
            const sim::CallFields fields = sampleCall(line);
            const QByteArray bytes = sim::callRecord(fields, sim::CodePageChoice::named(page).value());
            QCOMPARE(fieldsOf(parsed(bytes, receiver)),
                     u"02087654321|2026-11-21 09:30:15|012|%1|%2|one [two|7|PHONEBOOK|Y|N|123|10.1.2.3"_s.arg(
                         read, core::withTonesOnLetters(fields.name.trimmed())));
            QCOMPARE(parsed(bytes, receiver).Tail.right(15).trimmed(), fields.tailTel);
        }
    }

    void theSendersMatchTellsItsDatabase()
    {
        QStringList rows;
        for (const QString &match :
             {u"SPB12"_s, u" 0012"_s, u""_s, u"SPB"_s, u"spb-1 2"_s, u"9999999999"_s}) {
            sim::CallFields fields;
            fields.match = match;
            const core::CallRecord record = parsed(sim::callRecord(fields, {}), 1252);
            rows.append(record.Source + record.SnText + u'=' + QString::number(record.SN));
        }
        QCOMPARE(rows.join(u'|'), u"PHONEBOOK12=12|CUSTOMER0012=12|=0|PHONEBOOK=0|CUSTOMER12=12|"
                                  "CUSTOMER9999999999=0"_s);
    }

    void aCutRecordReadsAsIfBlanksFollowed()
    {
        const QByteArray whole =
            sim::callRecord(sampleCall(u"销售一部"_s), sim::CodePageChoice(936)).first(203) +
            QByteArray(57, 'T');
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            const core::CallRecord record = parsed(whole.first(length), 936);
            const QByteArray padded = whole.first(length).leftJustified(whole.size());
            QCOMPARE(fieldsOf(record), fieldsOf(parsed(padded, 936)));
            QCOMPARE(record.Tail.size(), qBound(0, length - 203, 39));
        }
        const QByteArray half = QByteArray(whole).replace(76, 1, "\xCF"); // right before the number
        QCOMPARE(parsed(half, 936).CallerID, u"02087654321"_s);
    }

    void aParameterEndsAtTheFirstBracket()
    {
        QStringList values;
        for (const QString &text : {u"{RAWCID:[123]}"_s, u"{rawcid:[123]}"_s, u"{RAWCID]:[123]}"_s,
                                    u"RAWCID:[1[2"_s, u"RAWCID:12"_s, u"{RAWCID:[1]}{RAWCID:[2]}"_s}) {
            values.append(reception::GetTcpCmdPara(text, "RAWCID"_L1));
        }
        QCOMPARE(values.join(u'|'), u"123|||1[2||1"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Records)
#include "tst_Records.moc"
