#include "mainwindow/forms/FrmMain.h"
#include "support/TestForms.h"

using core::Window;

class tst_FrmMain : public QObject
{
    Q_OBJECT

    struct FakeCommands : mainwindow::MainWindowCommands
    {
        QStringList called;
        bool note(const QString &call)
        {
            called.append(call);
            return true;
        }
        bool byebye(const QString &prompt) override { return note(u"byebye "_s + prompt); }
        void handleSampleCall() override {}
        QString describeLastDatagram() override { return {}; }
        bool eraseShortMessages() override { return note(u"eraseShortMessages"_s); }
        void messagesSeen() override { note(u"messagesSeen"_s); }
        mainwindow::LastCaller lastCaller() override { return last; }

        mainwindow::LastCaller last;
    };

    struct Forms : support::TestForms
    {
        mainwindow::AutoHide autoHide;
        FakeCommands commands;
        std::unique_ptr<mainwindow::FrmMain> window;

        Forms()
        {
            core::setGridDefaults(settings.record);
            navigator.available = {Window::Options};
            open();
        }
        void open()
        {
            window.reset();
            window = std::make_unique<mainwindow::FrmMain>(mainwindow::FrmMain::Context{
                paths, values, log, settings, texts, prompts, navigator, autoHide, commands, services()});
            window->show();
            QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        }
        void showLastCaller(const core::CallRecord &record, const QString &text)
        {
            commands.last = {record, text};
            window->showLastCaller();
        }
        template <typename Control = QAbstractButton>
        Control *find(const char *name) const
        {
            return window->findChild<Control *>(QLatin1String(name));
        }
    };

    static core::CallRecord callFrom(const QString &number, const QString &source = {},
                                     const QString &sn = {})
    {
        core::CallRecord call;
        call.CallerID = number;
        call.Source = source;
        call.SnText = sn;
        call.SN = sn.toInt();
        return call;
    }

private Q_SLOTS:
    void theWindowIsRememberedAndNotEndedByClosing()
    {
        Forms forms;
        QVERIFY(forms.window->screen()->availableGeometry().contains(forms.window->frameGeometry()));
        forms.window->resize(777, 555);
        forms.window->close();
        QCOMPARE(forms.commands.called, QStringList());
        forms.find("Command2")->click();
        forms.find<QAction>("mnuTrayClose")->trigger();
        QCOMPARE(forms.commands.called, QStringList({u"byebye "_s, u"byebye "_s}));
        forms.window.reset();
        QCOMPARE(forms.openForms.count(), 0);
        forms.open();
        QCOMPARE(forms.window->size(), QSize(777, 555));
    }

    void callersAreOpenedAndCopiedFromTheGrid()
    {
        Forms forms;
        core::CallRecord call = callFrom(u"5550144"_s);
        call.SimpleDes = u"<b>Jane</b>"_s;
        forms.window->ShowCallerID_tarn(call);
        call.Source = u"PHONEBOOK"_s;
        call.SnText = u"12"_s;
        forms.window->ShowCallerID_tarn(call);
        auto *grid = forms.find<QTableView>("gridCallerId");
        QTRY_COMPARE(grid->model()->rowCount(), 2);
        grid->setCurrentIndex(grid->model()->index(0, 1));
        QCOMPARE(forms.find<QAction>("mnuOpenCaller")->text(), u"[Edit]"_s);
        QTest::keyClick(grid, Qt::Key_Return);
        grid->setCurrentIndex(grid->model()->index(1, 1));
        QCOMPARE(forms.find<QAction>("mnuOpenCaller")->text(), u"[AddCallerTitle]"_s);
        QTest::keyClick(grid, Qt::Key_Enter);
        QCOMPARE(forms.navigator.shown,
                 QStringList({u"Show_Editor PHONEBOOK 12"_s, u"addCaller 5550144 <b>Jane</b>"_s}));
        QVERIFY(!forms.find<QAction>("mnuOpenLastCaller")->isEnabled());
        forms.showLastCaller(call, u"5550144"_s);
        QTRY_COMPARE(forms.find<QAction>("mnuOpenLastCaller")->text(), u"[Edit]"_s);
        forms.find<QAction>("mnuOpenLastCaller")->trigger();
        QCOMPARE(forms.navigator.shown.value(2), u"Show_Editor PHONEBOOK 12"_s);
        QTest::keyClick(grid, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(),
                 u"5550144\t<b>Jane</b>\t\t000\t\n5550144\t<b>Jane</b>\t\t000\t"_s);
    }

