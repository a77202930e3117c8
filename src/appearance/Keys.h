#pragma once

#include "core/Navigator.h"

#include <QAbstractButton>
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

/// Opens the page of help at F1. The navigator must outlive the form.
inline void onHelpKey(QWidget &form, core::Navigator &navigator, const QString &helpId)
{
    onKeys(form, QKeySequence::HelpContents, [&navigator, helpId] { navigator.ShowHelp(helpId); });
}

inline bool isEnter(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// What Enter presses in a form that is no dialog: the button that has the keyboard, or else the standard
/// one. A check box is only turned by the space bar.
inline QAbstractButton &buttonOfEnter(const QWidget &form, QAbstractButton &standard)
{
    auto *const focused = qobject_cast<QAbstractButton *>(form.focusWidget());
    return focused != nullptr && !focused->isCheckable() ? *focused : standard;
}

} // namespace appearance
