#include "mainwindow/FrmMain.h"
#include "support/TestForms.h"

#include <QAction>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using core::Window;

namespace {

class FakeCommands : public mainwindow::MainWindowCommands
{
public:
    QStringList called;
    bool byebye(const QString &prompt) override
    {
        called.append(u"byebye "_s + prompt);
        return true;
    }
    void handleSampleCall() override { called.append(u"handleSampleCall"_s); }
    QString describeLastDatagram() override { return u"CallerID: 5550144"_s; }
    bool eraseShortMessages() override
    {
        called.append(u"eraseShortMessages"_s);
        return true;
    }
};

core::CallRecord call(const QString &number, const QString &name, const QString &sn = {})
{
    core::CallRecord record;
    record.CallerID = number;
    record.SimpleDes = name;
    record.Source = sn.isEmpty() ? QString() : u"PHONEBOOK"_s;
    record.SnText = sn;
    return record;
}

struct Forms : support::TestForms
{
    mainwindow::AutoHide autoHide;
    FakeCommands commands;
    std::unique_ptr<mainwindow::FrmMain> window;

    Forms()
    {
        core::setGridDefaults(settings.record);
        desk.values.AppVersion = u"1.00C42"_s;
        desk.values.WordSeparator = u" "_s;
        desk.values.OemMark = u"CD"_s;
        desk.values.ProductDisplayName = u"Corner Desk"_s;
        navigator.available = {Window::CallNotes, Window::CustomerList, Window::PhoneBook,
                               Window::Options,   Window::Help,         Window::SendMessage,
                               Window::AddCaller, Window::CallerEditor};
        open();
    }
    void open()
    {
        window.reset();
        window = std::make_unique<mainwindow::FrmMain>(
            mainwindow::FrmMain::Context{desk.paths, desk.values, desk.log, settings, texts, prompts,
                                         navigator, autoHide, commands, services()});
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }
    template <typename Control>
    Control *find(const char *name) const
    {
        return window->findChild<Control *>(QLatin1String(name));
    }
    void click(const char *button) const { QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton); }
};

} // namespace

