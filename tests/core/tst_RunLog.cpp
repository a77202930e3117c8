#include "core/RunLog.h"
#include "support/TestDesk.h"

namespace {

class TextBox : public core::RunInfoBox
{
public:
    void clear() override { text.clear(); }
    qsizetype length() const override { return text.size(); }
    void append(const QString &line) override { text += line; }
    QString text;
};

struct Desk : support::TestDesk
{
    TextBox box;
    Desk()
    {
        log.setRunInfoBox(&box);
        values.MainWindowReady = true;
    }
};

} // namespace

/// What the run log file and its on-screen copy hold, and that a stranger's text cannot forge an entry.
class tst_RunLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEntryIsOneStampedLine()
    {
        Desk desk;
        desk.log.WriteRunLog(u"SysStarted 张"_s);
        desk.clock.time = desk.clock.time.addSecs(12 * 3600);
        desk.log.WriteRunLog({});
        QCOMPARE(desk.fileBytes(desk.paths.RunLogFile),
                 "<2026-11-21 09:30:15>  SysStarted \xE5\xBC\xA0\r\n<2026-11-21 21:30:15>  \r\n");
    }

    void fileAndBoxAreErasedOnceTheyAreTooLong()
    {
        const QByteArray stamp = "<2026-11-21 09:30:15>  ";
        for (const auto &[file, box, mainWindow, erased, cleared] :
             {std::tuple(20000, 20000, true, false, false),
              {20001, 7, true, true, true},
              {100, 20001, true, false, true},
              {400000, 7, false, false, false}}) {
            Desk desk;
            desk.values.MainWindowReady = mainWindow;
            desk.box.text.fill(u'#', box);
            desk.writeFile(desk.paths.RunLogFile, QByteArray(file - stamp.size() - 7, '#'));
            desk.log.WriteRunLog(u"ring!"_s);
            const QByteArray end = erased ? "Run.log is erased automatically!\r\n" : "ring!\r\n";
            const QByteArray left = desk.fileBytes(desk.paths.RunLogFile);
            QVERIFY(left.endsWith(stamp + end) && left.size() == (erased ? (stamp + end).size() : file));
            QCOMPARE(desk.box.text.size(), (cleared ? 0 : box) + (mainWindow ? 30 : 0));
        }
    }

    void aStrangersTextStaysInItsEntry()
    {
        for (const QChar lineBreak : u"\n\v\f\r\u0085\u2028\u2029"_s) {
            Desk desk;
            desk.log.WriteRunLog(u"ring"_s + lineBreak + u"<2026-11-21 09:00:00>  forged"_s);
            for (const QString &text :
                 {QString::fromUtf8(desk.fileBytes(desk.paths.RunLogFile)), desk.box.text}) {
                QVERIFY(text.endsWith("<2026-11-21 09:00:00>  forged\r\n"_L1));
                QVERIFY(!text.chopped(2).contains(lineBreak));
            }
        }
    }

    void aTrappedErrorIsLoggedAndTheFallbackReturned()
    {
        Desk desk;
        const auto fail = []() -> int { throw core::Error(53, u"no such file"_s); };
        QCOMPARE(desk.log.trap("GetArea"_L1, 7, [] { return 8; }), 8);
        QCOMPARE(desk.log.trap("GetArea"_L1, 7, fail), 7);
        QVERIFY(desk.log.trap("iniPath"_L1, [] {}));
        QVERIFY(!desk.log.trap("iniPath"_L1, [] { throw std::out_of_range("index 101"); }));
        QVERIFY(!desk.log.trapAs("winsock1 DataArrival "_L1, fail));
        QCOMPARE(desk.logMessages().join(u'|'),
                 u"!GetArea 53 no such file|!iniPath 0 index 101|winsock1 DataArrival 53 no such file"_s);
    }
};

QTEST_GUILESS_MAIN(tst_RunLog)
#include "tst_RunLog.moc"
