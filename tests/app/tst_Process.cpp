#include "RunningProgram.h"
#include "core/Settings.h"

#include <QHostAddress>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

/// The program as its users start it, from the outside.
class tst_Process : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY2(RunningProgram::portTrouble().isEmpty(), qPrintable(RunningProgram::portTrouble()));
    }
    void aFirstStartLeavesWholeSettingsAndFiveEndpointLines();
    void shutDownAllEndsWithStatusZeroAndItsLineLast();
    void killedAtAnyMomentItStartsCleanAgain();

private:
    static bool settingsAreValid(const QByteArray &bytes);
};

void tst_Process::aFirstStartLeavesWholeSettingsAndFiveEndpointLines()
{
    RunningProgram program;
    QVERIFY(program.start());
    const QByteArray settings = program.settings();
    QCOMPARE(settings.size(), 334);
    QCOMPARE(settings.first(212).count('\0'), 212); // nothing but the grid is set
    QCOMPARE(settings.mid(212, 120),
             QByteArray("Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID").leftJustified(60) +
                 QByteArray("500,1800,2500,2700,500,1500,1500").leftJustified(40) +
                 QByteArray(",1,1,1,1,1,").leftJustified(20));
    const QByteArray log = program.log();
    qsizetype position = 0;
    for (const char *line : {"IP State 0\r\n", "remote port 1971\r\n", "RemoteIp 0.0.0.0\r\n", "local IP ",
                             "loca port 1972\r\n"}) {
        position = log.indexOf(QByteArray(">  ") + line, position);
        QVERIFY2(position > 0, line);
    }
}

void tst_Process::shutDownAllEndsWithStatusZeroAndItsLineLast()
{
    RunningProgram program;
    QVERIFY(program.start());
    program.sendCall();
    QTRY_COMPARE(program.log().count("<CRMV1"), 2);
    QCOMPARE(program.shutDown(), 0);
    QVERIFY(program.log().endsWith(">  The program has ended\r\n"));
    QCOMPARE(program.log().count('!'), 0);
}

bool tst_Process::settingsAreValid(const QByteArray &bytes)
{
    const core::SettingsRecord record = core::SettingsRecord::fromBytes(bytes);
    const QString sender = record.LastSenderIp.text();
    return bytes.size() == core::SettingsRecord::size && bytes.first(100).count('\0') == 100 &&
           record.gridColumnNames.text() == "Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID"_L1 &&
           (sender.isEmpty() || QHostAddress(sender).isLoopback()) &&
           record.LocalPort == (sender.isEmpty() ? 0 : 1972);
}

// Every call comes from another unit, so that each one makes the program write its settings.
void tst_Process::killedAtAnyMomentItStartsCleanAgain()
{
    constexpr int kills = 100;
    constexpr int stepMs = 3; // from within the start to long after it
    RunningProgram program;
    QVERIFY(program.start());
    QCOMPARE(program.shutDown(), 0);
    QSet<QByteArray> senders;
    for (int round = 0; round < kills; ++round) {
        QVERIFY2(program.killAfter(round * stepMs), "it did not start beside what the killed one left");
        QVERIFY2(settingsAreValid(program.settings()), program.settings().toHex(' ').constData());
        QVERIFY2(!program.log().contains(">  !"), program.log().constData());
        senders.insert(program.settings().mid(100, 50));
    }
    QVERIFY2(senders.size() > kills / 4, "hardly a kill came while settings were written");
    QVERIFY(program.start());
    program.send("from a unit that was never heard", 251);
    QTRY_VERIFY(program.settings().mid(100, 50).startsWith("127.0.0.251 "));
    QCOMPARE(program.shutDown(), 0);
    QCOMPARE(program.allFiles().keys().filter(u".new"_s), QStringList());
}

QTEST_GUILESS_MAIN(tst_Process)
#include "tst_Process.moc"
