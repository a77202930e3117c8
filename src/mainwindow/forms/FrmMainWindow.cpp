// The main window as a window: its shapes and states, hiding, and being in front.

#include "appearance/Keys.h"
#include "mainwindow/forms/FrmMain.h"
#include "ui_FrmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QToolButton>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

constexpr int smallWidthTwips = 7000;
constexpr int smallHeightTwips = 2100;
constexpr int twipsPerInch = 1440;
constexpr qint64 missedKeyMs = 1000; // a key pressed once too often was meant for the window that closed
constexpr QSize fullSize = {960, 600};

} // namespace

void FrmMain::loadShape()
{
    if (!testAttribute(Qt::WA_Resized)) { // not as the last time
        resize(fullSize);
        appearance::FormSetup::fitToScreen(*this);
    }
    showShape(false);
}

bool FrmMain::isSmall() const
{
    return m_shape == "SMALL"_L1;
}

// The full shape is the one to be remembered.
void FrmMain::SetSmallFrmmain()
{
    if (isMaximized()) {
        return;
    }
    rememberPlace();
    m_fullSize = size();
    showShape(true);
    const QSize twips(smallWidthTwips, smallHeightTwips);
    resize((twips * logicalDpiX() / twipsPerInch).expandedTo(minimumSizeHint()));
}

void FrmMain::setFullShape()
{
    showShape(false);
    resize(m_fullSize.isValid() ? m_fullSize : fullSize);
}

void FrmMain::showShape(bool small)
{
    m_shape = small ? u"SMALL"_s : u"FULL"_s;
    m_ui->SSTab1->setVisible(!small);
    m_ui->statusbar->setVisible(!small);
    const Qt::ToolButtonStyle style = small ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon;
    m_ui->Toolbar1->setToolButtonStyle(style);
    for (QToolButton *button :
         {m_ui->cmdOpenLastCaller, m_ui->cmdNoteOfLastCaller, m_ui->cmdCopyLastNumber}) {
        button->setToolButtonStyle(style);
    }
    m_ui->cmdSmallShape->setVisible(!small);
    m_ui->cmdFullShape->setVisible(small);
    m_ui->mainLayout->activate(); // the least size is asked for next
    layout()->activate();
    m_screen.schedule();
}

void FrmMain::rememberPlace()
{
    if (!isSmall()) {
        m_setup.rememberGeometry();
    }
}

void FrmMain::showForCall()
{
    QWidget *inUse = windowInUse();
    const bool away = !isVisible() || isMinimized();
    if (away || m_context.autoHide.isRunning()) {
        m_context.autoHide.start();
    }
    if (away) {
        setTopmost(inUse == nullptr);
    }
    if (away || windowState() != Qt::WindowNoState) {
        showNormalQuietly();
        if (inUse != nullptr) { // window managers put what is shown on top of all
            inUse->raise();
        }
    }
    m_callCame = true;
    m_screen.schedule();
}

QWidget *FrmMain::windowInUse() const
{
    QWidget *active = QApplication::activeWindow();
    return active != this ? active : nullptr;
}

// Whoever turns to another window of the program while this one stands on top of all has that one in front.
// It is kept in mind for the moment in which it closes.
void FrmMain::yieldTo(QWindow *window)
{
    if (window == windowHandle() && m_otherHadFocus && (m_other == nullptr || !m_other->isVisible())) {
        m_sinceOther.start();
    }
    if (window != nullptr) {
        m_otherHadFocus = window != windowHandle();
        m_other = m_otherHadFocus ? window : nullptr;
    }
    const bool topmost =
        windowHandle() != nullptr && windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
    if (topmost && window != nullptr && window != windowHandle()) {
        setTopmost(false);
        window->raise();
    }
}

void FrmMain::connectSignal()
{
    m_signal.setSingleShot(true);
    connect(&m_signal, &QTimer::timeout, this, [this] { showSignal(false); });
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &FrmMain::yieldTo);
}

// Once for all calls of a frame. It ends before a window that a call brought up hides itself: the toolkit
// would believe that the hidden one still asks for attention, and not ask for the next call.
void FrmMain::signalCall()
{
    constexpr std::chrono::milliseconds moment(4000);
    m_ui->SSTab1->setCurrentWidget(m_ui->pageCalls);
    if (windowInUse() == nullptr) {
        raise();
    }
    QApplication::alert(this, int(moment.count()));
    showSignal(true);
    m_signal.start(moment);
}

