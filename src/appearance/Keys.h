#pragma once

#include "core/Navigator.h"

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

} // namespace appearance
