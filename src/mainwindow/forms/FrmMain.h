#pragma once

#include "appearance/FormSetup.h"
#include "core/CallRecord.h"
#include "core/FrameGate.h"
#include "core/Navigator.h"
#include "core/Paths.h"
#include "core/ProcessValues.h"
#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "core/TextLookup.h"
#include "mainwindow/AutoHide.h"
#include "mainwindow/CallGridModel.h"
#include "mainwindow/forms/LogText.h"
#include "mainwindow/forms/TrayIcon.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>

namespace Ui {
class FrmMain;
}

namespace mainwindow {

/// The call that came last, and what the last-caller box says of it.
struct LastCaller
{
    core::CallRecord record;
    QString text;
};

/// What the main window's controls ask of the program.
class MainWindowCommands
{
public:
    virtual ~MainWindowCommands() = default;
    /// Ends the program, with an empty prompt only after a question; false when the operator cancelled.
    virtual bool byebye(const QString &prompt) = 0;
    /// Runs a built-in sample record through the handling of a received datagram.
    virtual void handleSampleCall() = 0;
    /// The last datagram as the program understood it.
    virtual QString describeLastDatagram() = 0;
    virtual LastCaller lastCaller() = 0;
    /// Deletes the short-message log; false where it stays.
    virtual bool eraseShortMessages() = 0;
    /// The operator sees the received messages.
    virtual void messagesSeen() = 0;
};

/// The program's one permanent window: the calls, the last caller, the run information, the short messages.
/// Closing or hiding it never ends the program.
class FrmMain : public QMainWindow
{
    Q_OBJECT

public:
    /// Everything must outlive the window.
    struct Context
    {
        const core::Paths &paths;
        core::ProcessValues &values;
        core::RunLog &log;
        core::Settings &settings;
        const core::TextLookup &texts;
        core::Prompts &prompts;
        core::Navigator &navigator;
        AutoHide &autoHide;
        MainWindowCommands &commands;
        appearance::FormServices services;
    };

    explicit FrmMain(const Context &context);
    ~FrmMain() override;

    /// Shows all texts anew, those of another language or ones that could not be read before.
    void showTexts();
    /// Where the last datagram came from, for the status line.
    void showSource(const QHostAddress &sender);
    /// Whether the caller-ID port can be received on.
    void showPortAvailable(bool available);
    /// Whether a call waits until an open box is answered.
    void showCallWaits(bool waits);
    /// Whether callers can be identified.
    void showCustomersAvailable(bool available);
    /// The key of what is to be told about the message logs for as long as it lasts; empty where all is well.
    void showMessageLogs(const QString &troubleKey);
    /// Whether the last copy of the desk could not be made.
    void showCopyFailing(bool isFailing);
    void ShowCallerID_tarn(const core::CallRecord &record);
    void showEarlierCall(const core::CallRecord &record, int newerCalls);
    void showCallAgain(const core::CallRecord &shown, const core::CallRecord &now);
    /// Another call is the last one, who is asked for when the screen is updated.
    void showLastCaller();
    /// How many received messages nobody has seen yet.
    void showUnread(int messages);
    /// Puts a line of the short-message log under the last one.
    void appendSms(const QString &text);

    /// Shows the window in its normal state because of a call, without taking the keyboard: in front of the
    /// others, or behind the window of the program that the operator works in. One that was hidden hides
    /// itself again later. The call is told by the task bar, the tray and the yellow bar.
    void showForCall();
    /// A minimised or maximised window becomes normal; a hidden one stays hidden.
    void setNormal();
    /// Shows the window as it last stood, in front of the others.
    void restoreToFront();
    /// Ends being in front of all windows; called before another form opens from here.
    void notTopmost();
    void SetSmallFrmmain();
    void setFullShape();

    /// Takes the icon out of the tray for good and remembers the window's place.
    void prepareToEnd();

    CallGridModel &calls() { return m_calls; }

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    enum class Shape : quint8 { Full, Small };
    /// What has changed since the screen was last updated.
    struct Changes
    {
        bool lastCaller = false;
        bool source = false;
        bool call = false;
    };

    void Form_Load();
    void loadTexts();
    void loadStatusLine();
    void loadGrid();
    void loadBar();
    void loadToolbar();
    void loadLogs();
    void loadTray();
    void loadShape();
    void connectButtons();
    void connectCallers();
    void connectTray();
    void connectSignal();
    void connectWindowButton(QAction *action, core::Window window);
    void applyIcons();
    void chooseLogFont();
    void updateScreen();
    void updateSource();
    void markUnread();
    void showTip();
    void openCaller(int row);
    void openLastCaller();
    void turnToLastCall();
    void nameOpening(QAction &action, const std::optional<core::RowKey> &caller) const;
    void deleteRunLog();
    void deleteSmsLog();
    void hideOrMinimize();
    void keepPlace();
    void setTopmost(bool topmost);
    void showNormalQuietly();
    QWindow *windowInUse() const;
    void yieldTo(QWindow *window);
    void signalCall();
    void showSignal(bool on);
    void explainTray();
    void showShape(Shape shape);
    void rememberPlace();
    void Timer1_Timer();

    Context m_context;
    std::unique_ptr<Ui::FrmMain> m_ui;
    appearance::FormSetup m_setup;
    CallGridModel m_calls;
    LogText m_runInfo;
    LogText m_sms;
    core::FrameGate m_screen;
    std::unique_ptr<TrayIcon> m_tray;
    QLabel *m_sourceLabel;
    QTimer Timer1;
    Changes m_changes;
    Shape m_shape = Shape::Full;
    QSize m_fullSize; ///< to which the small shape grows again
    core::CallRecord m_lastCall;
    core::CallRecord m_callOfBar; ///< the one that the bar's commands speak of
    QString m_messagesTitle;
    int m_unreadMessages = 0;
    QHostAddress m_lastSender;
    bool m_portUnavailable = false;
    bool m_callWaits = false;
    bool m_customersUnavailable = false;
    bool m_copyFailing = false;
    QString m_messageLogs;           ///< the key of what is told about them
    QTimer m_signal;                 ///< runs while a call is told by colours
    QList<QPointer<QWindow>> m_used; ///< the program's, the one that had the keyboard last in front
    QElapsedTimer m_sinceOther; ///< runs from the moment in which the keyboard came back from a closed one
    Qt::WindowStates LastState = Qt::WindowNoState; ///< the state to which the tray restores
};

} // namespace mainwindow
