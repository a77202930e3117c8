#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QStringView>

namespace appearance {

/// One of our line icons by its file name without the ending, drawn in `color`; disabled it is drawn paler.
QIcon themedIcon(QStringView name, const QColor &color);

/// The same as one drawing of `size` device-independent pixels; drawn once and then taken from a cache.
QPixmap themedPixmap(QStringView name, const QColor &color, int size, qreal pixelRatio);

/// The program's own icon, in its own colours.
QIcon programIcon();

} // namespace appearance
