#pragma once

#include <QWidget>

#include <functional>

namespace appearance {

/// Does the work, from the event loop and in the lifetime of `receiver`, when the field has lost the keyboard
/// to another control. From its own list of choices, and from another window, the operator comes back to it:
/// it is not left.
void onLeft(QWidget &field, QObject &receiver, const std::function<void()> &work);

/// Does the work as soon as no mouse button is held down and no question is open, unless the form is closed
/// by then. A box that opens between the press and the release of a button would swallow the click, and one
/// that the click itself has opened would be covered.
void whenReleased(QWidget &form, const std::function<void()> &work);

} // namespace appearance
