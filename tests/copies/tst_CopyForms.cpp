#include "CopiesDesk.h"
#include "copies/forms/CopyWindows.h"
#include "support/Row.h"
#include "support/Ui.h"

using copies::Copy;

/// The copies as the operator meets them: what he is told, and the window.
class tst_CopyForms : public QObject
{
    Q_OBJECT

    using Ui = support::Ui<copies::frmCopies>;

    struct Desk : CopiesDesk
    {
        support::TestForms forms; // its desk is of no use here
        copies::CopyKeeper keeper{{paths, log, clock, forms.texts, forms.prompts}};
        appearance::FormContext context{paths,        values,          log,         forms.texts,
                                        clock,        forms.prompts,   forms.shell, forms.navigator,
                                        forms.server, forms.services()};
        QStringList lookedInto;
        copies::CopyWindows windows{
            {context, keeper, [this](const Copy &copy) { lookedInto.append(copies::shownTime(copy)); }}};
        QSignalSpy failing{&keeper, &copies::CopyKeeper::failing};
        QSignalSpy restored{&keeper, &copies::CopyKeeper::restored};

        support::FakePrompts &prompts() { return forms.prompts; }
        void waits() const { QTRY_VERIFY(!keeper.isBusy()); }
    };

private Q_SLOTS:
    void aFailedCopyIsToldUntilOneSucceeds()
    {
        Desk desk;
        desk.writeFile(desk.copies().path(), "in the way");
        desk.keeper.start(false);
        desk.waits();
        QCOMPARE(desk.failing, (QList<QVariantList>{{true}}));
        QCOMPARE(desk.logMessages().filter(u"!CopyKeeper "_s).size(), 1);
        QFile::remove(desk.copies().path());
        desk.keeper.start(false);
        desk.waits();
        QCOMPARE(desk.failing, (QList<QVariantList>{{true}, {false}}));
        QCOMPARE(desk.folders(), QStringList{u"2026-11-21 09-30-15"_s});
    }

    void ofADamagedDatabaseTheLastSoundCopyIsOffered()
    {
        for (const auto &[name, isDamaged, isCopied, agrees] : {std::tuple("damaged", true, true, true),
                                                                {"gone", false, true, true},
                                                                {"to be left", true, true, false},
                                                                {"without a copy", true, false, true}}) {
            const support::Row row(name);
            Desk desk;
            const QString before = desk.names();
            const QString file = desk.paths.CustomerFile;
            if (isCopied) {
                for (const int day : {-3, -2, -1}) {
                    desk.copies().make(desk.clock.time.addDays(day), copies::Reason::Day);
                }
                desk.spoil(
                    desk.copies().copies().first().path(u"Customer.ccsm"_s)); // the last one is no help
            }
            isDamaged ? desk.spoil(file) : static_cast<void>(QFile::remove(file));
            const bool isRestored = isCopied && agrees;
            desk.prompts().expect(agrees, [&keeper = desk.keeper, isOffered = isCopied] {
                if (isOffered) {
                    keeper.copyNow(); // nothing that the answer would then have to wait for
                }
            });
            if (isRestored) {
                desk.prompts().expect();
            }
            desk.keeper.start(false);
            QTRY_VERIFY(desk.restored.size() == (isRestored ? 1 : 0) && !desk.keeper.isBusy());
            QVERIFY(desk.prompts().asked.first().contains(u"[DatabaseDamaged]"_s));
            QCOMPARE(desk.prompts().asked.first().contains(u"[OfferCopy]"_s), isCopied);
            if (isRestored) {
                QCOMPARE(desk.names(), before);
                QCOMPARE(desk.prompts().asked.last().contains(u"Customer.ccsm damaged"_s), isDamaged);
            }
        }
    }

    void aDatabaseThatIsSuspectedIsLookedThroughAlsoIfTheDayHasItsCopy()
    {
        Desk desk;
        desk.copies().make(desk.clock.time, copies::Reason::Day);
        desk.keeper.start(true);
        desk.waits();
        QCOMPARE(desk.folders().size(), 1);
        desk.spoil(desk.paths.PhoneBookFile);
        desk.prompts().expect(false);
        desk.keeper.start(true);
        desk.waits();
        QCOMPARE(desk.prompts().asked.size(), 1);
    }

    void theWindowCopiesLooksIntoAndRestores()
    {
        Desk desk;
        desk.windows.showCopies();
        Ui::activate();
        QVERIFY(!Ui::isEnabled("cmdLookInto") && !Ui::isEnabled("cmdRestore"));
        Ui::key("cmdCopyNow", Qt::Key_Space);
        desk.waits();
        QCOMPARE(Ui::rows(), u"2026-11-21 09:30"_s);
        QCOMPARE(Ui::rows(1), u"[CopyAsked]"_s);
        QCOMPARE(Ui::rows(3), u"3"_s);
        QCOMPARE(Ui::rows(4), u"[CopyWhole]"_s);
        support::key(Qt::Key_Return);
        QCOMPARE(desk.lookedInto, QStringList{u"2026-11-21 09:30"_s});

        desk.runSql(desk.paths.CustomerFile, u"delete from customer"_s);
        desk.prompts().expect(false);
        Ui::key("cmdRestore", Qt::Key_Space);
        QVERIFY(!desk.keeper.isBusy());
        desk.prompts().expect();
        desk.prompts().expect();
        Ui::key("cmdRestore", Qt::Key_Space);
        QTRY_COMPARE(desk.restored.size(), 1);
        QVERIFY(desk.names().startsWith(u"1|Customer 1"_s));
        QCOMPARE(desk.prompts().asked.last(), u"[DeskRestored]"_s);
        QTRY_COMPARE(Ui::rows(1), u"[CopyBeforeRestore]|[CopyAsked]"_s);

        desk.writeFile(desk.copies().copies().last().path(u"Customer.ccsm"_s), "short");
        desk.keeper.choose({}); // looks again
        QCOMPARE(Ui::rows(4), u"[CopyWhole]|[CopyNotWhole]"_s);
    }

    void theFolderOfChoiceIsRememberedWhereItCanBeWrittenTo()
    {
        Desk desk;
        desk.windows.showCopies();
        Ui::activate();
        const QString chosen = desk.folder.filePath(u"other disk"_s);
        Ui::set("txtFolder", chosen);
        Ui::press("cmdUseFolder");
        QCOMPARE(copies::CopyFolder(desk.paths).path(), chosen);
        for (const QString &refused : {u"relative"_s, desk.paths.CustomerFile, u"/proc/none"_s}) {
            desk.prompts().expect();
            Ui::set("txtFolder", refused);
            Ui::press("cmdUseFolder");
            QCOMPARE(Ui::text("txtFolder"), chosen);
        }
        Ui::set("txtFolder", u""_s);
        Ui::press("cmdUseFolder");
        QCOMPARE(copies::CopyFolder(desk.paths).path(), copies::usualFolder(desk.paths));
        QVERIFY(!QFile::exists(desk.paths.CopiesFile));
    }
};

QTEST_MAIN(tst_CopyForms)
#include "tst_CopyForms.moc"
