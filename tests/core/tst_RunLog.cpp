#include "core/RunLog.h"
#include "support/TestDesk.h"

#include <QDir>
#include <QTest>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

class TextBox : public core::RunInfoBox
{
public:
    void clear() override { text.clear(); }
    qsizetype length() const override { return text.size(); }
    void append(const QString &line) override { text += line; }
    QString text;
};

} // namespace

/// What the run log file and its on-screen copy hold, and that a stranger's text cannot forge an entry.
class tst_RunLog : public QObject
{
    Q_OBJECT

    static constexpr qsizetype entryFrame = 25; // time stamp and line end

private Q_SLOTS:
    void anEntryIsOneStampedLine()
    {
        support::TestDesk desk;
        desk.log.WriteRunLog(u"SysStarted 张"_s);
        desk.clock.time = desk.clock.time.addSecs(12 * 3600);
        desk.log.WriteRunLog({});
        QCOMPARE(desk.fileBytes(desk.paths.RunLogFile),
                 "<2026-11-21 09:30:15>  SysStarted \xE5\xBC\xA0\r\n<2026-11-21 21:30:15>  \r\n");
    }

    void theFileIsErasedOnceItIsTooLong_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("mainWindow");
        QTest::addColumn<bool>("erased");
        QTest::newRow("at the limit") << 20000 << true << false;
        QTest::newRow("beyond it") << 20001 << true << true;
        QTest::newRow("before the main window") << 400000 << false << false;
    }
    void theFileIsErasedOnceItIsTooLong()
    {
        QFETCH(int, length);
        QFETCH(bool, mainWindow);
        QFETCH(bool, erased);
        support::TestDesk desk;
        TextBox box;
        box.text = u"earlier"_s;
        desk.log.setRunInfoBox(&box);
        desk.values.MainWindowReady = mainWindow;
        desk.writeFile(desk.paths.RunLogFile, QByteArray(length - entryFrame - 5, '#'));
        desk.log.WriteRunLog(u"ring!"_s);
        const QString shown = u"<2026-11-21 09:30:15>  ring!\r\n"_s;
        if (erased) {
            QCOMPARE(desk.fileBytes(desk.paths.RunLogFile),
                     "<2026-11-21 09:30:15>  Run.log is erased automatically!\r\n");
            QCOMPARE(box.text, shown);
        } else {
            QCOMPARE(desk.fileBytes(desk.paths.RunLogFile).size(), length);
            QCOMPARE(box.text, u"earlier"_s + (mainWindow ? shown : QString()));
        }
    }

    void theBoxIsClearedOnceItIsTooLong()
    {
        support::TestDesk desk;
        TextBox box;
        desk.log.setRunInfoBox(&box);
        desk.values.MainWindowReady = true;
        box.text.fill(u'#', 20000);
        desk.log.WriteRunLog(u"kept"_s);
        QCOMPARE(box.text.size(), 20000 + entryFrame + 4);
        desk.log.WriteRunLog(u"alone"_s);
        QCOMPARE(box.text, u"<2026-11-21 09:30:15>  alone\r\n"_s);
    }

    void aStrangersTextStaysInItsEntry()
    {
        for (const QChar lineBreak : u"\n\v\f\r\u0085\u2028\u2029"_s) {
            support::TestDesk desk;
            TextBox box;
            desk.log.setRunInfoBox(&box);
            desk.values.MainWindowReady = true;
            desk.log.WriteRunLog(u"ring"_s + lineBreak + u"<2026-11-21 09:00:00>  forged"_s);
            for (const QString &text : {QString::fromUtf8(desk.fileBytes(desk.paths.RunLogFile)), box.text}) {
                QVERIFY(text.endsWith("<2026-11-21 09:00:00>  forged\r\n"_L1));
                QVERIFY(!text.chopped(2).contains(lineBreak));
            }
        }
    }

    void aLogThatCannotBeWrittenStopsNobody()
    {
        for (const QString &path : {u"."_s, u"/nowhere/Runlog.txt"_s, u"/dev/full"_s}) {
            support::TestDesk desk;
            TextBox box;
            desk.paths.RunLogFile = path;
            desk.log.setRunInfoBox(&box);
            desk.values.MainWindowReady = true;
            desk.log.WriteRunLog(u"ring"_s);
            QCOMPARE(box.text, QString());
        }
    }

    void aTrappedErrorIsLoggedAndTheFallbackReturned()
    {
        support::TestDesk desk;
        const auto fail = [] { throw core::Error(53, u"no such file"_s); };
        const auto overrun = [] { throw std::out_of_range("index 101"); };
        const auto eight = [&](bool failing) {
            if (failing) {
                fail();
            }
            return 8;
        };
        QCOMPARE(desk.log.trap("GetArea"_L1, 7, [&] { return eight(false); }), 8);
        QCOMPARE(desk.log.trap("GetArea"_L1, 7, [&] { return eight(true); }), 7);
        QVERIFY(desk.log.trap("iniPath"_L1, [] {}));
        QVERIFY(!desk.log.trap("iniPath"_L1, overrun));
        QVERIFY(!desk.log.trapAs("winsock1 DataArrival "_L1, fail));
        QCOMPARE(desk.logMessages(), QStringList({u"!GetArea 53 no such file"_s, u"!iniPath 0 index 101"_s,
                                                  u"winsock1 DataArrival 53 no such file"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_RunLog)
#include "tst_RunLog.moc"
