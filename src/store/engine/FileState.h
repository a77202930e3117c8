#pragma once

#include <QByteArray>
#include <QString>

namespace store {

/// What tells one state of a file from another without opening it; one that is missing has a state, too.
QByteArray stampOf(const QString &path);

/// A save that has led a file from one state to another was this desk's own. As long as nobody else saves in
/// between, its state without own saves stays that before the first of them: what a desk itself has saved is
/// no news to it.
void rememberOwnSave(const QString &path, const QByteArray &before, const QByteArray &after);
QByteArray withoutOwnSaves(const QString &path, const QByteArray &state);

} // namespace store
