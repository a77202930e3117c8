#include "OptionsDesk.h"
#include "core/qt/QtPrompts.h"

using Answer = core::Prompts::Answer;

/// The options: what each page shows, saves and causes.
class tst_Options : public QObject
{
    Q_OBJECT

    struct Desk : OptionsDesk
    {
        explicit Desk(int page = 0, const QString &chosenLanguage = u"kor"_s,
                      const std::optional<QString> &senders = QString())
        {
            settings.record.LocalPort = 1972;
            settings.record.LanguageSetting.setText(chosenLanguage);
            settings.record.PopupAllLines = 1;
            settings.record.ListUnpoppedCalls = -1; // as an old program has written "true"
            kept = senders;
            windows.showOptions();
            Options::activate();
            turnTo(page);
        }
        static void turnTo(int page) { Options::find<QTabWidget>("SSTab1")->setCurrentIndex(page); }
    };

private Q_SLOTS:
    void thePopUpPageShowsTheFlagsAndSaysWhetherTheyAreSaved()
    {
        const Desk desk;
        for (const auto &[name, checked] :
             {std::pair("ChkPopAll", true), {"ChkPopDetail", false}, {"chkShowInfo", true}}) {
            QCOMPARE(Options::find<QCheckBox>(name)->isChecked(), checked);
            Options::key(name, Qt::Key_Space);
        }
        Options::press("Command2");
        QCOMPARE(Options::text("lblPopUpSaved"), u"[OptionsSaved]"_s);
        const core::SettingsRecord saved = desk.saved();
        QCOMPARE(std::tuple(saved.PopupAllLines, saved.PopupDetail, saved.ListUnpoppedCalls),
                 std::tuple(2, 1, 0));
        QCOMPARE(desk.caused, QStringList());
    }

    void whatCouldNotBeSavedIsToldOnceAndNotSavedByAnyoneLater()
    {
        Desk desk;
        const QByteArray before = desk.settings.record.toBytes();
        desk.breakSettings();
        Options::key("ChkPopDetail", Qt::Key_Space);
        desk.prompts.expect();
        QTest::keyClick(Options::form(), Qt::Key_Return); // the page's own button
        QVERIFY(Options::text("lblPopUpSaved").isEmpty());
        Desk::turnTo(1);
        Options::set("CmbLanguage", u"FRN"_s);
        Options::set("txtPort", u"12"_s);
        desk.prompts.expect();
        Options::press("Command3");
        QCOMPARE(desk.prompts.asked, QStringList(2, u"[OptionsNotSaved]"_s));
        QCOMPARE(desk.logMessages().size(), 2); // one try each
        QCOMPARE(desk.settings.record.toBytes(), before);
        QCOMPARE(Options::text("CmbLanguage"), u"FRN"_s);
    }

    void oneSaveTellsAllInOneBox()
    {
        const QString others = u"[OtherOptionsSaved]"_s;
        const QString restart = u"[PlsRestartSys]"_s;
        for (const auto &[port, senders, keepsSenders, told] :
             {std::tuple(u"99999"_s, u"!"_s, true,
                         QStringList{u"[PortOutOfRange]"_s, u"[refusal]"_s, others, restart}),
              {u"1972"_s, u"10.1.2.3"_s, false, {u"[SendersNotSaved]"_s, others, restart}},
              {u"2000"_s, u"10.1.2.3"_s, true, {u"[in use]"_s, restart}}}) {
            Desk desk(1);
            desk.portTrouble = u"[in use]"_s;
            desk.keepsSenders = keepsSenders;
            Options::set("CmbLanguage", u"FRN"_s);
            Options::set("txtPort", port);
            Options::set("txtSenders", senders);
            desk.prompts.expect();
            Options::press("Command3");
            QCOMPARE(desk.prompts.asked, QStringList{told.join(u"\n\n"_s)});
            QCOMPARE(desk.saved().LanguageSetting.text(), u"FRN"_s);
            QCOMPARE(Options::text("txtSenders"), senders);
            QCOMPARE(Options::text("lblSystemSaved").isEmpty(), told.contains(others));
        }
    }

