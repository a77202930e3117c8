#pragma once

#include "core/TextUtilities.h"

#include <QLineEdit>

namespace appearance {

/// From now on the form's title begins with the name that stands in the box. Call once its title is
/// translated.
inline void nameInTitle(QWidget &form, const QLineEdit &name)
{
    QObject::connect(&name, &QLineEdit::textChanged, &form,
                     [&form, title = form.windowTitle()](const QString &text) {
                         form.setWindowTitle(core::titleOf(text, title));
                     });
}

} // namespace appearance
