#include "OptionsDesk.h"
#include "core/qt/QtPrompts.h"
#include "support/Rows.h"

/// The options: what each page shows, saves and causes.
class tst_Options : public QObject
{
    Q_OBJECT

    struct Desk : OptionsDesk<options::frmOptions>
    {
        explicit Desk(int page = 0)
        {
            settings.record.LocalPort = 1972;
            settings.record.LanguageSetting.setText(u"kor"_s);
            settings.record.PopupAllLines = 1;
            settings.record.ListUnpoppedCalls = -1; // as an old program has written "true"
            windows.showOptions();
            QVERIFY(QTest::qWaitForWindowActive(form()));
            find<QTabWidget>("SSTab1")->setCurrentIndex(page);
        }
    };

private Q_SLOTS:
    void thePopUpPageShowsTheFlagsAndSaysWhetherTheyAreSaved()
    {
        Desk desk;
        for (const auto &[name, checked] :
             {std::pair("ChkPopAll", true), {"ChkPopDetail", false}, {"chkShowInfo", true}}) {
            QCOMPARE(desk.find<QCheckBox>(name)->isChecked(), checked);
            QTest::keyClick(desk.find<QCheckBox>(name), Qt::Key_Space);
        }
        desk.press("Command2");
        QCOMPARE(desk.find<QLabel>("lblPopUpSaved")->text(), u"[OptionsSaved]"_s);
        QCOMPARE(desk.saved().PopupAllLines, qint16(2));
        QCOMPARE(desk.saved().PopupDetail, qint16(1));
        QCOMPARE(desk.saved().ListUnpoppedCalls, qint16(0));
        QCOMPARE(desk.caused, QStringList());
    }

    void whatCouldNotBeSavedIsToldOnceAndNotSavedByAnyoneLater()
    {
        Desk desk;
        const QByteArray before = desk.settings.record.toBytes();
        desk.breakSettings();
        desk.find<QCheckBox>("ChkPopDetail")->click();
        desk.prompts.expect();
        QTest::keyClick(desk.form(), Qt::Key_Return); // the page's own button
        QVERIFY(desk.find<QLabel>("lblPopUpSaved")->text().isEmpty());
        desk.find<QTabWidget>("SSTab1")->setCurrentIndex(1);
        desk.find<QComboBox>("CmbLanguage")->setCurrentText(u"FRN"_s);
        desk.find<QLineEdit>("txtPort")->setText(u"12"_s);
        desk.prompts.expect();
        desk.press("Command3");
        QCOMPARE(desk.prompts.asked, QStringList(2, u"[OptionsNotSaved]"_s));
        QCOMPARE(desk.logMessages().size(), 2); // one try each
        QCOMPARE(desk.caused, QStringList{u"iniGridCallerID_tarn"_s});
        QCOMPARE(desk.settings.record.toBytes(), before);
        QCOMPARE(desk.find<QComboBox>("CmbLanguage")->currentText(), u"FRN"_s);
    }

