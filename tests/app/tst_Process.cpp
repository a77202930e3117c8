#include "RunningProgram.h"

namespace {

bool settingsAreValid(const QByteArray &bytes)
{
    const core::SettingsRecord record = core::SettingsRecord::fromBytes(bytes);
    const QString sender = record.LastSenderIp.text();
    return bytes.size() == core::SettingsRecord::size && bytes.first(100).count('\0') == 100 &&
           record.gridColumnNames.text() == "Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID"_L1 &&
           (sender.isEmpty() || (QHostAddress(sender).isLoopback() && record.LastSenderPort != 0)) &&
           record.LocalPort == (sender.isEmpty() ? 0 : 1972);
}

} // namespace

/// The program as its users start it, from the outside.
class tst_Process : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Every call comes from another unit, so that each one makes the program write its settings.
    void killedAtAnyMomentItStartsCleanAgain()
    {
        constexpr int kills = 100; // and more where the start takes its time
        constexpr int stepMs = 3;  // from within the start to long after it
        RunningProgram program;
        QVERIFY2(program.start(), "does another program hold UDP port 1972?");
        QCOMPARE(program.shutDown(), 0);
        QSet<QByteArray> senders;
        for (int round = 0; round < kills || senders.size() <= kills / 4; ++round) {
            QVERIFY2(program.killAfter(round * stepMs), "it did not start beside what the killed one left");
            QVERIFY2(settingsAreValid(program.settings()), program.settings().toHex(' ').constData());
            QVERIFY2(!program.log().contains(">  !"), program.log().constData());
            senders.insert(program.settings().mid(100, 50));
        }
        QVERIFY(program.start());
        program.send("of senders in quick change", 250);
        program.send("the last is saved", 251);
        QTRY_VERIFY(program.settings().mid(100, 50).startsWith("127.0.0.251 "));
        QCOMPARE(program.shutDown(), 0);
        QVERIFY(program.log().endsWith(">  The program has ended\r\n"));
        QVERIFY(!program.log().contains("too late"));
        QCOMPARE(program.allFiles().keys().filter(u".new"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_Process)
#include "tst_Process.moc"