    void theMarkOfACallerLeavesRoomForALongNumber()
    {
        Forms forms;
        core::CallRecord call;
        call.CallerID = u"00493055500112233"_s;
        call.IfVIP = u"Y"_s;
        forms.window->ShowCallerID_tarn(call);
        auto *grid = forms.find<QTableView>("gridCallerId");
        QTRY_COMPARE(grid->model()->rowCount(), 1);
        const int column = forms.window->calls().GetGridColumn(u"CallerID"_s);
        QVERIFY(grid->sizeHintForIndex(grid->model()->index(0, column)).width() <= grid->columnWidth(column));
    }

    void aNameThatTheBarHasNoRoomForEndsInDots()
    {
        Forms forms;
        auto *bar = forms.find<QPlainTextEdit>("txtLastCallerID");
        const QString tall(400, u'l');
        forms.showLastCaller({}, tall);
        QTRY_COMPARE(bar->toPlainText(), tall);
        const QImage image = bar->viewport()->grab().toImage();
        const int dots = bar->fontMetrics().horizontalAdvance(u'\u2026');
        const auto isDrawn = [&image](int left, int right) { // in the upper third, where dots are not
            bool drawn = false;
            for (int x = left; x < right; ++x) {
                for (int y = 0; y < image.height() / 3; ++y) {
                    drawn = drawn || image.pixel(x, y) != image.pixel(0, 0);
                }
            }
            return drawn;
        };
        QVERIFY(isDrawn(image.width() / 2, image.width() - 4 * dots));
        QVERIFY(!isDrawn(image.width() - dots, image.width()));
    }

    void theLogsAreShownWithWhatIsUnreadAndDeletedAfterAQuestion()
    {
        Forms forms;
        forms.writeFile(forms.paths.SmsFile, "Hello from Bo\r\n");
        forms.open();
        auto *tabs = forms.find<QTabWidget>("SSTab1");
        auto *runInfo = forms.find<QPlainTextEdit>("txtRuninfo");
        tabs->setCurrentIndex(1);
        QTRY_VERIFY(runInfo->toPlainText().contains(u"[SysStarted]"_s));
        forms.log.WriteRunLog(u"no datagram"_s);
        QTRY_VERIFY(runInfo->toPlainText().contains(u"no datagram"_s));
        forms.window->hide();
        forms.log.WriteRunLog(u"while hidden"_s);
        forms.window->showUnread(1);
        QTRY_VERIFY(tabs->tabText(2).endsWith(u" (1)"_s));
        forms.window->show();
        QTRY_VERIFY(runInfo->toPlainText().contains(u"while hidden"_s));
        for (const auto &[page, box, button, text] :
             {std::tuple(1, "txtRuninfo", "Command7", u"[SysStarted]"_s),
              {2, "txtSMS", "Command8", u"Hello from Bo"_s}}) {
            tabs->setCurrentIndex(page);
            const auto *log = forms.find<QPlainTextEdit>(box);
            for (const bool ok : {false, true}) {
                QTRY_VERIFY(log->toPlainText().contains(text));
                forms.prompts.expect(ok);
                forms.find(button)->click();
                QTRY_COMPARE(log->toPlainText().isEmpty(), ok);
            }
        }
        QVERIFY(!QFile::exists(forms.paths.RunLogFile));
        QCOMPARE(forms.commands.called.filter(u"erase"_s).size(), 1);
        QVERIFY(forms.commands.called.contains(u"messagesSeen"_s));
    }

