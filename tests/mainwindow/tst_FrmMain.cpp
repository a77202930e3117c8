#include "mainwindow/FrmMain.h"
#include "support/TestForms.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
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

} // namespace

class tst_FrmMain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theCaptionNamesProductAndVersion();
    void buttonsOpenTheirWindows_data();
    void buttonsOpenTheirWindows();
    void aButtonWithoutItsWindowIsDisabled();
    void exitAsksTheProgram();
    void theLastCallerStandsInTheBarAndTheGrid();
    void aDoubleClickOpensTheCallerOfItsRow();
    void enterOpensAndCopyTakesTheSelectedRows();
    void theLogsAreShownAndDeletedAfterAQuestion();
    void testControlsShowOnADevelopersMachineOnly();
    void escapeNeverTakesTheWindowBeyondReach();
    void aWindowBroughtUpByACallHidesItselfAfterFiveTicks();
    void openingAFormEndsBeingInFront();
    void bothShapes();
    void theWindowIsRememberedAndNotEndedByClosing();

private:
    template <typename Control>
    Control *find(const QString &name) const
    {
        return m_window->findChild<Control *>(name);
    }
    void open();
    core::CallRecord call(const QString &number, const QString &name) const;
    QPoint cellOf(int row) const;

    std::unique_ptr<support::TestForms> m_forms;
    std::unique_ptr<mainwindow::AutoHide> m_autoHide;
    std::unique_ptr<FakeCommands> m_commands;
    std::unique_ptr<mainwindow::FrmMain> m_window;
};

void tst_FrmMain::init()
{
    m_window.reset();
    m_forms = std::make_unique<support::TestForms>();
    m_autoHide = std::make_unique<mainwindow::AutoHide>();
    m_commands = std::make_unique<FakeCommands>();
    core::setGridDefaults(m_forms->settings.record);
    m_forms->desk.values.AppVersion = u"1.00C42"_s;
    m_forms->desk.values.WordSeparator = u" "_s;
    m_forms->navigator.available = {Window::CallNotes, Window::CustomerList, Window::PhoneBook,
                                    Window::Options,   Window::Help,         Window::SendMessage,
                                    Window::AddCaller, Window::CallerEditor};
}

void tst_FrmMain::open()
{
    m_window = std::make_unique<mainwindow::FrmMain>(mainwindow::FrmMain::Context{
        m_forms->desk.paths, m_forms->desk.values, m_forms->desk.log, m_forms->settings, m_forms->texts,
        m_forms->prompts, m_forms->navigator, *m_autoHide, *m_commands, m_forms->services()});
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

core::CallRecord tst_FrmMain::call(const QString &number, const QString &name) const
{
    core::CallRecord record;
    record.CallerID = number;
    record.SimpleDes = name;
    return record;
}

QPoint tst_FrmMain::cellOf(int row) const
{
    const auto *grid = find<QTableView>(u"gridCallerId"_s);
    return grid->visualRect(grid->model()->index(row, 1)).center();
}

void tst_FrmMain::theCaptionNamesProductAndVersion()
{
    m_forms->desk.values.OemMark = u"CD"_s;
    m_forms->desk.values.ProductDisplayName = u"Corner Desk"_s;
    open();
    QCOMPARE(m_window->windowTitle(), u"Corner Desk [ver] 1.00C42"_s);
    QCOMPARE(m_forms->desk.logMessages(), QStringList{u"[SysStarted]"_s});
    QCOMPARE(m_forms->openForms.count(), 1);
    QVERIFY(m_forms->desk.values.MainWindowReady);
}

void tst_FrmMain::buttonsOpenTheirWindows_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("opens");
    const auto show = [](Window window) { return QString(u"show "_s + QString::number(int(window))); };
    QTest::newRow("notes") << u"cmdCallInfo"_s << show(Window::CallNotes);
    QTest::newRow("customers") << u"Command1"_s << show(Window::CustomerList);
    QTest::newRow("options") << u"Command3"_s << show(Window::Options);
    QTest::newRow("phone book") << u"Command4"_s << show(Window::PhoneBook);
    QTest::newRow("message") << u"cmdSendSMS"_s << show(Window::SendMessage);
    QTest::newRow("help") << u"Command5"_s << u"ShowHelp Popup_MainHelp"_s;
}

void tst_FrmMain::buttonsOpenTheirWindows()
{
    QFETCH(QString, button);
    QFETCH(QString, opens);
    open();
    QTest::mouseClick(find<QToolButton>(button), Qt::LeftButton);
    QCOMPARE(m_forms->navigator.shown, QStringList{opens});
}