class tst_FrmMain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowIsRememberedAndNotEndedByClosing()
    {
        Forms forms;
        QCOMPARE(forms.window->windowTitle(), u"Corner Desk [ver] 1.00C42"_s);
        QCOMPARE(forms.desk.logMessages(), QStringList{u"[SysStarted]"_s});
        forms.window->resize(777, 555);
        forms.window->close();
        QCOMPARE(forms.commands.called, QStringList());
        forms.click("Command2");
        forms.find<QAction>("mnuTrayClose")->trigger();
        QCOMPARE(forms.commands.called, QStringList({u"byebye "_s, u"byebye "_s}));
        forms.window.reset();
        QCOMPARE(forms.openForms.count(), 0);
        core::WindowMemory memory(forms.desk.paths, forms.desk.log);
        memory.load();
        QVERIFY(!memory.geometry(u"FrmMain"_s).isEmpty());
        forms.open();
        QCOMPARE(forms.window->size(), QSize(777, 555));
    }

    void buttonsOpenTheirWindowsAndAreDisabledWithoutThem()
    {
        const std::pair<const char *, Window> buttons[] = {{"cmdCallInfo", Window::CallNotes},
                                                           {"Command1", Window::CustomerList},
                                                           {"Command3", Window::Options},
                                                           {"Command4", Window::PhoneBook},
                                                           {"cmdSendSMS", Window::SendMessage}};
        Forms forms;
        for (const auto &[button, window] : buttons) {
            forms.click(button);
            QCOMPARE(forms.navigator.shown.takeLast(), u"show "_s + QString::number(int(window)));
        }
        forms.click("Command5");
        QCOMPARE(forms.navigator.shown, QStringList{u"ShowHelp Popup_MainHelp"_s});
        forms.navigator.available = {Window::Options};
        forms.open();
        for (const auto &[button, window] : buttons) {
            QCOMPARE(forms.find<QToolButton>(button)->isEnabled(), window == Window::Options);
        }
    }

    void theLastCallerStandsInTheBarAndTheGrid()
    {
        Forms forms;
        const auto *bar = forms.find<QPlainTextEdit>("txtLastCallerID");
        QVERIFY(bar->isReadOnly());
        forms.window->ShowCallerID_tarn(call(u"5550144"_s, u"<b>Jane</b>"_s));
        forms.window->showLastCaller(u"   5550144\r\nlast call time:"_s);
        forms.window->showSource(QHostAddress(u"10.1.2.3"_s));
        QTRY_COMPARE(bar->toPlainText(), u"   5550144\nlast call time:"_s);
        QCOMPARE(forms.window->calls().cell(0, u"SimpleDes"_s), u"<b>Jane</b>"_s);
        QCOMPARE(forms.find<QLabel>("lblSource")->text(), u"[LastDatagram] 2026-11-21 09:30:15  10.1.2.3"_s);
        forms.window->showPortUnavailable();
        QCOMPARE(forms.find<QLabel>("lblSource")->text(), u"[PortUnavailable]"_s);
    }

    void callersAreOpenedAndCopiedFromTheGrid()
    {
        Forms forms;
        forms.window->ShowCallerID_tarn(call(u"5550144"_s, u"Jane"_s, u"12"_s));
        forms.window->ShowCallerID_tarn(call(u"5550199"_s, u"Bo"_s));
        auto *grid = forms.find<QTableView>("gridCallerId");
        QTRY_COMPARE(grid->model()->rowCount(), 2);
        const QPoint older = grid->visualRect(grid->model()->index(1, 1)).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, older);
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, older);
        grid->setCurrentIndex(grid->model()->index(0, 1));
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(forms.navigator.shown,
                 QStringList({u"Show_Editor PHONEBOOK 12"_s, u"addCaller 5550199 Bo"_s}));
        QTest::keyClick(grid, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"5550199\tBo\t\t000\t\n5550144\tJane\t\t000\t"_s);
    }

    void theLogsAreShownAndDeletedAfterAQuestion()
    {
        Forms forms;
        forms.desk.writeFile(forms.desk.paths.SmsFile, "Hello from Bo\r\n");
        forms.open();
        const auto *sms = forms.find<QPlainTextEdit>("txtSMS");
        const auto *runInfo = forms.find<QPlainTextEdit>("txtRuninfo");
        forms.find<QTabWidget>("SSTab1")->setCurrentIndex(2);
        QTRY_VERIFY(sms->toPlainText().contains(u"Hello from Bo"_s));
        forms.find<QTabWidget>("SSTab1")->setCurrentIndex(1);
        QTRY_VERIFY(runInfo->toPlainText().contains(u"[SysStarted]"_s));
        for (const bool ok : {false, true}) {
            forms.prompts.expect(ok);
            forms.click("Command7");
            QCOMPARE(QFile::exists(forms.desk.paths.RunLogFile), !ok);
        }
        QTRY_COMPARE(runInfo->toPlainText(), QString());
        forms.find<QTabWidget>("SSTab1")->setCurrentIndex(2);
        forms.prompts.expect(true);
        forms.click("Command8");
        QCOMPARE(forms.commands.called, QStringList{u"eraseShortMessages"_s});
        QTRY_COMPARE(sms->toPlainText(), QString());
        QCOMPARE(forms.prompts.asked.join(u' '), u"[AskDeleteRunlog] [AskDeleteRunlog] [AskDeleteSmsLog]"_s);
    }

    void testControlsShowOnADevelopersMachineOnly()
    {
        Forms forms;
        forms.find<QTabWidget>("SSTab1")->setCurrentIndex(1);
        QVERIFY(!forms.find<QWidget>("cmdTest")->isVisible());
        forms.desk.values.DeveloperMode = true;
        forms.open();
        forms.find<QTabWidget>("SSTab1")->setCurrentIndex(1);
        forms.click("Command6");
        QCOMPARE(forms.commands.called, QStringList{u"handleSampleCall"_s});
        forms.prompts.expect();
        forms.click("cmdTest");
        QCOMPARE(forms.prompts.asked, QStringList{u"CallerID: 5550144"_s});
    }

    void aWindowBroughtUpByACallHidesItselfUnlessItIsUsed()
    {
        Forms forms;
        forms.window->showForCall(); // it stands already, the operator keeps it
        QVERIFY(!forms.autoHide.isRunning());
        forms.window->hide();
        forms.window->showForCall();
        QVERIFY(forms.window->isVisible());
        QVERIFY(forms.window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
        for (int tick = 1; tick <= 5; ++tick) {
            QCOMPARE(forms.autoHide.tick(), tick == 5);
        }
        QVERIFY(!forms.autoHide.isRunning());
        forms.window->hide();
        forms.window->showForCall();
        forms.click("Command3");
        QVERIFY(!forms.window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(!forms.autoHide.isRunning());
        QTest::keyClick(forms.window.get(), Qt::Key_Escape); // the offscreen platform has no tray
        QVERIFY(forms.window->isVisible() && forms.window->isMinimized());
    }

    void bothShapes()
    {
        Forms forms;
        const QSize full = forms.window->size();
        forms.click("cmdSmallShape");
        QVERIFY(forms.window->height() < full.height() / 2);
        QVERIFY(!forms.find<QWidget>("SSTab1")->isVisible());
        QVERIFY(forms.find<QPlainTextEdit>("txtLastCallerID")->isVisible());
        forms.click("cmdFullShape");
        QCOMPARE(forms.window->size(), full);
        forms.window->showMaximized();
        forms.click("cmdSmallShape");
        QVERIFY(forms.find<QWidget>("SSTab1")->isVisible());
    }
};

QTEST_MAIN(tst_FrmMain)
#include "tst_FrmMain.moc"
