#include "core/RunLog.h"
#include "support/TestDesk.h"

/// What the run log file and its on-screen copy hold, and that a stranger's text cannot forge an entry.
class tst_RunLog : public QObject
{
    Q_OBJECT

    struct TextBox : core::RunInfoBox
    {
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

private Q_SLOTS:
    void fileAndBoxAreErasedOnceTheyAreTooLong()
    {
        for (const auto &[file, box, mainWindow, fileAfter, boxAfter] :
             {std::tuple(20000 - 30, 20000, true, 20000, 20030),
              {20001 - 30, 7, true, 57, 30},
              {100, 20001, true, 130, 30},
              {400000, 7, false, 400030, 7}}) {
            Desk desk;
            desk.values.MainWindowReady = mainWindow;
            desk.box.text.fill(u'#', box);
            desk.writeFile(desk.paths.RunLogFile, QByteArray(file, '#'));
            desk.log.WriteRunLog(u"ring!"_s); // 30 bytes with its stamp
            const QByteArray left = desk.fileBytes(desk.paths.RunLogFile);
            QCOMPARE(left.size(), fileAfter);
            QVERIFY(
                left.endsWith(fileAfter == 57 ? ">  Run.log is erased automatically!\r\n" : ">  ring!\r\n"));
            QCOMPARE(desk.box.text.size(), boxAfter);
        }
    }

    void anEntryIsOneStampedLineWhateverAStrangerWrote()
    {
        for (const QChar lineBreak : u"\n\v\f\r\u0085\u2028\u2029"_s) {
            Desk desk;
            desk.log.WriteRunLog(u"ring 张"_s + lineBreak + u"<2026-11-21 09:00:00>  forged"_s);
            desk.clock.time = desk.clock.time.addSecs(43200);
            desk.log.WriteRunLog({});
            for (QString text : {QString::fromUtf8(desk.fileBytes(desk.paths.RunLogFile)), desk.box.text}) {
                QVERIFY(text.startsWith(u"<2026-11-21 09:30:15>  ring 张"_s));
                QVERIFY(text.endsWith("<2026-11-21 09:00:00>  forged\r\n<2026-11-21 21:30:15>  \r\n"_L1));
                QVERIFY(!text.remove(u"\r\n"_s).contains(lineBreak));
            }
        }
    }

    void aMessageThatIsRepeatedIsAnEntryOfItsOwn()
    {
        Desk desk;
        desk.writeFile(desk.paths.RunLogFile, QByteArray(20000, '#')); // is erased behind the first entry
        desk.log.WriteRunLog(u"ring"_s);
        desk.log.WriteRunLog(u"ring"_s);
        desk.clock.time = desk.clock.time.addSecs(1);
        desk.log.WriteRunLog(u"ring"_s);
        desk.log.WriteRunLog(u"rung"_s);
        const QByteArray repeated = "<2026-11-21 09:30:15>  ring\r\n";
        const QByteArray later = "<2026-11-21 09:30:16>  ring\r\n<2026-11-21 09:30:16>  rung\r\n";
        QCOMPARE(desk.fileBytes(desk.paths.RunLogFile),
                 "<2026-11-21 09:30:15>  Run.log is erased automatically!\r\n" + repeated + later);
        QCOMPARE(desk.box.text.toUtf8(), repeated + repeated + later);
    }
};

QTEST_GUILESS_MAIN(tst_RunLog)
#include "tst_RunLog.moc"