    void boxesOfOneActStandBeforeTheSameWindow()
    {
        QMainWindow main;
        QDialog dialog;
        main.show();
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QList<QObject *> behind;
        QTimer answering;
        connect(&answering, &QTimer::timeout, this, [&behind] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                behind.append(box->parent());
                box->accept();
            }
        });
        answering.start(0);
        core::QtPrompts prompts;
        prompts.tell(u"first"_s, {}, nullptr);
        QApplication::setActiveWindow(nullptr); // a window manager takes its time
        prompts.tell(u"second"_s, {}, nullptr);
        QCOMPARE(behind, QList<QObject *>(2, &dialog));
    }

    void aNewLanguageAsksForARestart()
    {
        for (const auto &[before, chosen, asked] :
             {std::tuple(u""_s, u"AUTO"_s, u""_s), // "AUTO" is what nothing stands for
              {u"chs"_s, u"CHS"_s, u""_s},
              {u"DEU"_s, u"AUTO"_s, u"[PlsRestartSys]"_s},
              {u"ENG"_s, u"POL"_s, u"[PlsRestartSys]"_s}}) {
            Desk desk(1, before);
            if (!asked.isEmpty()) {
                desk.prompts.expect();
            }
            Options::set("CmbLanguage", chosen);
            Options::press("Command3");
            QCOMPARE(desk.prompts.asked.join(u' '), asked);
            QCOMPARE(desk.saved().LanguageSetting.text(), chosen);
        }
    }

    void aPortIsTheNumberThatItsTextBeginsWith()
    {
        const QString none = u"[PortOutOfRange]"_s;
        for (const auto &[typed, port, told] : {std::tuple(u" 1972 x"_s, 1972, u""_s),
                                                {u"abc"_s, 0, u"[PortIsStandard]"_s},
                                                {u"-5"_s, 1972, none},
                                                {u"65535"_s, 65535, u""_s},
                                                {u"65536"_s, 1972, none},
                                                {u"99999999999999999999"_s, 1972, none}}) {
            Desk desk(1);
            if (!told.isEmpty()) {
                desk.prompts.expect();
            }
            Options::set("txtPort", typed);
            Options::press("Command3");
            QCOMPARE(desk.prompts.asked.value(0).section(u'\n', 0, 0), told);
            QCOMPARE(desk.caused, QStringList(port == 1972 ? 0 : 1, u"iniUDP"_s));
            QCOMPARE(desk.saved().LocalPort, port);
            QCOMPARE(Options::text("txtPort"), QString::number(port));
        }
    }

    void theListOfSendersIsSavedOnceAndItsTroubleShown()
    {
        const Desk desk(1);
        Options::set("txtSenders", u"10.1.2.3"_s);
        Options::press("Command3");
        Options::press("Command3");
        QCOMPARE(desk.caused, QStringList{u"saveSenders 10.1.2.3"_s});
        QCOMPARE(Options::text("lblSystemSaved"), u"[OptionsSaved]"_s);
        Options::form()->close();
        for (const auto &[kept, shown] : {std::pair(std::optional(u"!"_s), u"[trouble]"_s),
                                          {std::optional<QString>(), u"[unreadable]"_s}}) {
            const Desk troubled(1, {}, kept);
            QCOMPARE(Options::text("lblSendersTrouble"), shown);
            QCOMPARE(Options::isEnabled("txtSenders"), kept.has_value());
        }
    }

    void aListThatNobodyTouchedHereStaysAsSomebodyElseHasMadeIt()
    {
        for (const auto &[loaded, now] : {std::pair(QString(), u"10.1.2.3"_s),
                                          {u"10.1.2.3"_s, u"10.1.2.3\n10.1.2.4"_s},
                                          {u"10.1.2.3"_s, QString()},
                                          {u"!"_s, u"!"_s}}) {
            Desk desk(1, {}, loaded);
            desk.kept = now;
            Options::press("Command3");
            QCOMPARE(Options::text("txtSenders"), now);
            QCOMPARE(desk.caused, QStringList());
        }
    }

    void columnsMoveWithTheirSelection()
    {
        const Desk desk(1);
        auto *list = Options::find<QListWidget>("lstGridCallerIDShowOrder");
        QCOMPARE(list->item(0)->text(), u"[Channel]"_s);
        QVERIFY(list->item(6)->data(Qt::AccessibleTextRole).toString().endsWith(u"[ColumnNotShown]"_s));
        QVERIFY(!Options::isEnabled("cmdUp") && !Options::isEnabled("cmdDown"));
        support::clickCell(list, 0, 0);
        Options::press("cmdUp"); // nowhere to go
        Options::press("cmdDown");
        Options::press("cmdDown");
        support::clickCell(list, 6, 0);
        Options::press("cmdDown");
        Options::press("cmdUp");
        QCOMPARE(list->currentRow(), 5);
        Options::press("Command3");
        QCOMPARE(desk.saved().gridColumnNames.text(),
                 u"CallerID,SimpleDes,Channel,IncomingTime,SN,ID,LineNo"_s);
    }

    void buttonsOpenTheEditorAndTheHelpAndClosingRestoresTheGrid()
    {
        Desk desk(1);
        desk.prompts.expect();
        Options::press("cmdLanguageEditor");
        QCOMPARE(desk.prompts.asked, QStringList{u"file lose,"_s + desk.paths.UserLangFile});
        Options::press("Command5");
        Desk::turnTo(0);
        QTest::keyClick(Options::form(), Qt::Key_F1);
        QCOMPARE(desk.navigator.shown.join(u' '),
                 u"ShowHelp Popup_System_Options ShowHelp Popup_Options_Options"_s);
        Options::form()->close();
        QCOMPARE(desk.caused, QStringList{u"iniGridCallerID_tarn"_s});
    }

    void whatWasChangedIsNotDroppedUnasked()
    {
        Desk desk;
        Options::key("ChkPopDetail", Qt::Key_Space);
        Options::set("txtPort", u"99999"_s);
        desk.prompts.expectSave(Answer::Cancel);
        QTest::keyClick(Options::form(), Qt::Key_Escape);
        desk.prompts.expectSave(Answer::Save);
        desk.prompts.expect(); // the port is none
        QTest::keyClick(Options::form(), Qt::Key_Escape);
        QVERIFY(Options::form() != nullptr);
        QCOMPARE(desk.saved().PopupDetail, qint16(1));
        Options::press("Command1"); // nothing is left to ask about
    }
};

QTEST_MAIN(tst_Options)
#include "tst_Options.moc"
