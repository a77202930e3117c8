#include "help/forms/HelpWindow.h"
#include "support/TestForms.h"

/// The help pages and the window that shows them.
class tst_Help : public QObject
{
    Q_OBJECT

    struct Desk : support::TestForms
    {
        help::HelpWindow window{{context(), language}};
        QString file = QDir::toNativeSeparators(paths.StartFolder + u"/Help/HelpENG.chlp"_s);

        Desk() { QDir(paths.StartFolder).mkdir(u"Help"_s); }
        static QPlainTextEdit *txtHelp() { return support::find<help::frmHelp, QPlainTextEdit>("txtHelp"); }
    };

private Q_SLOTS:
    void aMissingOrDamagedFileShowsNoPageAndSaysWhy()
    {
        Desk desk;
        desk.prompts.expect();
        desk.window.ShowHelp(u"Popup_MainHelp"_s);
        QCOMPARE(desk.prompts.asked, QStringList{u"Can't find Help File: "_s + desk.file});
        desk.writeFile(desk.file, "no database");
        desk.prompts.expect();
        desk.window.ShowHelp(u"Popup_MainHelp"_s);
        QCOMPARE(desk.prompts.asked.last(), u"[HelpFileDamaged]\n"_s + desk.file);
        QVERIFY(desk.txtHelp()->placeholderText().isEmpty()); // there may well be a page for this
        QVERIFY(desk.txtHelp()->document()->isEmpty());
        QVERIFY(desk.logMessages().last().startsWith(u"!ReadHelp "_s));
    }

    void oneWindowShowsThePagesByTheirTrimmedIdsAndEscapeClosesIt()
    {
        Desk desk;
        desk.runSql(desk.file, u"Create Table Help (HelpID text(100), Help memo);"
                               "create unique index HelpID on Help (HelpID);"
                               "insert into Help values ('Popup_MainHelp', '<b>MAIN</b>');"
                               "insert into Help values ('Popup_Messages', 'SHORT');"_s);
        for (const auto &[id, text] : {std::pair(u"Popup_Nothing"_s, u""_s),
                                       {u" Popup_Messages "_s, u"SHORT"_s},
                                       {u"Popup_MainHelp"_s, u"<b>MAIN</b>"_s}}) {
            desk.window.ShowHelp(id);
            QCOMPARE(desk.txtHelp()->toPlainText(), text);
        }
        QCOMPARE(desk.logMessages(), QStringList());
        {
            store::Database other(desk.file);
            other.Execute(u"begin exclusive"_s);
            desk.prompts.expect();
            desk.window.ShowHelp(u"Popup_MainHelp"_s);
            QCOMPARE(desk.prompts.asked, QStringList{u"[HeldElsewhere]\n"_s + desk.file});
        }
        auto *form = support::openForm<help::frmHelp>();
        form->showMinimized();
        desk.window.ShowHelp(u"Popup_Messages"_s);
        QCOMPARE(support::openForm<help::frmHelp>(), form);
        QVERIFY(!form->isMinimized() && !form->isModal());
        QCOMPARE(desk.txtHelp()->size(), form->size());
        form->resize(500, 400);
        QTest::keyClick(desk.txtHelp(), Qt::Key_Escape);
        QTRY_COMPARE(desk.openForms.count(), 0);
        desk.window.ShowHelp(u"Popup_Messages"_s);
        QCOMPARE(support::openForm<help::frmHelp>()->size(), QSize(500, 400));
    }
};

QTEST_MAIN(tst_Help)
#include "tst_Help.moc"