void tst_FrmMain::aButtonWithoutItsWindowIsDisabled()
{
    m_forms->navigator.available = {Window::Options};
    open();
    for (const QString &button :
         {u"cmdCallInfo"_s, u"Command1"_s, u"Command4"_s, u"Command5"_s, u"cmdSendSMS"_s}) {
        QVERIFY2(!find<QToolButton>(button)->isEnabled(), qPrintable(button));
    }
    QVERIFY(find<QToolButton>(u"Command3"_s)->isEnabled());
}

void tst_FrmMain::exitAsksTheProgram()
{
    open();
    QTest::mouseClick(find<QToolButton>(u"Command2"_s), Qt::LeftButton);
    find<QAction>(u"mnuTrayClose"_s)->trigger();
    QCOMPARE(m_commands->called, QStringList({u"byebye "_s, u"byebye "_s}));
}

void tst_FrmMain::theLastCallerStandsInTheBarAndTheGrid()
{
    open();
    auto *bar = find<QPlainTextEdit>(u"txtLastCallerID"_s);
    QVERIFY(bar->isReadOnly());
    m_window->ShowCallerID_tarn(call(u"5550144"_s, u"<b>Jane</b>"_s));
    m_window->showLastCaller(u"   5550144\r\nlast call time:"_s);
    m_window->showSource(QHostAddress(u"10.1.2.3"_s));
    QTRY_COMPARE(bar->toPlainText(), u"   5550144\nlast call time:"_s);
    QCOMPARE(m_window->calls().cell(0, u"SimpleDes"_s), u"<b>Jane</b>"_s);
    QCOMPARE(find<QLabel>(u"lblSource"_s)->text(), u"[LastDatagram] 2026-11-21 09:30:15  10.1.2.3"_s);
    m_window->showPortUnavailable();
    QCOMPARE(find<QLabel>(u"lblSource"_s)->text(), u"[PortUnavailable]"_s);
}

void tst_FrmMain::aDoubleClickOpensTheCallerOfItsRow()
{
    open();
    core::CallRecord known = call(u"5550144"_s, u"Jane"_s);
    known.Source = u"PHONEBOOK"_s;
    known.SnText = u"12"_s;
    m_window->ShowCallerID_tarn(known);
    m_window->ShowCallerID_tarn(call(u"5550199"_s, u"Nobody"_s));
    auto *grid = find<QTableView>(u"gridCallerId"_s);
    QTRY_COMPARE(grid->model()->rowCount(), 2);
    for (const int row : {1, 0}) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cellOf(row));
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cellOf(row));
    }
    QCOMPARE(m_forms->navigator.shown,
             QStringList({u"Show_Editor PHONEBOOK 12"_s, u"addCaller 5550199 Nobody"_s}));
}

void tst_FrmMain::enterOpensAndCopyTakesTheSelectedRows()
{
    open();
    m_window->ShowCallerID_tarn(call(u"5550144"_s, u"Jane"_s));
    m_window->ShowCallerID_tarn(call(u"5550199"_s, u"Bo"_s));
    auto *grid = find<QTableView>(u"gridCallerId"_s);
    QTRY_COMPARE(grid->model()->rowCount(), 2);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), u"5550199\tBo\t\t000\t\n5550144\tJane\t\t000\t"_s);
    grid->setCurrentIndex(grid->model()->index(1, 1));
    QTest::keyClick(grid, Qt::Key_Return);
    QCOMPARE(m_forms->navigator.shown, QStringList{u"addCaller 5550144 Jane"_s});
}

