#pragma once

#include <QWidget>

namespace appearance {

/// Shows a window in front of all others and gives it the keyboard, also where it stands minimized.
void bringToFront(QWidget &window);

/// Shows the window behind the editor, which keeps the keyboard; without one, like bringToFront().
void showBehind(QWidget &window, QWidget *editor);

} // namespace appearance
