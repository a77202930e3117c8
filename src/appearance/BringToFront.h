#pragma once

#include <QWidget>

namespace appearance {

/// Shows a window in front of all others and gives it the keyboard, also where it stands minimized.
void bringToFront(QWidget &window);

} // namespace appearance