    void aCallBringsUpTheWindowWithItsCallsWhichHidesItselfUnlessItIsUsed()
    {
        Forms forms;
        auto *tabs = forms.find<QTabWidget>("SSTab1");
        const auto *bar = forms.find<QWidget>("txtLastCallerID");
        const QColor quiet = bar->palette().color(QPalette::Base);
        const auto isOnTop = [&forms] {
            return forms.window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
        };
        tabs->setCurrentIndex(2);
        forms.window->showForCall(); // it stands already, the operator keeps it
        QVERIFY(!forms.autoHide.isRunning());
        QTRY_COMPARE(tabs->currentIndex(), 0);
        QVERIFY(bar->palette().color(QPalette::Base) != quiet);
        forms.window->hide();
        forms.window->showForCall();
        QVERIFY(forms.window->isVisible() && isOnTop());
        for (int tick = 1; tick <= 5; ++tick) {
            QCOMPARE(forms.autoHide.tick(), tick == 5);
        }
        forms.window->hide();
        forms.window->showForCall();
        forms.find("Command3")->click();
        QVERIFY(!isOnTop() && !forms.autoHide.isRunning());
        QTRY_COMPARE(bar->palette().color(QPalette::Base), quiet);
    }

    void theBarsCommandsSpeakOfTheCallThatItsMenuWasOpenedFor()
    {
        Forms forms;
        const core::CallRecord first = callFrom(u"5550144"_s, u"CUSTOMER"_s, u"7"_s);
        const core::CallRecord second = callFrom(u"5550177"_s, u"CUSTOMER"_s); // matched with no number
        auto *bar = forms.find<QPlainTextEdit>("txtLastCallerID");
        forms.showLastCaller(first, u"5550144\r\nlast call time: ext: tel:"_s);
        QTRY_VERIFY(bar->toPlainText().startsWith(u"5550144"_s));
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(8, 8), bar->mapToGlobal(QPoint(8, 8)));
        QCoreApplication::sendEvent(bar->viewport(), &asked);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu != nullptr);
        forms.showLastCaller(second, u"5550177\r\nlast call time:2026-11-20 10:42"_s);
        QTRY_VERIFY(bar->toPlainText().startsWith(u"5550177"_s));
        forms.find<QAction>("mnuNoteOfLastCaller")->trigger();
        menu->setActiveAction(forms.find<QAction>("mnuOpenLastCaller"));
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(forms.navigator.shown, QStringList({u"addNote 7"_s, u"Show_Editor CUSTOMER 7"_s}));
        QTRY_VERIFY(!forms.find("cmdNoteOfLastCaller")->isEnabled());
        QTest::keyClick(forms.window.get(), Qt::Key_F2);
        QCOMPARE(forms.navigator.shown.value(2), u"addCaller 5550177 "_s);
        forms.find("cmdCopyLastNumber")->click();
        QCOMPARE(QApplication::clipboard()->text(), u"5550177"_s);
    }

    void escapeIsMeantForAWindowThatClosedJustNow()
    {
        Forms forms;
        const auto escape = [&forms] {
            QTest::keyClick(forms.window.get(), Qt::Key_Escape);
            return !forms.window->isVisible() || forms.window->isMinimized();
        };
        {
            QWidget other;
            other.show();
            other.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&other));
        }
        forms.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(forms.window.get()));
        QVERIFY(!escape());
        QTRY_VERIFY(escape());
    }

    void aWindowPutAwayWhileMaximizedComesUpForACallInItsNormalSize()
    {
        for (const bool hides : {true, false}) {
            Forms forms;
            forms.window->resize(777, 555);
            forms.window->showMaximized();
            QTRY_VERIFY(forms.window->width() > 777);
            hides ? forms.window->hide() : forms.window->showMinimized();
            forms.window->showForCall();
            QVERIFY(forms.window->isVisible() && !forms.window->isMaximized());
            QTRY_COMPARE(forms.window->size(), QSize(777, 555));
        }
    }

    void bothShapes()
    {
        Forms forms;
        const QSize full = forms.window->size();
        forms.find("cmdSmallShape")->click();
        QVERIFY(forms.window->height() < full.height() / 2);
        QVERIFY(!forms.find<QWidget>("SSTab1")->isVisible());
        forms.find("cmdFullShape")->click();
        QCOMPARE(forms.window->size(), full);
    }
};

QTEST_MAIN(tst_FrmMain)
#include "tst_FrmMain.moc"
