#pragma once

#include <QWidget>

#include <functional>

namespace appearance {

/// True for the event of a field that loses the keyboard to another control. From its own list of choices,
/// and from another window, the operator comes back to it.
bool leavesField(const QEvent &event);

/// Does the work as soon as no mouse button is held down and no question is open, unless the form is closed
/// by then. A box that opens between the press and the release of a button would swallow the click, and one
/// that the click itself has opened would be covered.
void whenReleased(QWidget &form, const std::function<void()> &work);

} // namespace appearance
