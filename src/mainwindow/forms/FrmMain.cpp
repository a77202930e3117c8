#include "mainwindow/forms/FrmMain.h"

#include "appearance/theme/ThemedIcons.h"
#include "core/TextFiles.h"
#include "core/TextUtilities.h"
#include "ui_FrmMain.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QToolButton>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

// A record without a previous call has blanks, or its parameter blocks, in the same columns.
bool tellsPreviousCall(const core::CallRecord &record)
{
    return !record.Tail.startsWith(u'{') && !record.Tail.trimmed().isEmpty();
}

constexpr qint64 shownMessageBytes = 64 << 10; // of a log that only ever grows

} // namespace

FrmMain::FrmMain(const Context &context)
    : m_context(context), m_ui(std::make_unique<Ui::FrmMain>()), m_setup(*this, context.services),
      m_calls(context.settings, context.values, context.texts, context.log),
      m_runInfo([this] { m_screen.schedule(); }), m_sms([this] { m_screen.schedule(); }),
      m_screen([this] { updateScreen(); }), m_sourceLabel(new QLabel)
{
    m_ui->setupUi(this);
    Form_Load();
}

FrmMain::~FrmMain()
{
    m_context.log.setRunInfoBox(nullptr);
}

void FrmMain::Form_Load()
{
    m_context.values.MainWindowReady = true;
    m_context.log.setRunInfoBox(&m_runInfo);
    m_setup.load();
    loadTexts();
    loadStatusLine();
    loadToolbar();
    m_context.log.WriteRunLog(m_context.texts.Lms(u"SysStarted"_s));
    loadGrid();
    loadLogs();
    loadTray();
    loadShape();
    connectButtons();
    connectCallers();
    connectSignal();
    m_ui->gridCallerId->setFocus();
}

void FrmMain::loadTexts()
{
    const core::ProcessValues &values = m_context.values;
    const QString separator = values.WordSeparator;
    const QString name =
        values.OemMark.isEmpty() ? m_context.texts.Lms(u"PopupProductName"_s) : values.ProductDisplayName;
    const QString version = isRightToLeft() ? core::isolated(values.AppVersion) : values.AppVersion;
    const QString title = name + separator + m_context.texts.Lms(u"ver"_s) + separator + version;
    setWindowTitle(title.trimmed());
    setWindowIcon(appearance::programIcon());
    m_ui->Toolbar1->setWindowTitle(windowTitle());
    m_ui->txtLastCallerID->setPlaceholderText(m_context.texts.Lms(u"NoCallYet"_s));
    m_ui->txtSMS->setPlaceholderText(m_context.texts.Lms(u"NoSmsYet"_s));
    m_ui->gridCallerId->setHint(m_context.texts.Lms(u"NoCallsHint"_s));
    m_ui->gridCallerId->setToolTip(m_context.texts.Lms(u"DoubleClickToAddPhoneNumber"_s));
    m_messagesTitle = m_ui->SSTab1->tabText(m_ui->SSTab1->indexOf(m_ui->pageShortMessages));
}

void FrmMain::showTexts()
{
    m_context.services.translator.iniFormLang(*this);
    loadTexts();
    m_calls.iniGridCallerID_tarn();
    updateSource();
    m_screen.schedule();
}

void FrmMain::loadStatusLine()
{
    m_sourceLabel->setObjectName(u"lblSource"_s);
    m_sourceLabel->setTextFormat(Qt::PlainText);
    m_sourceLabel->setContentsMargins(8, 0, 8, 4);
    m_ui->statusbar->addWidget(m_sourceLabel, 1);
    updateSource();
}

void FrmMain::loadGrid()
{
    m_calls.iniGridCallerID_tarn();
    m_ui->gridCallerId->setCalls(&m_calls);
    m_ui->gridCallerId->addAction(m_ui->mnuOpenCaller);
    m_ui->gridCallerId->addAction(m_ui->mnuCopy);
    m_ui->mnuCopy->setShortcut(QKeySequence::Copy);
    m_ui->mnuCopy->setShortcutContext(Qt::WidgetShortcut);
    loadBar();
}

// Every command of the bar's menu also has a button beside the bar.
void FrmMain::loadBar()
{
    const std::pair<QToolButton *, QAction *> commands[] = {
        {m_ui->cmdOpenLastCaller, m_ui->mnuOpenLastCaller},
        {m_ui->cmdNoteOfLastCaller, m_ui->mnuNoteOfLastCaller},
        {m_ui->cmdCopyLastNumber, m_ui->mnuCopyLastNumber}};
    for (const auto &[button, action] : commands) {
        m_ui->txtLastCallerID->addAction(action);
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setIconSize(m_ui->Toolbar1->iconSize());
    }
}

