#include "core/Settings.h"
#include "support/TestDesk.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

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

private Q_SLOTS:
    void everyFieldStandsAtItsOffset()
    {
        support::TestDesk desk;
        desk.writeFile(desk.paths.SettingsFile, wholeRecord());
        core::Settings settings(desk.paths, desk.log);
        settings.Get_misc();
        const core::SettingsRecord &record = settings.record;
        QCOMPARE(record.LastSenderIp.text(), u"192.168.100.200"_s);
        QCOMPARE(record.LastSenderPort, 1971);
        QCOMPARE(record.PopupDetail, 1);
        QCOMPARE(record.LanguageSetting.text(), u"CHS"_s);
        QCOMPARE(record.LocalPort, 0x01020304);
        QCOMPARE(record.PopupAllLines, 2);
        QCOMPARE(record.gridColumnNames.text(), u"CallerID,ID"_s);
        QCOMPARE(record.gridColumnWidths.text(), u"1800,1500"_s);
        QCOMPARE(record.gridColumnVisibility.text(), u"1,0"_s);
        QCOMPARE(record.ListUnpoppedCalls, -2);
        desk.writeFile(desk.paths.SettingsFile, {});
        QVERIFY(settings.SaveMisc());
        QCOMPARE(desk.fileBytes(desk.paths.SettingsFile), wholeRecord());
    }

    void aFileOfAnyLengthBecomesOneWholeRecord_data()
    {
        QTest::addColumn<int>("length");
        for (const int length : {0, 10, 333, 334, 1000}) {
            QTest::addRow("%d bytes", length) << length;
        }
    }
    void aFileOfAnyLengthBecomesOneWholeRecord()
    {
        QFETCH(int, length);
        const QByteArray file = wholeRecord().leftJustified(length, 'x', true);
        support::TestDesk desk;
        desk.writeFile(desk.paths.SettingsFile, file);
        core::Settings settings(desk.paths, desk.log);
        settings.Get_misc();
        QVERIFY(settings.SaveMisc());
        QCOMPARE(desk.fileBytes(desk.paths.SettingsFile), file.leftJustified(334, '\0', true));
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void aFirstStartWritesTheGridDefaultsAndNothingElse()
    {
        support::TestDesk desk;
        core::Settings settings(desk.paths, desk.log);
        settings.Get_misc();
        QCOMPARE(desk.fileBytes(desk.paths.SettingsFile).size(), 0);
        QVERIFY(QFile::exists(desk.paths.SettingsFile));
        QVERIFY(settings.record.gridColumnNames.isUnset());
        settings.SetDefaulteMisc_tarn();
        const QByteArray expected =
            QByteArray(212, '\0') +
            QByteArray("Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID").leftJustified(60) +
            QByteArray("500,1800,2500,2700,500,1500,1500").leftJustified(40) +
            QByteArray(",1,1,1,1,1,").leftJustified(20) + QByteArray(2, '\0');
        QCOMPARE(desk.fileBytes(desk.paths.SettingsFile), expected);
    }

    void aFileThatCannotBeReadLeavesTheRecordAsItIs_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("a folder") << u"."_s;
        QTest::newRow("a failing disk") << u"/proc/self/mem"_s;
        QTest::newRow("no folder to make it in") << u"/nowhere/Crm.cfg"_s;
    }
    void aFileThatCannotBeReadLeavesTheRecordAsItIs()
    {
        QFETCH(QString, path);
        support::TestDesk desk;
        core::Settings settings(desk.paths, desk.log);
        settings.record = core::SettingsRecord::fromBytes(wholeRecord());
        desk.paths.SettingsFile = path;
        settings.Get_misc();
        QCOMPARE(settings.record.toBytes(), wholeRecord());
        QCOMPARE(desk.logMessages().size(), 1);
        QVERIFY(desk.logMessages().constFirst().startsWith("!Get_misc "_L1));
    }

    void aRefusedWriteLeavesTheOldFile_data()
    {
        QTest::addColumn<QString>("accident");
        QTest::newRow("read-only file") << u"read-only"_s;
        QTest::newRow("full disk") << u"full"_s;
        QTest::newRow("folder in its place") << u"folder"_s;
    }
    void aRefusedWriteLeavesTheOldFile()
    {
        QFETCH(QString, accident);
        support::TestDesk desk;
        const QString path = desk.paths.SettingsFile;
        if (accident == "folder"_L1) {
            QVERIFY(QDir().mkdir(path));
        } else {
            desk.writeFile(path, wholeRecord());
        }
        QVERIFY(accident != "full"_L1 || QFile::link(u"/dev/full"_s, path + u".new"_s));
        QVERIFY(accident != "read-only"_L1 || QFile::setPermissions(path, QFile::ReadOwner));
        const QByteArray before = desk.fileBytes(path);
        core::Settings settings(desk.paths, desk.log);
        QVERIFY(!settings.SaveMisc());
        QCOMPARE(desk.fileBytes(path), before);
        QCOMPARE(desk.logMessages().size(), 1);
        QCOMPARE(QDir(desk.paths.DataFolder).entryList({u"Crm.cfg*"_s}, QDir::AllEntries | QDir::System),
                 QStringList(u"Crm.cfg"_s));
    }
};

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
