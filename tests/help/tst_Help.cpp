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

    inline static const QString pages = u"Create Table Help (HelpID text(100), Help memo);"
                                        "create unique index HelpID on Help (HelpID);"
                                        "insert into Help values ('Popup_MainHelp', '<b>MAIN</b>');"
                                        "insert into Help values ('Popup_Messages', 'SHORT');"_s;

private Q_SLOTS:
    void aMissingOrDamagedFileShowsNoPageAndSaysWhy()
    {
        Desk desk;
        const auto told = [&desk] {
            desk.prompts.expect();
            desk.window.ShowHelp(u"Popup_MainHelp"_s);
            return desk.prompts.asked.last();
        };
        QCOMPARE(told(), u"Can't find Help File: "_s + desk.file);
        desk.writeFile(desk.file, "no database");
        QCOMPARE(told(), u"[HelpFileDamaged]\n"_s + desk.file);
        QVERIFY(desk.txtHelp()->placeholderText().isEmpty()); // there may well be a page for this
        QVERIFY(desk.txtHelp()->document()->isEmpty());
        QFile::remove(desk.file);
        desk.runSql(desk.file, pages);
        const support::TakenFile other(desk.file);
        QCOMPARE(told(), u"[HeldElsewhere]\n"_s + desk.file);
    }

    void oneWindowShowsThePagesByTheirTrimmedIds()
    {
        Desk desk;
        desk.runSql(desk.file, pages);
        for (const auto &[id, text] : {std::pair(u"Popup_Nothing"_s, u""_s),
                                       {u"Popup_MainHelp"_s, u"<b>MAIN</b>"_s},
                                       {u" Popup_Messages "_s, u"SHORT"_s}}) {
            desk.window.ShowHelp(id);
            QCOMPARE(desk.txtHelp()->toPlainText(), text);
        }
        auto *form = support::openForm<help::frmHelp>();
        QCOMPARE(desk.txtHelp()->size(), form->size());
        form->showMinimized();
        desk.window.ShowHelp(u"Popup_Messages"_s);
        QCOMPARE(support::openForm<help::frmHelp>(), form);
        QVERIFY(!form->isMinimized() && !form->isModal());
    }
};

QTEST_MAIN(tst_Help)
#include "tst_Help.moc"
