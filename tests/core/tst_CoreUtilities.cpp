#include "core/OpenForms.h"
#include "core/TextFiles.h"
#include "core/TextUtilities.h"
#include "support/Table.h"
#include "support/TestDesk.h"

using namespace Qt::StringLiterals;

/// The small procedures that every folder uses.
class tst_CoreUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersAreReadFromLooseText()
    {
        QCOMPARE(core::DigitsOnly(u"SPB-1 2a\u0663\uFF14"), u"12"_s);
        QCOMPARE(core::TrimNulls(QStringView(u"\0  10.1\0.2 \0\0", 13)), u"10.1.2"_s);
        QCOMPARE(core::leadingNumber(u" -12a"), -12);
        QCOMPARE(core::leadingNumber(u"2147483647"), 2147483647);
        QCOMPARE(core::leadingNumber(u"2147483648"), 0);
    }

    void aStrangersTextIsShownWithoutItsTricks_data()
    {
        const support::Table<QString, QString> row("received", "shown");
        row("plain, any script", u"李 <b>₂</b> 🙂 שלום"_s, u"李 <b>₂</b> 🙂 שלום"_s);
        row("control characters", u"a\0b\x1B[2J\r\n\x7F\u0085"_s, u"a b [2J    "_s);
        row("bidi", u"\u202E1\u2066\u200F\u061C2"_s, u" 1   2"_s);
        row("line breaks of other kinds", u"1\u20282\u20293\uFDD04"_s, u"1 2 3 4"_s);
        row("half a character", u"1"_s + QChar(0xDE42) + QChar(0xD83D) + u'2', u"1  2"_s);
        row("marks", u'e' + QString(300, QChar(0x301)) + u'x', u'e' + QString(8, QChar(0x301)) + u'x');
        row("long marks", u"\U0001D165"_s.repeated(99) + u'x', u"\U0001D165"_s.repeated(8) + u'x');
        row("long", QString(65507, u'x'), QString(256, u'x'));
        row("cut before a pair", QString(255, u'x') + u"🙂"_s, QString(255, u'x'));
    }
    void aStrangersTextIsShownWithoutItsTricks()
    {
        QFETCH(QString, received);
        QTEST(core::shownText(received), "shown");
    }

    void textFilesAreAppendedToAndReadByLines()
    {
        support::TestDesk desk;
        const QString path = desk.folder.filePath(u"a.txt"_s);
        QCOMPARE(core::ReadTextFile(desk.log, path), QString());
        QVERIFY(core::SaveTextFile(desk.log, path, u"张"_s));
        QVERIFY(core::SaveTextFile(desk.log, path, u"one\n\nlast"_s));
        QCOMPARE(desk.fileBytes(path), "\xE5\xBC\xA0\r\none\n\nlast\r\n");
        QCOMPARE(core::ReadTextFile(desk.log, path), u"张\r\none\r\n\r\nlast\r\n"_s);
        QCOMPARE(core::ReadTextFile(desk.log, path, 7), u"last\r\n"_s);
        QCOMPARE(desk.logMessages(), QStringList());
        QVERIFY(!core::SaveTextFile(desk.log, u"/dev/full"_s, u"text"_s));
        QVERIFY(desk.logMessages().constLast().startsWith("!SaveTextFile 28 "_L1)); // ENOSPC
        QCOMPARE(core::ReadTextFile(desk.log, desk.paths.DataFolder), QString());
        QVERIFY(desk.logMessages().constLast().startsWith("!ReadTextFile "_L1));
    }

    void openFormsAreCountedAndTheFirstHundredKept()
    {
        support::TestDesk desk;
        core::OpenForms forms(desk.log);
        QObject form;
        auto hundredth = std::make_unique<QObject>();
        for (int opened = 1; opened <= 101; ++opened) {
            forms.IncOpenedForm(opened == 100 ? hundredth.get() : &form);
        }
        QCOMPARE(forms.form(100), hundredth.get());
        hundredth.reset();
        QCOMPARE(forms.form(100), nullptr);
        QCOMPARE(forms.form(99), &form);
        QCOMPARE(forms.form(101), nullptr);
        for (int open = 101; open >= 0; --open) {
            QCOMPARE(forms.count(), open);
            forms.DecOpenedForm();
        }
        QCOMPARE(desk.logMessages(), QStringList(u"!DecOpenedForm 0 no form is open"_s));
    }

    void foldersAreToldFromFilesAndMadeOneLevelDeep()
    {
        const support::TestDesk desk;
        const QString folder = desk.folder.filePath(u"a"_s);
        QVERIFY_THROWS_EXCEPTION(core::Error, core::makeFolder(folder + u"/b"_s));
        core::makeFolder(folder);
        desk.writeFile(folder + u"/file"_s, "x");
        for (const QString &path : {folder, folder + u'/', u"C:\\"_s, folder + u"/file"_s, u"C:\\no"_s}) {
            QCOMPARE(core::FolderExists(path),
                     path.endsWith(u'e') || path.endsWith(u'o') ? u""_s : u"Good"_s);
        }
    }
};

QTEST_GUILESS_MAIN(tst_CoreUtilities)
#include "tst_CoreUtilities.moc"