// By default the buttons of a toolbar cannot be reached by the Tab key and have no names to be found by.
void FrmMain::loadToolbar()
{
    auto *spacer = new QWidget;
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_ui->Toolbar1->insertWidget(m_ui->cmdSmallShape, spacer);
    const QList<QAction *> actions = m_ui->Toolbar1->actions();
    for (QAction *action : actions) {
        if (auto *button = qobject_cast<QToolButton *>(m_ui->Toolbar1->widgetForAction(action))) {
            button->setObjectName(action->objectName());
            button->setFocusPolicy(Qt::TabFocus);
        }
    }
    m_ui->cmdTest->setVisible(m_context.values.DeveloperMode);
    m_ui->Command6->setVisible(m_context.values.DeveloperMode);
    applyIcons();
}

void FrmMain::applyIcons()
{
    const QColor color = palette().color(QPalette::ButtonText);
    const std::pair<QAction *, QStringView> icons[] = {{m_ui->Command4, u"phonebook"},
                                                       {m_ui->Command1, u"customers"},
                                                       {m_ui->cmdCallInfo, u"notes"},
                                                       {m_ui->cmdSendSMS, u"message"},
                                                       {m_ui->Command3, u"options"},
                                                       {m_ui->Command5, u"help"},
                                                       {m_ui->Command2, u"exit"},
                                                       {m_ui->cmdSmallShape, u"small"},
                                                       {m_ui->cmdFullShape, u"full"},
                                                       {m_ui->mnuCopy, u"copy"},
                                                       {m_ui->mnuOpenCaller, u"edit"},
                                                       {m_ui->mnuOpenLastCaller, u"edit"},
                                                       {m_ui->mnuNoteOfLastCaller, u"notes"},
                                                       {m_ui->mnuCopyLastNumber, u"copy"}};
    for (const auto &[action, name] : icons) {
        action->setIcon(appearance::themedIcon(name, color));
    }
}

void FrmMain::loadLogs()
{
    m_runInfo.clear();
    m_runInfo.append(core::ReadTextFile(m_context.log, m_context.paths.RunLogFile, core::RunLog::sizeLimit));
    m_sms.append(core::ReadTextFile(m_context.log, m_context.paths.SmsFile, shownMessageBytes));
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this, [this] {
        chooseLogFont();
        m_screen.schedule();
    });
}

// Datagrams are fixed-column text. To find another font takes too long for a start that does not show it.
void FrmMain::chooseLogFont()
{
    if (m_ui->SSTab1->currentWidget() == m_ui->pageRunInformation) {
        QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        fixed.setPointSizeF(font().pointSizeF());
        m_ui->txtRuninfo->setFont(fixed);
    }
}

void FrmMain::loadTray()
{
    m_tray = std::make_unique<TrayIcon>(QList<QAction *>{m_ui->mnuTrayRestore, m_ui->mnuTrayMove,
                                                         m_ui->mnuTraySize, m_ui->mnuTrayMinimize,
                                                         m_ui->mnuTrayMaximize, nullptr, m_ui->mnuTrayClose});
    m_tray->setTip(windowTitle());
    m_tray->install(windowIcon());
    connectTray();
    Timer1.setObjectName(u"Timer1"_s);
    connect(&Timer1, &QTimer::timeout, this, &FrmMain::Timer1_Timer);
    Timer1.start(1000);
}

void FrmMain::connectTray()
{
    connect(m_tray.get(), &TrayIcon::leftClicked, this, &FrmMain::restoreToFront);
    connect(m_ui->mnuTrayClose, &QAction::triggered, this, [this] { m_context.commands.byebye({}); });
    connect(m_ui->mnuTrayMaximize, &QAction::triggered, this, &QWidget::showMaximized);
    connect(m_ui->mnuTrayMinimize, &QAction::triggered, this, &QWidget::showMinimized);
    connect(m_ui->mnuTrayRestore, &QAction::triggered, this, &FrmMain::restoreToFront);
    connect(m_ui->mnuTrayMove, &QAction::triggered, this, [this] {
        restoreToFront();
        windowHandle()->startSystemMove();
    });
    connect(m_ui->mnuTraySize, &QAction::triggered, this, [this] {
        restoreToFront();
        windowHandle()->startSystemResize(Qt::BottomEdge | Qt::RightEdge);
    });
}

