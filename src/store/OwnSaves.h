#pragma once

#include <QByteArray>
#include <QString>

namespace store {

/// A save that has led a file from one state to another was this desk's own. As long as nobody else saves in
/// between, stateOf() keeps telling the state before the first of them: what a desk itself has saved is no
/// news to it.
void rememberOwnSave(const QString &path, const QByteArray &before, const QByteArray &after);

/// The state of a file without what this desk has saved since somebody else did.
QByteArray withoutOwnSaves(const QString &path, const QByteArray &state);

} // namespace store
