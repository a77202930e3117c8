#pragma once

#include <QKeyEvent>
#include <QKeySequence>
#include <QShortcut>
#include <QWidget>

namespace appearance {

/// Does the work when the keys are pressed anywhere in the form.
template <typename Work>
void onKeys(QWidget &form, const QKeySequence &keys, Work work)
{
    QObject::connect(new QShortcut(keys, &form), &QShortcut::activated, &form, work);
}

inline bool isEnter(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace appearance
