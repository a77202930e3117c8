#include "appearance/BringToFront.h"

namespace appearance {

void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void showBehind(QWidget &window, QWidget *editor)
{
    if (editor == nullptr || !editor->isVisible()) {
        return bringToFront(window);
    }
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.setWindowState(window.windowState() & ~(Qt::WindowMinimized | Qt::WindowActive));
    window.show();
    window.raise();
    editor->raise();
    window.setAttribute(Qt::WA_ShowWithoutActivating, false);
}

} // namespace appearance