    void oneSaveTellsAllInOneBox()
    {
        const QString others = u"[OtherOptionsSaved]"_s;
        const QString restart = u"[PlsRestartSys]"_s;
        for (const auto &[port, senders, keepsSenders, told] :
             {std::tuple(u"99999"_s, u"!"_s, true,
                         QStringList{u"[PortOutOfRange]"_s, u"[refusal]"_s, others, restart}),
              {u"1972"_s, u"!"_s, true, {u"[refusal]"_s, others, restart}},
              {u"1972"_s, u"10.1.2.3"_s, false, {u"[SendersNotSaved]"_s, others, restart}},
              {u"2000"_s, u"10.1.2.3"_s, true, {u"[in use]"_s, restart}}}) {
            Desk desk(1);
            desk.portTrouble = u"[in use]"_s;
            desk.keepsSenders = keepsSenders;
            desk.find<QComboBox>("CmbLanguage")->setCurrentText(u"FRN"_s);
            desk.find<QLineEdit>("txtPort")->setText(port);
            desk.find<QPlainTextEdit>("txtSenders")->setPlainText(senders);
            desk.prompts.expect();
            desk.press("Command3");
            QCOMPARE(desk.prompts.asked, QStringList{told.join(u"\n\n"_s)});
            QCOMPARE(desk.saved().LanguageSetting.text(), u"FRN"_s);
            QCOMPARE(desk.find<QPlainTextEdit>("txtSenders")->toPlainText(), senders);
            QCOMPARE(desk.find<QLabel>("lblSystemSaved")->text().isEmpty(), told.contains(others));
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
        for (const auto &[before, chosen, after, asks] :
             {std::tuple(u""_s, u"AUTO"_s, u"AUTO"_s, false), // "AUTO" is what nothing stands for
              {u"chs"_s, u"CHS"_s, u"CHS"_s, false},
              {u"DEU"_s, u"AUTO"_s, u"AUTO"_s, true},
              {u"ENG"_s, u" pol "_s, u"POL"_s, true},
              {u"ENG"_s, u"../x"_s, u"AUTO"_s, true}}) {
            Desk desk;
            desk.settings.record.LanguageSetting.setText(before);
            if (asks) {
                desk.prompts.expect();
            }
            options::OptionsLogic logic(
                {desk.paths, desk.log, desk.settings, desk.texts, desk.prompts, desk});
            QVERIFY(logic.saveSystemPage({chosen, u"1972"_s, desk.gridColumnNames(), {}}).whole());
            QCOMPARE(desk.prompts.asked, asks ? QStringList{u"[PlsRestartSys]"_s} : QStringList());
            QCOMPARE(desk.saved().LanguageSetting.text(), after);
            QCOMPARE(desk.caused, QStringList());
        }
    }

    void aPortIsTheNumberThatItsTextBeginsWith()
    {
        const auto standard = u"[PortIsStandard]"_s;
        const auto none = u"[PortOutOfRange]"_s;
        for (const auto &[typed, port, told] : {std::tuple(u" 1972 x"_s, 1972, u""_s),
                                                {u"12a"_s, 12, u""_s},
                                                {u"12.9"_s, 12, u""_s},
                                                {u"abc"_s, 0, standard},
                                                {u""_s, 0, standard},
                                                {u"١٩٧٢"_s, 0, standard}, // other digits are none
                                                {u"-5"_s, 1972, none},
                                                {u"65535"_s, 65535, u""_s},
                                                {u"99999"_s, 1972, none},
                                                {u"99999999999999999999"_s, 1972, none}}) {
            Desk desk(1);
            if (!told.isEmpty()) {
                desk.prompts.expect();
            }
            auto *box = desk.find<QLineEdit>("txtPort");
            QCOMPARE(box->text(), u"1972"_s);
            box->setText(typed);
            desk.press("Command3");
            QCOMPARE(desk.prompts.asked.value(0).section(u'\n', 0, 0), told);
            QCOMPARE(desk.caused, QStringList(port == 1972 ? 0 : 1, u"iniUDP"_s));
            QCOMPARE(desk.saved().LocalPort, port);
            QCOMPARE(box->text(), QString::number(port));
        }
    }

    void theListOfSendersIsSavedWhenItCanBeReadAndKeptInItsBoxWhenNot()
    {
        Desk desk(1);
        auto *box = desk.find<QPlainTextEdit>("txtSenders");
        box->setPlainText(u"10.1.2.3\n!"_s);
        desk.prompts.expect();
        desk.press("Command3");
        QCOMPARE(desk.prompts.asked, QStringList{u"[refusal]\n\n[OtherOptionsSaved]"_s});
        QVERIFY(desk.find<QLabel>("lblSystemSaved")->text().isEmpty());
        QCOMPARE(desk.caused, QStringList());
        desk.prompts.expectSave(core::Prompts::Answer::Cancel); // it is not saved yet
        QTest::keyClick(desk.form(), Qt::Key_Escape);
        QCOMPARE(box->toPlainText(), u"10.1.2.3\n!"_s);
        box->setPlainText(u"10.1.2.3"_s);
        desk.press("Command3");
        desk.press("Command3"); // once is enough
        QCOMPARE(desk.caused, QStringList{u"saveSenders 10.1.2.3"_s});
        QCOMPARE(desk.find<QLabel>("lblSystemSaved")->text(), u"[OptionsSaved]"_s);
        desk.press("Command1");
        QTRY_COMPARE(desk.openForms.count(), 0);
        for (const auto &[kept, shown] : {std::pair(std::optional(u"!"_s), u"[trouble]"_s),
                                          {std::optional<QString>(), u"[unreadable]"_s}}) {
            desk.kept = kept;
            desk.windows.showOptions();
            QCOMPARE(desk.find<QLabel>("lblSendersTrouble")->text(), shown);
            QCOMPARE(desk.find<QPlainTextEdit>("txtSenders")->isEnabled(), kept.has_value());
            desk.form()->close();
            QTRY_COMPARE(desk.openForms.count(), 0);
        }
    }

    void aListThatNobodyTouchedHereStaysAsSomebodyElseHasMadeIt()
    {
        for (const auto &[loaded, now] : {std::pair(QString(), u"10.1.2.3"_s),
                                          {u"10.1.2.3"_s, u"10.1.2.3\n10.1.2.4"_s},
                                          {u"10.1.2.3"_s, QString()},
                                          {u"!"_s, u"!"_s}}) {
            Desk desk(1);
            desk.form()->close();
            QTRY_COMPARE(desk.openForms.count(), 0);
            desk.caused.clear();
            desk.kept = loaded;
            desk.windows.showOptions();
            desk.kept = now;
            desk.press("Command3");
            QCOMPARE(desk.find<QPlainTextEdit>("txtSenders")->toPlainText(), now);
            desk.find<QComboBox>("CmbLanguage")->setCurrentText(u"FRN"_s);
            desk.kept = loaded;
            desk.prompts.expectSave(core::Prompts::Answer::Save);
            desk.prompts.expect();
            desk.form()->close();
            QTRY_COMPARE(desk.openForms.count(), 0);
            QCOMPARE(desk.prompts.asked.value(1), u"[PlsRestartSys]"_s);
            QCOMPARE(desk.caused, QStringList{u"iniGridCallerID_tarn"_s}); // as a form that closes does
        }
    }

    void columnsMoveWithTheirSelection()
    {
        Desk desk(1);
        auto *list = desk.find<QListWidget>("lstGridCallerIDShowOrder");
        QCOMPARE(list->item(0)->text(), u"[Channel]"_s);
        QCOMPARE(list->item(6)->text(), u"ID"_s);
        QVERIFY(list->item(6)->data(Qt::AccessibleTextRole).toString().endsWith(u"[ColumnNotShown]"_s));
        QVERIFY(!desk.find<QPushButton>("cmdUp")->isEnabled());
        QVERIFY(!desk.find<QPushButton>("cmdDown")->isEnabled());
        support::clickCell(list, 0, 0);
        desk.press("cmdUp"); // nowhere to go
        desk.press("cmdDown");
        desk.press("cmdDown");
        support::clickCell(list, 6, 0);
        desk.press("cmdDown");
        desk.press("cmdUp");
        QCOMPARE(list->currentRow(), 5);
        desk.press("Command3");
        QCOMPARE(desk.saved().gridColumnNames.text(),
                 u"CallerID,SimpleDes,Channel,IncomingTime,SN,ID,LineNo"_s);
    }

    void theLanguageIsChosenFromTheListOnly()
    {
        Desk desk(1);
        auto *box = desk.find<QComboBox>("CmbLanguage");
        QCOMPARE(box->count(), 15);
        QCOMPARE(box->currentText(), u"KOR"_s);
        QCOMPARE(desk.find<QLabel>("lblLanguageName")->text(), u"한국어"_s);
        QTest::keyClicks(box, u"eng"_s);
        QCOMPARE(box->currentText(), u"KOR"_s);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(box->currentText(), u"POL"_s);
    }

    void buttonsOpenTheEditorAndTheHelpAndEscapeRestoresTheGrid()
    {
        Desk desk(1);
        desk.prompts.expect();
        desk.press("cmdLanguageEditor");
        const QString message = u"file lose,"_s + desk.paths.UserLangFile;
        QCOMPARE(desk.prompts.asked, QStringList{message});
        QCOMPARE(desk.logMessages(), QStringList{message});
        desk.press("Command5");
        desk.find<QTabWidget>("SSTab1")->setCurrentIndex(0);
        QTest::keyClick(desk.form(), Qt::Key_F1);
        QCOMPARE(desk.navigator.shown,
                 (QStringList{u"ShowHelp Popup_System_Options"_s, u"ShowHelp Popup_Options_Options"_s}));
        QTest::keyClick(desk.form(), Qt::Key_Escape);
        QCOMPARE(desk.caused, QStringList{u"iniGridCallerID_tarn"_s});
        QTRY_COMPARE(desk.openForms.count(), 0);
    }

    void whatWasChangedIsNotDroppedUnasked()
    {
        Desk desk;
        desk.find<QCheckBox>("ChkPopDetail")->click();
        desk.find<QLineEdit>("txtPort")->setText(u"99999"_s);
        desk.prompts.expectSave(core::Prompts::Answer::Cancel);
        QTest::keyClick(desk.form(), Qt::Key_Escape);
        desk.prompts.expectSave(core::Prompts::Answer::Save);
        desk.prompts.expect(); // the port is none
        QTest::keyClick(desk.form(), Qt::Key_Escape);
        QVERIFY(desk.form() != nullptr);
        QCOMPARE(desk.saved().PopupDetail, qint16(1));
        desk.press("Command1"); // nothing is left to ask about
        QTRY_COMPARE(desk.openForms.count(), 0);
    }
};

QTEST_MAIN(tst_Options)
#include "tst_Options.moc"
