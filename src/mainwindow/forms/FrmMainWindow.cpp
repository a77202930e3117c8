// The main window as a window: its shapes and states, hiding, and being in front.

#include "appearance/Keys.h"
#include "core/platform.h"
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
constexpr qint64 missedKeyMs = 1000; // a key pressed once too often was meant for the window that closed
constexpr QSize fullSize = {960, 600};

} // namespace

void FrmMain::loadShape()
{
    if (!testAttribute(Qt::WA_Resized)) { // not as the last time
        resize(fullSize);
        appearance::FormSetup::fitToScreen(*this);
    }
    showShape(Shape::Full);
}

// Remembers the place first: only the full shape is remembered.
void FrmMain::SetSmallFrmmain()
{
    if (isMaximized()) {
        return;
    }
    rememberPlace();
    m_fullSize = size();
    showShape(Shape::Small);
    const QSize twips(smallWidthTwips, smallHeightTwips);
    resize((twips * logicalDpiX() / twipsPerInch).expandedTo(minimumSizeHint()));
}

void FrmMain::setFullShape()
{
    showShape(Shape::Full);
    resize(m_fullSize.isValid() ? m_fullSize : fullSize);
}

void FrmMain::showShape(Shape shape)
{
    m_shape = shape;
    const bool small = shape == Shape::Small;
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
    if (m_shape == Shape::Full) {
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
    m_changes.call = true;
    m_screen.schedule();
}

QWidget *FrmMain::windowInUse() const
{
    QWidget *active = QApplication::activeWindow();
    return active != this ? active : nullptr;
}

// If the operator turns to another window of the program while this one is on top of all, the other one goes
// in front. It is remembered until it closes.
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

// Signals once for all calls of a frame. The signal ends before a window that a call has brought up hides
// itself: otherwise Qt would believe that the hidden window still asks for attention, and would not ask again
// at the next call.
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

// Nothing that a datagram causes may take the keyboard from the operator. Qt reads the widget's attribute for
// this only when it creates the window, but the window's own property each time that it is shown. A window
// manager gives the keyboard to a window that was minimised, but not to one that was hidden. Whatever ends
// the minimised state, a new place too, shows the window at once, hidden or not, so the window is hidden
// first.
void FrmMain::showNormalQuietly()
{
    constexpr auto quiet = "_q_showWithoutActivating";
    if (isMinimized()) {
        hide();
        core::platform::wantNoKeyboard(winId());
        keepPlace();
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

// Sets the flag on the QWindow behind the widget: changing the widget's own flag would hide it.
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

// Tells each user once where the window has gone. Otherwise he might believe that the program has ended.
void FrmMain::explainTray()
{
    core::WindowMemory &memory = m_context.services.windows;
    const QString name = u"mnuTray"_s;
    if (memory.geometry(name).isEmpty()) {
        memory.setGeometry(name, "explained");
        m_tray->tell(windowTitle(), m_context.texts.Lms(u"HiddenInTray"_s));
    }
}

// A window manager gives a window that comes back a new place unless it asks for its old one.
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

// A hidden window has no frame, so its place would be remembered wrongly; it was remembered when the window
// was hidden.
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

// Once the operator turns to the window it stays, as a window among others.
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
