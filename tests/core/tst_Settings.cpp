#include "core/AtomicFile.h"
#include "core/Settings.h"
#include "support/FullDisk.h"
#include "support/TestDesk.h"

/// The 334 bytes of "Crm.cfg", and that no accident to the file takes them away.
class tst_Settings : public QObject
{
    Q_OBJECT

    static QByteArray wholeRecord()
    {
        QByteArray bytes;
        for (int byte = 0; byte < 100; ++byte) {
            bytes += char(255 - byte);
        }
        bytes += QByteArray("192.168.100.200").leftJustified(50) + QByteArray("\xB3\x07\x00\x00\x01\x00", 6);
        bytes += QByteArray("CHS").leftJustified(50) + QByteArray("\x04\x03\x02\x01\x02\x00", 6);
        bytes += QByteArray("CallerID,ID").leftJustified(60) + QByteArray("1800,1500").leftJustified(40);
        return bytes + QByteArray("1,0").leftJustified(20) + "\xFE\xFF";
    }

    struct Desk : support::TestDesk
    {
        core::Settings settings{paths, log};
        QByteArray file() const { return fileBytes(paths.SettingsFile); }
    };

private Q_SLOTS:
    void everyFieldStandsAtItsOffset()
    {
        const core::SettingsRecord record = core::SettingsRecord::fromBytes(wholeRecord());
        const QStringList texts = {record.LastSenderIp.text(), record.LanguageSetting.text(),
                                   record.gridColumnNames.text(), record.gridColumnWidths.text(),
                                   record.gridColumnVisibility.text()};
        QCOMPARE(texts.join(u'|'), u"192.168.100.200|CHS|CallerID,ID|1800,1500|1,0"_s);
        const QList<int> numbers = {record.LastSenderPort, record.PopupDetail, record.LocalPort,
                                    record.PopupAllLines, record.ListUnpoppedCalls};
        QCOMPARE(numbers, QList<int>({1971, 1, 0x01020304, 2, -2}));
    }

    void aFileOfAnyLengthBecomesOneWholeRecord()
    {
        for (const int length : {0, 333, 1000}) {
            Desk desk;
            const QByteArray file = wholeRecord().leftJustified(length, 'x', true);
            desk.writeFile(desk.paths.SettingsFile, file);
            desk.settings.Get_misc();
            QVERIFY(desk.settings.SaveMisc());
            QCOMPARE(desk.file(), file.leftJustified(334, '\0', true));
            const QString written = std::exchange(desk.paths.SettingsFile, u"/proc/self/mem"_s);
            desk.settings.Get_misc(); // cannot be read
            desk.paths.SettingsFile = written;
            QVERIFY(!desk.settings.SaveMisc());
            QCOMPARE(desk.settings.record.toBytes(), file.leftJustified(334, '\0', true));
        }
    }

    void aRefusedWriteLeavesTheOldFileAndNothingBesideIt()
    {
        Desk desk;
        desk.writeFile(desk.paths.SettingsFile, wholeRecord());
        {
            const support::FullDisk disk(300);
            QVERIFY(!desk.settings.SaveMisc());
        }
        QVERIFY(QFile::setPermissions(desk.paths.SettingsFile, QFile::ReadOwner));
        QVERIFY(!desk.settings.SaveMisc());
        QCOMPARE(desk.file(), wholeRecord());
        QCOMPARE(QDir(desk.paths.DataFolder).entryList({u"Crm.cfg*"_s}), QStringList(u"Crm.cfg"_s));
    }

    void whatStandsBesideAFileIsNeitherWrittenNorRemoved()
    {
        Desk desk;
        const QString operators = desk.folder.filePath(u"operators"_s);
        desk.writeFile(operators, "mine");
        QVERIFY(QFile::link(operators, desk.paths.SettingsFile)); // gives way to the file itself
        QVERIFY(QFile::link(operators, desk.paths.SettingsFile + u".new"_s));
        QVERIFY(desk.settings.SaveMisc());
        core::removeLeftBeside(desk.paths.SettingsFile);
        QCOMPARE(desk.fileBytes(operators), "mine");
        QCOMPARE(desk.fileBytes(desk.paths.SettingsFile + u".new"_s), "mine");
        QCOMPARE(desk.file(), desk.settings.record.toBytes());
        desk.writeFile(desk.paths.SettingsFile + u".0123abcd.new"_s, "left by a kill");
        core::removeLeftBeside(desk.paths.SettingsFile);
        QCOMPARE(QDir(desk.paths.DataFolder).entryList(QDir::Files),
                 (QStringList{u"Crm.cfg"_s, u"Crm.cfg.new"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