void FrmMain::connectButtons()
{
    using core::Window;
    connectWindowButton(m_ui->cmdCallInfo, Window::CallNotes);
    connectWindowButton(m_ui->Command1, Window::CustomerList);
    connectWindowButton(m_ui->Command3, Window::Options);
    connectWindowButton(m_ui->Command4, Window::PhoneBook);
    connectWindowButton(m_ui->cmdSendSMS, Window::SendMessage);
    m_ui->Command5->setShortcut(QKeySequence::HelpContents);
    connect(m_ui->Command5, &QAction::triggered, this, [this] {
        notTopmost();
        m_context.navigator.ShowHelp(u"Popup_MainHelp"_s);
    });
    connect(m_ui->Command2, &QAction::triggered, this, [this] { m_context.commands.byebye({}); });
    connect(m_ui->cmdSmallShape, &QAction::triggered, this, &FrmMain::SetSmallFrmmain);
    connect(m_ui->cmdFullShape, &QAction::triggered, this, &FrmMain::setFullShape);
    connect(m_ui->Command6, &QPushButton::clicked, this, [this] { m_context.commands.handleSampleCall(); });
    connect(m_ui->cmdTest, &QPushButton::clicked, this,
            [this] { m_context.prompts.tell(m_context.commands.describeLastDatagram()); });
    connect(m_ui->Command7, &QPushButton::clicked, this, &FrmMain::deleteRunLog);
    connect(m_ui->Command8, &QPushButton::clicked, this, &FrmMain::deleteSmsLog);
}

void FrmMain::connectCallers()
{
    connect(m_ui->mnuCopy, &QAction::triggered, m_ui->gridCallerId, &CallGridView::copySelection);
    connect(m_ui->mnuOpenCaller, &QAction::triggered, this,
            [this] { openCaller(m_ui->gridCallerId->currentIndex().row()); });
    connect(m_ui->mnuOpenLastCaller, &QAction::triggered, this, &FrmMain::openLastCaller);
    connect(m_ui->mnuNoteOfLastCaller, &QAction::triggered, this, [this] {
        notTopmost();
        if (const auto caller = core::rowKeyOf(m_callOfBar)) {
            m_context.navigator.addNote(caller->sn);
        }
    });
    connect(m_ui->mnuCopyLastNumber, &QAction::triggered, this,
            [this] { QGuiApplication::clipboard()->setText(core::shownText(m_callOfBar.CallerID)); });
    connect(m_ui->txtLastCallerID, &LastCallerBox::menuClosed, this, &FrmMain::turnToLastCall);
    connect(m_ui->gridCallerId->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) {
                nameOpening(*m_ui->mnuOpenCaller, m_calls.callerOf(current.row()));
            });
    connect(m_ui->gridCallerId, &CallGridView::recordActivated, this, &FrmMain::openCaller);
}

void FrmMain::connectWindowButton(QAction *action, core::Window window)
{
    action->setEnabled(m_context.navigator.canShow(window));
    connect(action, &QAction::triggered, this, [this, window] {
        notTopmost();
        m_context.navigator.show(window);
    });
}

void FrmMain::openCaller(int row)
{
    if (row >= 0) {
        notTopmost();
        ShowEditor(m_context.navigator, m_calls.cell(row, u"CallerID"_s), m_calls.cell(row, u"SimpleDes"_s),
                   m_calls.callerOf(row));
    }
}

void FrmMain::openLastCaller()
{
    notTopmost();
    ShowEditor(m_context.navigator, core::shownText(m_callOfBar.CallerID),
               core::shownText(m_callOfBar.SimpleDes), core::rowKeyOf(m_callOfBar));
}

// As long as the menu is open, its commands are about the call that it was opened for.
void FrmMain::turnToLastCall()
{
    if (m_ui->txtLastCallerID->hasOpenMenu() || m_ui->txtLastCallerID->document()->isEmpty()) {
        return;
    }
    m_callOfBar = m_lastCall;
    const std::optional<core::RowKey> caller = core::rowKeyOf(m_callOfBar);
    m_ui->mnuOpenLastCaller->setEnabled(true);
    m_ui->mnuNoteOfLastCaller->setEnabled(core::isCustomer(caller));
    m_ui->mnuCopyLastNumber->setEnabled(!m_callOfBar.CallerID.isEmpty());
    nameOpening(*m_ui->mnuOpenLastCaller, caller);
}

// A caller who is not on file cannot be edited, only added.
void FrmMain::nameOpening(QAction &action, const std::optional<core::RowKey> &caller) const
{
    action.setText(m_context.texts.Lms(caller ? u"Edit"_s : u"AddCallerTitle"_s));
}

void FrmMain::deleteRunLog()
{
    notTopmost();
    if (m_context.prompts.askOkCancel(m_context.texts.Lms(u"AskDeleteRunlog"_s), {})) {
        m_context.log.erase();
    }
}

void FrmMain::deleteSmsLog()
{
    notTopmost();
    if (m_context.prompts.askOkCancel(m_context.texts.Lms(u"AskDeleteSmsLog"_s), {}) &&
        m_context.commands.eraseShortMessages()) {
        m_sms.clear();
    }
}

void FrmMain::ShowCallerID_tarn(const core::CallRecord &record)
{
    m_calls.ShowCallerID_tarn(record);
    m_screen.schedule();
}

void FrmMain::showEarlierCall(const core::CallRecord &record, int newerCalls)
{
    m_calls.showEarlierCall(record, newerCalls);
}