void tst_FrmMain::theLogsAreShownAndDeletedAfterAQuestion()
{
    m_forms->desk.writeFile(m_forms->desk.paths.SmsFile, "Hello from Bo\r\n");
    open();
    auto *tabs = find<QTabWidget>(u"SSTab1"_s);
    auto *sms = find<QPlainTextEdit>(u"txtSMS"_s);
    auto *runInfo = find<QPlainTextEdit>(u"txtRuninfo"_s);
    tabs->setCurrentIndex(2);
    QTRY_VERIFY(sms->toPlainText().contains(u"Hello from Bo"_s));
    tabs->setCurrentIndex(1);
    QTRY_VERIFY(runInfo->toPlainText().contains(u"[SysStarted]"_s));
    m_forms->prompts.expect(false);
    QTest::mouseClick(find<QPushButton>(u"Command7"_s), Qt::LeftButton);
    QVERIFY(QFile::exists(m_forms->desk.paths.RunLogFile));
    m_forms->prompts.expect(true);
    QTest::mouseClick(find<QPushButton>(u"Command7"_s), Qt::LeftButton);
    QVERIFY(!QFile::exists(m_forms->desk.paths.RunLogFile));
    QTRY_COMPARE(runInfo->toPlainText(), QString());
    tabs->setCurrentIndex(2);
    m_forms->prompts.expect(true);
    QTest::mouseClick(find<QPushButton>(u"Command8"_s), Qt::LeftButton);
    QCOMPARE(m_commands->called, QStringList{u"eraseShortMessages"_s});
    QTRY_COMPARE(sms->toPlainText(), QString());
    QCOMPARE(m_forms->prompts.asked,
             QStringList({u"[AskDeleteRunlog]"_s, u"[AskDeleteRunlog]"_s, u"[AskDeleteSmsLog]"_s}));
}

void tst_FrmMain::testControlsShowOnADevelopersMachineOnly()
{
    open();
    find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(1);
    QVERIFY(!find<QPushButton>(u"cmdTest"_s)->isVisible());
    m_window.reset();
    m_forms->desk.values.DeveloperMode = true;
    open();
    find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(1);
    QTest::mouseClick(find<QPushButton>(u"Command6"_s), Qt::LeftButton);
    QCOMPARE(m_commands->called, QStringList{u"handleSampleCall"_s});
    m_forms->prompts.expect();
    QTest::mouseClick(find<QPushButton>(u"cmdTest"_s), Qt::LeftButton);
    QCOMPARE(m_forms->prompts.asked, QStringList{u"CallerID: 5550144"_s});
}

void tst_FrmMain::escapeNeverTakesTheWindowBeyondReach()
{
    open(); // the offscreen platform has no tray
    QTest::keyClick(find<QTableView>(u"gridCallerId"_s), Qt::Key_Escape);
    QVERIFY(m_window->isVisible());
    QVERIFY(m_window->isMinimized());
}

void tst_FrmMain::aWindowBroughtUpByACallHidesItselfAfterFiveTicks()
{
    open();
    m_window->showForCall(); // it stands already, the operator keeps it
    QVERIFY(!m_autoHide->isRunning());
    m_window->hide();
    m_window->showForCall();
    QVERIFY(m_window->isVisible());
    QVERIFY(m_window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    for (int tick = 1; tick < mainwindow::AutoHide::lastTick; ++tick) {
        QVERIFY(!m_autoHide->tick());
    }
    QVERIFY(m_autoHide->tick());
    QVERIFY(!m_autoHide->isRunning());
}

void tst_FrmMain::openingAFormEndsBeingInFront()
{
    open();
    m_window->hide();
    m_window->showForCall();
    QTest::mouseClick(find<QToolButton>(u"Command3"_s), Qt::LeftButton);
    QVERIFY(!m_window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(!m_autoHide->isRunning());
    QVERIFY(m_window->isVisible());
}

void tst_FrmMain::bothShapes()
{
    open();
    const QSize full = m_window->size();
    QTest::mouseClick(find<QToolButton>(u"cmdSmallShape"_s), Qt::LeftButton);
    QVERIFY(m_window->height() < full.height() / 2);
    QVERIFY(!find<QTabWidget>(u"SSTab1"_s)->isVisible());
    QVERIFY(find<QPlainTextEdit>(u"txtLastCallerID"_s)->isVisible());
    QTest::mouseClick(find<QToolButton>(u"cmdFullShape"_s), Qt::LeftButton);
    QCOMPARE(m_window->size(), full);
    m_window->showMaximized();
    QTest::mouseClick(find<QToolButton>(u"cmdSmallShape"_s), Qt::LeftButton);
    QVERIFY(find<QTabWidget>(u"SSTab1"_s)->isVisible());
}

void tst_FrmMain::theWindowIsRememberedAndNotEndedByClosing()
{
    open();
    m_window->resize(777, 555);
    m_window->close();
    QCOMPARE(m_commands->called, QStringList());
    m_window.reset();
    QCOMPARE(m_forms->openForms.count(), 0);
    core::WindowMemory memory(m_forms->desk.paths, m_forms->desk.log);
    memory.load();
    QVERIFY(!memory.geometry(u"FrmMain"_s).isEmpty());
    open();
    QCOMPARE(m_window->size(), QSize(777, 555));
}

QTEST_MAIN(tst_FrmMain)
#include "tst_FrmMain.moc"
