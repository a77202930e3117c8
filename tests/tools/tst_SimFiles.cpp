#include "Answers.h"
#include "DatagramSeries.h"
#include "Options.h"
#include "Replay.h"
#include "support/Table.h"
#include "support/TestDesk.h"

using namespace Qt::StringLiterals;

/// What the simulator reads: scene files, run logs and captures; when it sends, and what it shows of answers.
class tst_SimFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSceneTellsTimesAndDatagrams()
    {
        const sim::SceneSeries scene(
            sim::parseScene(u"# a comment\r\n1.5 --number 555{n} --say \"A call\" --vip --black-list N\r\n"
                            "\r\n+2 --message \"Lunch is here\" --to Ada\r\n4 --shutdown"_s,
                            {}));
        QCOMPARE(scene.count(), 3);
        QCOMPARE(QList<qint64>({scene.due(0), scene.due(1), scene.due(2)}),
                 QList<qint64>({1'500'000'000, 3'500'000'000, 4'000'000'000}));
        QCOMPARE(scene.say(0), u"A call"_s);
        QCOMPARE(scene.datagram(0, {}).mid(77, 30).trimmed(), "5551"_ba);
        QCOMPARE(scene.datagram(0, {}).mid(183).simplified(), "N Y"_ba);
        QVERIFY(scene.datagram(1, {}).endsWith("{{{Lunch is here}}}"));
    }

    void aWrongSceneNamesItsLine()
    {
        for (const auto &[scene, told] : {std::pair(u"# c\nsoon --shutdown"_s, "line 2: \"soon\" is no time"),
                                          {u"#\n5 --shutdown\n4 --shutdown"_s, "line 3: the time goes back"},
                                          {u"#\n1 --say hello"_s, "line 2: this step sends nothing"},
                                          {u"#\n1 --shutdown --rate 5"_s, "line 2: "}}) {
            try {
                sim::parseScene(scene, {});
                QFAIL("it was accepted");
            } catch (const sim::UsageError &error) {
                QVERIFY2(QByteArrayView(error.what()).contains(told), error.what());
            }
        }
    }

    void aRunLogGivesBackTheDatagramsOnce()
    {
        support::TestDesk desk;
        const QString call = u"<CRMV1  first call 中 "_s; // the blank at its end belongs to it
        const QString status = QString::fromUtf8(sim::commandRecord(u"CHANNELSTATUS", u"idle", {}));
        for (const QString &entry : {u"IP State 4"_s, call, call, call, call, // the same call came twice
                                     u"<CID       5550100"_s, u"<CRMV1 a\r\nb"_s,
                                     u"!winsock1 DataArrival 5 text"_s, // a call that was not handled
                                     u"SHUTDOWNALL"_s, status, status, u"garbage"_s}) {
            desk.log.WriteRunLog(entry);
        }
        const sim::Replay replay = sim::readReplay(
            "torn first line\r\n" + desk.fileBytes(desk.paths.RunLogFile), sim::CodePageChoice(936));
        const QByteArray gbk = "<CRMV1  first call \xD6\xD0 ";
        QCOMPARE(replay.datagrams,
                 QList<QByteArray>({gbk, gbk, "<CID       5550100", "<CRMV1 a\r\nb", status.toUtf8()}));
        QCOMPARE(replay.shutDowns, 1);
        QCOMPARE(replay.leftOut, 7);
    }

    void aCaptureIsSentByteForByte()
    {
        const QList<QByteArray> sent = {"<CRMV1 \xD6\xD0\xCE\xC4 ", "line\r\nbreak", "SHUTDOWNALL"};
        QByteArray file =
            sim::captureLine(sent.at(0)) + sim::captureLine(sent.at(1)) + sim::captureLine(sent.at(2));
        QCOMPARE(sim::readReplay(file, {}).datagrams, sent);
        QCOMPARE(sim::readReplay(file.replace("\n", "\r\n\r\n"), {}).datagrams, sent);
    }

    void datagramsAreDueByRateAndBurst()
    {
        QCOMPARE((sim::Pace{0, 1}).dueNanoseconds(1000), 0);
        QCOMPARE((sim::Pace{20000, 1}).dueNanoseconds(1000), 50'000'000);
        QCOMPARE((sim::Pace{100, 300}).dueNanoseconds(1000), 9'000'000'000);
    }

    void answersAreReadable()
    {
        QCOMPARE(sim::describeAnswer(sim::messageRecord(u"Ada", u"Back at 3", {}), {}),
                 u"SENDSMALLMESSAGE to Ada: Back at 3"_s);
        QCOMPARE(sim::describeAnswer("SENDSMALLMESSAGE  x", {}), u"SENDSMALLMESSAGE  x"_s);
        QCOMPARE(sim::describeAnswer("a\x1B[2J\r\nb", {}), u"a\u241B[2J\u240D\u240Ab"_s);
    }
};

QTEST_GUILESS_MAIN(tst_SimFiles)
#include "tst_SimFiles.moc"
