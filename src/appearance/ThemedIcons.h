#pragma once

#include <QColor>
#include <QIcon>
#include <QStringView>

namespace appearance {

/// One of our line icons by its file name without the ending, drawn in `color`; disabled it is drawn paler.
QIcon themedIcon(QStringView name, const QColor &color);

/// The program's own icon, in its own colours.
QIcon programIcon();

} // namespace appearance
