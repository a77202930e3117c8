#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace core {

/// Writes a whole file so that a crash or a full disk leaves either the old contents or the new, never a torn
/// or empty file: a temporary file beside it, synced, then renamed. A file marked read-only is refused.
/// Throws Error.
void saveAtomically(const QString &path, QByteArrayView bytes);

/// The same for a file that was written beside its place already: synced, then moved over `path`. Throws
/// Error; the file then stands where it was.
void moveIntoPlace(const QString &written, const QString &path);

/// Up to `maxBytes` of a file from a position on; empty beyond its end. Throws Error.
QByteArray readBytes(const QString &path, qint64 offset, qint64 maxBytes);

} // namespace core
