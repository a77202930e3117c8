#include "core/OpenForms.h"
#include "core/TextFiles.h"
#include "core/TextUtilities.h"
#include "support/TestDesk.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The small procedures that every folder uses.
class tst_CoreUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void MyInFindsAValueAmongAnyNumberOfCandidates()
    {
        QVERIFY(core::MyIn(3, 1, 2, 3));
        QVERIFY(!core::MyIn(4, 1, 2, 3));
        QVERIFY(!core::MyIn(u"a"_s));
    }

    void numbersAndBlanksAreReadFromLooseText()
    {
        QCOMPARE(core::DigitsOnly(u"SPB-1 2a\u0663\uFF14"), u"12"_s);
        QCOMPARE(core::TrimNulls(QStringView(u"\0  10.1\0.2 \0\0", 13)), u"10.1.2"_s);
        QCOMPARE(core::leadingNumber(u" -12a"), -12);
        QCOMPARE(core::leadingNumber(u"2147483647"), 2147483647);
        QCOMPARE(core::leadingNumber(u"2147483648"), 0);
        QCOMPARE(core::leadingNumber(u"a12"), 0);
        QCOMPARE(core::NullToEmpty(QVariant()), QVariant(QString()));
        QCOMPARE(core::NullToZero(QVariant()), QVariant(0));
        QCOMPARE(core::NullToZero(u"7"_s), QVariant(u"7"_s));
    }

    void aStrangersTextIsShownWithoutItsTricks_data()
    {
        QTest::addColumn<QString>("received");
        QTest::addColumn<QString>("shown");
        QTest::newRow("plain, any script")
            << u"李 <b>₂</b> 🙂 שלום"_s << u"李 <b>₂</b> 🙂 שלום"_s;
        QTest::newRow("control characters") << u"a\0b\x1B[2J\r\n\x7F\u0085"_s << u"a b [2J    "_s;
        QTest::newRow("bidi") << u"\u202E1\u2066\u200F\u061C2"_s << u" 1   2"_s;
        QTest::newRow("line breaks of other kinds") << u"1\u20282\u20293\uFDD04"_s << u"1 2 3 4"_s;
        QTest::newRow("half a character") << u"1"_s + QChar(0xDE42) + QChar(0xD83D) + u'2' << u"1  2"_s;
        QTest::newRow("combining marks")
            << u'e' + QString(300, QChar(0x301)) + u'x' << u'e' + QString(8, QChar(0x301)) + u'x';
        QTest::newRow("marks beyond the first plane")
            << u'e' + u"\U0001D165"_s.repeated(99) + u'x' << u'e' + u"\U0001D165"_s.repeated(8) + u'x';
        QTest::newRow("long") << QString(65507, u'x') << QString(256, u'x');
        QTest::newRow("cut before a pair") << QString(255, u'x') + u"🙂"_s << QString(255, u'x');
    }
    void aStrangersTextIsShownWithoutItsTricks()
    {
        QFETCH(QString, received);
        QFETCH(QString, shown);
        QCOMPARE(core::shownText(received), shown);
    }

    void textFilesAreAppendedToAndReadByLines()
    {
        support::TestDesk desk;
        const QString path = desk.folder.filePath(u"a.txt"_s);
        QCOMPARE(core::ReadTextFile(desk.log, path), QString());
        QVERIFY(core::SaveTextFile(desk.log, path, u"张"_s));
        QVERIFY(core::SaveTextFile(desk.log, path, u"张"_s));
        QCOMPARE(desk.fileBytes(path), "\xE5\xBC\xA0\r\n\xE5\xBC\xA0\r\n");
        desk.writeFile(path, "one\ntwo\r\n\r\nlast");
        QCOMPARE(core::ReadTextFile(desk.log, path), u"one\r\ntwo\r\n\r\nlast\r\n"_s);
        desk.writeFile(path, {});
        QCOMPARE(core::ReadTextFile(desk.log, path), QString());
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void aTextFileThatFailsIsLoggedOnly()
    {
        support::TestDesk desk;
        QVERIFY(!core::SaveTextFile(desk.log, u"/dev/full"_s, u"text"_s));
        QCOMPARE(core::ReadTextFile(desk.log, desk.paths.DataFolder), QString());
        QCOMPARE(core::ReadTextFile(desk.log, u"/proc/self/mem"_s), QString());
        const QStringList messages = desk.logMessages();
        QCOMPARE(messages.size(), 3);
        QVERIFY(messages[0].startsWith("!SaveTextFile 28 "_L1)); // ENOSPC
        QVERIFY(messages[1].startsWith("!ReadTextFile "_L1));
        QVERIFY(messages[2].startsWith("!ReadTextFile "_L1));
    }

    void openFormsAreCountedAndTheFirstHundredKept()
    {
        support::TestDesk desk;
        core::OpenForms forms(desk.log);
        QObject form;
        for (int opened = 1; opened <= 100; ++opened) {
            forms.IncOpenedForm(&form);
        }
        {
            QObject other;
            forms.IncOpenedForm(&other);
            forms.DecOpenedForm();
            forms.DecOpenedForm();
            forms.IncOpenedForm(&other);
            QCOMPARE(forms.form(100), &other);
        }
        QCOMPARE(forms.form(100), nullptr);
        QCOMPARE(forms.form(99), &form);
        QCOMPARE(forms.form(101), nullptr);
        QCOMPARE(forms.form(0), nullptr);
        for (int open = 100; open >= 0; --open) {
            QCOMPARE(forms.count(), open);
            forms.DecOpenedForm();
        }
        QCOMPARE(forms.count(), 0);
        QCOMPARE(desk.logMessages(), QStringList(u"!DecOpenedForm 0 no form is open"_s));
    }

    void FolderExistsTellsFoldersFromFiles()
    {
        support::TestDesk desk;
        desk.writeFile(desk.paths.RunLogFile, "x");
        QCOMPARE(core::FolderExists(desk.paths.DataFolder), u"Good"_s);
        QCOMPARE(core::FolderExists(desk.paths.DataFolder + QDir::separator()), u"Good"_s);
        QCOMPARE(core::FolderExists(u"C:\\"_s), u"Good"_s);
        QCOMPARE(core::FolderExists(u"C:"_s), u"Good"_s);
        for (const QString &none :
             {desk.paths.RunLogFile, u"C:\\nowhere"_s, u"\\\\nobody\\share"_s, QString()}) {
            QCOMPARE(core::FolderExists(none), QString());
        }
    }

    void onlyOneFolderLevelIsMade()
    {
        support::TestDesk desk;
        core::makeFolder(desk.paths.PopUserDataFolder);
        core::makeFolder(desk.paths.PopUserDataFolder);
        QCOMPARE(core::FolderExists(desk.paths.PopUserDataFolder), u"Good"_s);
        QVERIFY_THROWS_EXCEPTION(core::Error, core::makeFolder(desk.folder.filePath(u"a/b"_s)));
        desk.writeFile(desk.paths.RunLogFile, "x");
        QVERIFY_THROWS_EXCEPTION(core::Error, core::makeFolder(desk.paths.RunLogFile));
    }

    void theOemMarkStandsAtByte69()
    {
        support::TestDesk desk;
        QCOMPARE(core::ReadMdrOemMark(desk.paths), QString());
        const QByteArray before(68, '#');
        const auto markOf = [&](const QByteArray &file) {
            desk.writeFile(desk.paths.OemMarkFile, file);
            return core::ReadMdrOemMark(desk.paths);
        };
        QCOMPARE(markOf(before + QByteArray("Acm\xE9 Desk \0 \0", 13)), u"Acmé Desk"_s);
        QCOMPARE(markOf(before + QByteArray(40, 'm')), QString(30, u'm'));
        QCOMPARE(markOf(before.first(40)), QString());
    }

    void theStartFolderBecomesCurrentAgain()
    {
        support::TestDesk desk;
        const QString before = QDir::currentPath();
        QDir::setCurrent(desk.paths.DataFolder);
        core::RecoverCurrentPath(desk.paths);
        QCOMPARE(QDir::currentPath(), QDir(desk.paths.StartFolder).canonicalPath());
        QDir::setCurrent(before);
    }
};

QTEST_GUILESS_MAIN(tst_CoreUtilities)
#include "tst_CoreUtilities.moc"