void FrmMain::showSignal(bool on)
{
    m_ui->txtLastCallerID->setSignalling(on);
    m_tray->setSignalling(on);
}

void FrmMain::setNormal()
{
    if (isVisible() && windowState() != Qt::WindowNoState) {
        showNormalQuietly();
    }
}

// Nothing that a datagram causes takes the keyboard from what the operator types. The widget's attribute for
// this is read only when its window is made, the window's own property each time that it is shown. A
// minimised window gets the keyboard from the window manager, a hidden one does not.
void FrmMain::showNormalQuietly()
{
    constexpr auto quiet = "_q_showWithoutActivating";
    if (isMinimized()) {
        keepPlace();
        hide();
    }
    if (isMaximized() && !isVisible()) { // the window system gives a hidden one no size back
        const QRect normal = normalGeometry();
        setWindowState(Qt::WindowNoState);
        setGeometry(normal);
    }
    windowHandle()->setProperty(quiet, true);
    showNormal();
    windowHandle()->setProperty(quiet, {});
}

void FrmMain::restoreToFront()
{
    notTopmost();
    setWindowState(LastState & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void FrmMain::notTopmost()
{
    m_context.autoHide.clear();
    setTopmost(false);
}

// On the window behind the widget: changing the widget's own flag would hide it.
void FrmMain::setTopmost(bool topmost)
{
    create();
    windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
}

void FrmMain::hideOrMinimize()
{
    m_context.autoHide.clear();
    rememberPlace();
    LastState = windowState() & ~Qt::WindowMinimized;
    setTopmost(false);
    if (m_tray->isReachable()) {
        keepPlace();
        hide();
        explainTray();
    } else {
        showMinimized();
    }
}

// Who does not know where the window has gone believes that the program has ended. Told to a user once.
void FrmMain::explainTray()
{
    core::WindowMemory &memory = m_context.services.windows;
    const QString name = u"mnuTray"_s;
    if (memory.geometry(name).isEmpty()) {
        memory.setGeometry(name, "explained");
        m_tray->tell(windowTitle(), m_context.texts.Lms(u"HiddenInTray"_s));
    }
}

// A window manager finds a new place for a window that comes back, unless the window asks for one.
void FrmMain::keepPlace()
{
    if (!isMaximized()) {
        move(pos());
        windowHandle()->setFramePosition(windowHandle()->framePosition());
    }
}

void FrmMain::Timer1_Timer()
{
    if (m_context.autoHide.tick()) {
        hideOrMinimize();
    }
}

// A hidden window has no frame and would be remembered without it; it was remembered when it was hidden.
void FrmMain::prepareToEnd()
{
    if (isVisible()) {
        rememberPlace();
    }
    m_tray->remove();
    Timer1.stop();
}

void FrmMain::closeEvent(QCloseEvent *event)
{
    event->ignore();
    hideOrMinimize();
}

void FrmMain::keyPressEvent(QKeyEvent *event)
{
    const bool enter = appearance::isEnter(*event) && !event->isAutoRepeat();
    if (event->key() == Qt::Key_Escape) {
        if (!m_sinceOther.isValid() || m_sinceOther.hasExpired(missedKeyMs)) {
            hideOrMinimize();
        }
    } else if (auto *button = qobject_cast<QToolButton *>(focusWidget()); button != nullptr && enter) {
        button->click(); // by itself it knows the blank only
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

void FrmMain::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_tray != nullptr) {
        applyIcons();
    } else if (event->type() == QEvent::WindowStateChange) {
        m_ui->cmdSmallShape->setEnabled(!isMaximized());
        LastState = isMinimized() || !isVisible() ? LastState : windowState();
    }
}

// An operator who has turned to the window keeps it, among the others.
bool FrmMain::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        notTopmost();
    } else if (event->type() == QEvent::Show) {
        m_screen.schedule(); // what changed while it was hidden
    }
    return QMainWindow::event(event);
}

} // namespace mainwindow
