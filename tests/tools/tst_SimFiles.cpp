#include "Answers.h"
#include "DatagramSeries.h"
#include "Options.h"
#include "Replay.h"

#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What the simulator reads: its command line, scene files, run logs and captures.
class tst_SimFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrongUseIsToldInWords_data();
    void wrongUseIsToldInWords();
    void marksAndListenNeedNoValue();
    void sceneTimesAreAbsoluteOrRelative();
    void aRunLogGivesBackTheDatagramsOnce();
    void aCaptureIsSentByteForByte();
    void aReplayIsWrittenInTheChosenCodePage();
    void datagramsAreDueByRateAndBurst();
    void answersAreReadable_data();
    void answersAreReadable();
};

namespace {

QStringList words(const QString &line)
{
    return (u"calldesk-sim "_s + line).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

void tst_SimFiles::wrongUseIsToldInWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    QTest::newRow("nothing") << u""_s << u"nothing to send"_s;
    QTest::newRow("unknown option") << u"--nummer 5"_s << u"nummer"_s;
    QTest::newRow("stray word") << u"--number 5 6"_s << u"\"6\""_s;
    QTest::newRow("port") << u"--shutdown --port 70000"_s << u"--port takes a number from 1 to 65535"_s;
    QTest::newRow("count") << u"--shutdown --count 2.5"_s << u"--count takes a whole number"_s;
    QTest::newRow("rate") << u"--shutdown --rate nan"_s << u"--rate takes a number"_s;
    QTest::newRow("kind") << u"--kind sms"_s << u"call, cid or detail"_s;
    QTest::newRow("code page") << u"--number 5 --code-page 12"_s << u"--code-page"_s;
    QTest::newRow("two datagrams") << u"--number 5 --message hi"_s << u"cannot be several"_s;
    QTest::newRow("two sources") << u"--number 5 --replay x"_s << u"exclude"_s;
    QTest::newRow("own address") << u"--number 5 --from here"_s << u"--from takes an address"_s;
    QTest::newRow("scene: time") << u"# c\nsoon --shutdown"_s << u"line 2: \"soon\" is no time"_s;
    QTest::newRow("scene: back in time")
        << u"#\n5 --shutdown\n4 --shutdown"_s << u"line 3: the time goes back"_s;
    QTest::newRow("scene: no datagram") << u"#\n1 --say hello"_s << u"line 2: this step sends nothing"_s;
    QTest::newRow("scene: run option") << u"#\n1 --shutdown --rate 5"_s << u"line 2: "_s;
}

void tst_SimFiles::wrongUseIsToldInWords()
{
    QFETCH(QString, text);
    QFETCH(QString, told);
    try {
        if (text.startsWith(u'#')) {
            sim::parseScene(text, {});
        } else {
            sim::parseOptions(words(text));
        }
        QFAIL("it was accepted");
    } catch (const sim::UsageError &error) {
        QVERIFY2(QString::fromUtf8(error.what()).contains(told), error.what());
    }
}

void tst_SimFiles::marksAndListenNeedNoValue()
{
    const sim::Options options = sim::parseOptions(words(u"--vip --black-list N --listen --burst 50"_s));
    QCOMPARE(options.datagram.fields.vip, u"Y"_s);
    QCOMPARE(options.datagram.fields.blackList, u"N"_s);
    QCOMPARE(options.listenPort, quint16(1971));
    QCOMPARE(options.count, 50);
}

void tst_SimFiles::sceneTimesAreAbsoluteOrRelative()
{
    const sim::SceneSeries scene(
        sim::parseScene(u"# a comment\r\n1.5 --number 555{n} --say \"A call\"\r\n"
                        "\r\n+2 --message \"Lunch is here\" --to Ada\r\n4 --shutdown"_s,
                        {}));
    QCOMPARE(scene.count(), 3);
    QCOMPARE(scene.due(0), 1'500'000'000);
    QCOMPARE(scene.due(1), 3'500'000'000);
    QCOMPARE(scene.due(2), 4'000'000'000);
    QCOMPARE(scene.say(0), u"A call"_s);
    QCOMPARE(scene.datagram(0, {}).mid(77, 30).trimmed(), "5551"_ba);
    QVERIFY(scene.datagram(1, {}).endsWith("{{{Lunch is here}}}"));
}

void tst_SimFiles::aRunLogGivesBackTheDatagramsOnce()
{
    const support::TestDesk desk;
    core::RunLog log(desk.paths, desk.clock, desk.values);
    const QString call = u"<CRMV1  first call  "_s; // the blanks at its end belong to it
    const QString status = QString::fromUtf8(sim::commandRecord(u"CHANNELSTATUS", u"idle", {}));
    const QStringList entries = {u"IP State 4"_s,
                                 call,
                                 call,
                                 call,
                                 call, // the same call came twice
                                 u"<CID       5550100"_s,
                                 u"<CRMV1 a\r\nb"_s,
                                 u"!winsock1 DataArrival 5 text"_s, // a call that was not handled
                                 u"SHUTDOWNALL"_s,
                                 status,
                                 status,
                                 u"garbage"_s};
    for (const QString &entry : entries) {
        log.WriteRunLog(entry);
    }
    const sim::Replay replay =
        sim::readReplay("torn first line\r\n" + desk.fileBytes(desk.paths.RunLogFile), {});
    const QList<QByteArray> expected = {call.toUtf8(), call.toUtf8(), "<CID       5550100", "<CRMV1 a\r\nb",
                                        status.toUtf8()};
    QCOMPARE(replay.datagrams, expected);
    QCOMPARE(replay.shutDowns, 1);
    QCOMPARE(replay.leftOut, 7);
}

void tst_SimFiles::aCaptureIsSentByteForByte()
{
    const QList<QByteArray> sent = {"<CRMV1 \xD6\xD0\xCE\xC4 ", "line\r\nbreak", "SHUTDOWNALL"};
    QByteArray file;
    for (const QByteArray &datagram : sent) {
        file += sim::captureLine(datagram);
    }
    QCOMPARE(sim::readReplay(file, {}).datagrams, sent);
    QCOMPARE(sim::readReplay(file.replace("\n", "\r\n\r\n"), {}).datagrams, sent);
}

void tst_SimFiles::aReplayIsWrittenInTheChosenCodePage()
{
    const QByteArray log = "<2026-11-21 09:30:15>  <CRMV1 中文\r\n";
    QCOMPARE(sim::readReplay(log, sim::CodePageChoice(936)).datagrams,
             QList<QByteArray>{"<CRMV1 \xD6\xD0\xCE\xC4"});
}

void tst_SimFiles::datagramsAreDueByRateAndBurst()
{
    QCOMPARE((sim::Pace{0, 1}).dueNanoseconds(1000), 0);
    QCOMPARE((sim::Pace{20000, 1}).dueNanoseconds(1000), 50'000'000);
    QCOMPARE((sim::Pace{100, 300}).dueNanoseconds(1000), 9'000'000'000);
    QCOMPARE((sim::Pace{0.5, 1}).dueNanoseconds(1000), 2'000'000'000'000);
}

void tst_SimFiles::answersAreReadable_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("command") << "REFRESHCUSTOMERLIST"_ba << u"REFRESHCUSTOMERLIST"_s;
    QTest::newRow("message") << sim::messageRecord(u"Ada", u"Back at 3", {})
                             << u"SENDSMALLMESSAGE to Ada: Back at 3"_s;
    QTest::newRow("empty message") << sim::messageRecord(u"ALL", u"", {}) << u"SENDSMALLMESSAGE to ALL: "_s;
    QTest::newRow("cut message") << "SENDSMALLMESSAGE  x"_ba << u"SENDSMALLMESSAGE  x"_s;
    QTest::newRow("terminal control") << "a\x1B[2J\r\nb"_ba << u"a\u241B[2J\u240D\u240Ab"_s;
}

void tst_SimFiles::answersAreReadable()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, shown);
    QCOMPARE(sim::describeAnswer(bytes, {}), shown);
}

QTEST_GUILESS_MAIN(tst_SimFiles)
#include "tst_SimFiles.moc"