void FrmMain::showCallAgain(const core::CallRecord &shown, const core::CallRecord &now)
{
    m_calls.showCallAgain(shown, now);
    nameOpening(*m_ui->mnuOpenCaller, m_calls.callerOf(m_ui->gridCallerId->currentIndex().row()));
}

void FrmMain::showLastCaller()
{
    m_changes.lastCaller = true;
    m_screen.schedule();
}

void FrmMain::showSource(const QHostAddress &sender)
{
    m_lastSender = sender;
    m_changes.source = true;
    m_screen.schedule();
}

void FrmMain::showPortAvailable(bool available)
{
    m_portUnavailable = !available;
    updateSource();
}

// The open box may be hidden behind another program's window, so every window of ours in the task bar asks
// for attention.
void FrmMain::showCallWaits(bool waits)
{
    m_callWaits = waits;
    updateSource();
    showTip();
    if (waits) {
        QApplication::alert(nullptr);
    }
}

void FrmMain::showCustomersAvailable(bool available)
{
    m_customersUnavailable = !available;
    updateSource();
}

void FrmMain::showMessageLogs(const QString &troubleKey)
{
    m_messageLogs = troubleKey;
    updateSource();
}

void FrmMain::showCopyFailing(bool isFailing)
{
    m_copyFailing = isFailing;
    updateSource();
}

// A message may be 60,000 characters long; the whole of it stands in the file.
void FrmMain::appendSms(const QString &text)
{
    constexpr qsizetype keptCharacters = 20000;
    m_sms.append(text.left(keptCharacters / 2) + u"\r\n"_s);
    m_sms.keepLast(keptCharacters);
}

void FrmMain::updateScreen()
{
    const Changes changes = std::exchange(m_changes, {});
    m_calls.publish();
    if (changes.lastCaller) {
        const LastCaller caller = m_context.commands.lastCaller();
        m_lastCall = caller.record;
        m_ui->txtLastCallerID->showCall(caller.text, tellsPreviousCall(m_lastCall));
        turnToLastCall();
    }
    m_runInfo.show(*m_ui->txtRuninfo);
    m_sms.show(*m_ui->txtSMS);
    markUnread();
    if (changes.call) {
        signalCall();
    }
    if (changes.source) {
        updateSource();
    }
}

void FrmMain::showUnread(int messages)
{
    m_unreadMessages = messages;
    m_screen.schedule();
}

// Shows in the messages' tab and in the tray's tip how many nobody has seen.
void FrmMain::markUnread()
{
    if (m_unreadMessages > 0 && m_ui->txtSMS->isVisible() && !isMinimized()) {
        m_context.commands.messagesSeen();
    }
    const int tab = m_ui->SSTab1->indexOf(m_ui->pageShortMessages);
    const QString title =
        m_unreadMessages > 0 ? m_messagesTitle + u" (%1)"_s.arg(m_unreadMessages) : m_messagesTitle;
    if (m_ui->SSTab1->tabText(tab) != title) { // each text that is set lays the window out anew
        m_ui->SSTab1->setTabText(tab, title);
    }
    showTip();
}

void FrmMain::showTip()
{
    const int tab = m_ui->SSTab1->indexOf(m_ui->pageShortMessages);
    const QString news = m_callWaits            ? m_context.texts.Lms(u"CallWaits"_s)
                         : m_unreadMessages > 0 ? m_ui->SSTab1->tabText(tab)
                                                : QString();
    m_tray->setTip(news.isEmpty() ? windowTitle() : news + u" - "_s + windowTitle());
}

void FrmMain::updateSource()
{
    const QString separator = m_context.values.WordSeparator;
    if (m_callWaits) {
        m_sourceLabel->setText(m_context.texts.Lms(u"CallWaits"_s));
    } else if (m_portUnavailable) {
        m_sourceLabel->setText(m_context.texts.Lms(u"PortUnavailable"_s));
    } else if (m_customersUnavailable) {
        m_sourceLabel->setText(m_context.texts.Lms(u"CustomersUnavailable"_s));
    } else if (!m_messageLogs.isEmpty()) {
        m_sourceLabel->setText(m_context.texts.Lms(m_messageLogs));
    } else if (m_copyFailing) {
        m_sourceLabel->setText(m_context.texts.Lms(u"CopyFailing"_s));
    } else if (m_lastSender.isNull()) {
        m_sourceLabel->setText(m_context.texts.Lms(u"NoDatagramYet"_s));
    } else {
        const QString received = m_context.log.timeStamp() + u"  "_s + m_lastSender.toString();
        m_sourceLabel->setText(m_context.texts.Lms(u"LastDatagram"_s) + separator +
                               (isRightToLeft() ? core::isolated(received) : received));
    }
}

} // namespace mainwindow
