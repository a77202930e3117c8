#include "core/AtomicFile.h"
#include "core/TextFiles.h"
#include "core/TextUtilities.h"
#include "support/FullDisk.h"
#include "support/TestDesk.h"

/// The small procedures that every folder uses.
class tst_CoreUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStrangersTextIsShownWithoutItsTricks()
    {
        const QString mark(QChar(0x301));
        for (const auto &[received, shown] :
             {std::pair(u"李 <b>₂</b> 🙂 שלום"_s, u"李 <b>₂</b> 🙂 שלום"_s),
              {u"a\0b\x1B[2J\r\n\x7F\u0085"_s, u"a b [2J    "_s},
              {u"\u202E1\u2066\u200F\u061C2"_s, u" 1   2"_s},             // bidi
              {u"1"_s + QChar(0xDE42) + QChar(0xD83D) + u'2', u"1  2"_s}, // half a character
              {u'e' + mark.repeated(300) + u'x', u'e' + mark.repeated(8) + u'x'},
              {QString(65507, u'x'), QString(256, u'x')},
              {QString(255, u'x') + u"🙂"_s, QString(255, u'x')}}) { // cut before a pair
            QCOMPARE(core::shownText(received), shown);
        }
    }

    void aCellThatASpreadsheetWouldCalculateIsCopiedAsText()
    {
        for (const auto &[cell, copied] : {std::pair(u"=cmd|'/c calc'!A1"_s, u"'=cmd|'/c calc'!A1"_s),
                                           {u"@SUM(A1)"_s, u"'@SUM(A1)"_s},
                                           {u"\t =1+1"_s, u"'  =1+1"_s},
                                           {u"+A1\r\n-2"_s, u"'+A1  -2"_s},
                                           {u"+49 30 1234"_s, u"+49 30 1234"_s},
                                           {u"-12.50"_s, u"-12.50"_s},
                                           {u"a=b"_s, u"a=b"_s},
                                           {u""_s, u""_s}}) {
            QCOMPARE(core::spreadsheetCell(cell), copied);
        }
    }

    void textFilesAreAppendedToAndReadByLines()
    {
        support::TestDesk desk;
        const QString path = desk.folder.filePath(u"a.txt"_s);
        QVERIFY(core::SaveTextFile(desk.log, path, u"张"_s));
        QVERIFY(core::SaveTextFile(desk.log, path, u"one\n\nlast"_s));
        QCOMPARE(desk.fileBytes(path), "\xE5\xBC\xA0\r\none\n\nlast\r\n");
        QCOMPARE(core::ReadTextFile(desk.log, path), u"张\r\none\r\n\r\nlast\r\n"_s);
        QCOMPARE(core::ReadTextFile(desk.log, path, 7), u"last\r\n"_s);
        const QByteArray whole = desk.fileBytes(path);
        {
            const support::FullDisk disk(rlim_t(whole.size() + 3));
            QVERIFY(!core::SaveTextFile(desk.log, path, u"does not fit"_s));
        }
        QCOMPARE(desk.fileBytes(path), whole);
    }

    void whatIsLoggedStaysInItsFolderAndWithItsUser()
    {
        support::TestDesk desk;
        const QString elsewhere = desk.folder.filePath(u"elsewhere"_s);
        const QString message = desk.paths.SmsFolder + u"/SMS2026-11.txt"_s;
        desk.writeFile(elsewhere, "mine");
        desk.writeFile(message, "old");
        QVERIFY(QFile::link(elsewhere, desk.paths.SmsFile) && QFile::link(elsewhere, desk.paths.RunLogFile));
        for (const QString &folder : {desk.paths.DataFolder, desk.paths.SmsFolder}) {
            QFile::setPermissions(folder, QFile::Permissions(0x7755));
            core::makePrivateFolder(folder);
            QCOMPARE(QFile::permissions(folder) & QFile::Permissions(0x0077), QFile::Permissions());
        }
        desk.log.WriteRunLog(u"lost"_s);
        QVERIFY(!core::SaveTextFile(desk.log, desk.paths.SmsFile, u"lost"_s));
        QCOMPARE(desk.fileBytes(elsewhere), "mine");
        QVERIFY(QFile::permissions(elsewhere).testFlag(QFile::ReadOther)); // not ours to close
        QFile::remove(desk.paths.RunLogFile);
        desk.log.WriteRunLog(u"kept"_s);
        core::saveAtomically(desk.paths.WindowsFile, "{}");
        for (const QString &file : {message, desk.paths.RunLogFile, desk.paths.WindowsFile}) {
            QCOMPARE(QFile::permissions(file) & QFile::Permissions(0x0077), QFile::Permissions());
        }
    }
};

QTEST_GUILESS_MAIN(tst_CoreUtilities)
#include "tst_CoreUtilities.moc"
