// The main window as a window: its shapes and states, hiding, and being in front.

#include "appearance/ThemedIcons.h"
#include "mainwindow/FrmMain.h"
#include "ui_FrmMain.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

constexpr int smallWidthTwips = 7000;
constexpr int smallHeightTwips = 2100;
constexpr QSize fullSize = {960, 600};

} // namespace

void FrmMain::loadShape()
{
    m_shape = u"SMALL"_s;
    if (m_context.services.windows.geometry(objectName()).isEmpty()) {
        resize(fullSize);
    }
    showShape(false);
}

void FrmMain::SetSmallFrmmain()
{
    if (isMaximized()) {
        return;
    }
    m_fullSize = size();
    showShape(true);
    const int dpi = logicalDpiX();
    resize(QSize(smallWidthTwips * dpi / 1440, smallHeightTwips * dpi / 1440).expandedTo(minimumSizeHint()));
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
    m_ui->Toolbar1->setToolButtonStyle(small ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon);
    m_ui->actSmallShape->setVisible(!small);
    m_ui->actFullShape->setVisible(small);
    // What was hidden counts for the smallest size until the layouts have taken notice.
    m_ui->mainLayout->activate();
    layout()->activate();
}

void FrmMain::showForCall()
{
    const bool away = !isVisible() || isMinimized();
    if (away) {
        m_context.autoHide.start();
        setTopmost(true);
        setAttribute(Qt::WA_ShowWithoutActivating);
    }
    if (away || windowState() != Qt::WindowNoState) {
        showNormal();
        raise();
    }
    setAttribute(Qt::WA_ShowWithoutActivating, false);
}

void FrmMain::setNormal()
{
    if (isVisible() && windowState() != Qt::WindowNoState) {
        showNormal();
    }
}

void FrmMain::restoreToFront()
{
    m_context.autoHide.clear();
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

// Changing the flag hides a window, so one that stands is shown again at once.
void FrmMain::setTopmost(bool topmost)
{
    if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == topmost) {
        return;
    }
    const bool visible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
    if (visible) {
        show();
    }
}

void FrmMain::hideOrMinimize()
{
    m_context.autoHide.clear();
    m_setup.rememberGeometry(*this);
    LastState = windowState() & ~Qt::WindowMinimized;
    if (m_tray->isReachable()) {
        keepPlace();
        hide();
        setTopmost(false);
    } else {
        showMinimized();
    }
}

// A window manager finds a new place for a window that comes back, unless the window asks for one.
void FrmMain::keepPlace()
{
    if (windowState() == Qt::WindowNoState) {
        windowHandle()->setFramePosition(windowHandle()->framePosition());
    }
}

void FrmMain::Timer1_Timer()
{
    if (m_context.autoHide.tick()) {
        hideOrMinimize();
    }
}

void FrmMain::prepareToEnd()
{
    m_setup.rememberGeometry(*this);
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
    if (event->key() == Qt::Key_Escape) {
        hideOrMinimize();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

void FrmMain::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_tray != nullptr) {
        applyIcons();
    } else if (event->type() == QEvent::WindowStateChange && !isMinimized() && isVisible()) {
        LastState = windowState();
    }
}

// An operator who has turned to the window keeps it.
bool FrmMain::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        m_context.autoHide.clear();
    }
    return QMainWindow::event(event);
}

} // namespace mainwindow
