#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace core {

/// Writes a whole file so that a crash or a full disk leaves either the old contents or the new, never a torn
/// or empty file: a temporary file beside it, synced, then renamed. A file marked read-only is refused.
/// Throws Error.
void saveAtomically(const QString &path, QByteArrayView bytes);

/// An empty file beside another, to be written and then moved into its place. Its name is a random one that
/// was free: it is never a link, nor a file that the operator has there. What is not moved is removed in the
/// end.
class FileBeside
{
public:
    /// Throws Error.
    explicit FileBeside(const QString &path);
    ~FileBeside();
    Q_DISABLE_COPY_MOVE(FileBeside)

    const QString &name() const { return m_name; }
    /// Once it is written and closed: synced, then moved over the other. Throws Error.
    void moveIntoPlace() const;

private:
    QString m_path;
    QString m_name;
};

/// Removes the files that a killed program has left beside this one. Call only while no other writes it.
void removeLeftBeside(const QString &path);

/// Up to `maxBytes` of a file from a position on; empty beyond its end. Throws Error.
QByteArray readBytes(const QString &path, qint64 offset, qint64 maxBytes);

} // namespace core
