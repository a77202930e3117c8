#include "core/AtomicFile.h"

#include "core/Error.h"
#include "core/platform.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace core {

namespace {

void refuseReadOnly(const QString &path)
{
    const QFileInfo old(path);
    if (old.exists() && !(old.permissions() & QFile::WriteOwner)) {
        throw Error(0, u"the file is read-only: "_s + path);
    }
}

} // namespace

void moveIntoPlace(const QString &written, const QString &path)
{
    refuseReadOnly(path);
    platform::syncFile(written);
    platform::replaceFile(written, path);
}

void saveAtomically(const QString &path, QByteArrayView bytes)
{
    refuseReadOnly(path);
    const QString temporary = path + u".new"_s;
    try {
        platform::writeAndSync(temporary, bytes);
        platform::replaceFile(temporary, path);
    } catch (const Error &) {
        QFile::remove(temporary);
        throw;
    }
}

QByteArray readBytes(const QString &path, qint64 offset, qint64 maxBytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(offset)) {
        throw Error(0, file.errorString() + u": "_s + path);
    }
    QByteArray bytes = file.read(maxBytes);
    if (file.error() != QFileDevice::NoError) {
        throw Error(0, file.errorString() + u": "_s + path);
    }
    return bytes;
}

} // namespace core
