#pragma once

#include <QWidget>

#include <functional>

namespace appearance {

/// Does the work as soon as no mouse button is held down, unless the form is closed by then. A box that opens
/// between the press and the release of a button would swallow the click.
void whenReleased(QWidget &form, const std::function<void()> &work);

} // namespace appearance
