#pragma once

#include <QApplication>
#include <QColor>
#include <QPalette>

namespace appearance {

/// Colours that a palette has no role for.
struct CallColors
{
    QColor lastCallerBar;     ///< the yellow bar of the last caller
    QColor newCallBar;        ///< the same while the call is new
    QColor lastCallerText;    ///< its number and name
    QColor lastCallerDetails; ///< its second line
};

/// Fusion style and the palette for light or dark.
void applyTheme(QApplication &application, bool dark);

QPalette themePalette(bool dark);
CallColors callColors(const QPalette &palette);

/// How well two colours can be told apart: 1 to 21. Text is read from 4.5 on, lines and edges are seen from 3
/// on.
double contrast(const QColor &one, const QColor &other);
constexpr double readableContrast = 4.5;

/// Dark means that text is lighter than its ground.
bool isDark(const QPalette &palette);

} // namespace appearance
