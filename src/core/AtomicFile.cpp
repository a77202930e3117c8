#include "core/AtomicFile.h"

#include "core/Error.h"
#include "core/platform.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace core {

void saveAtomically(const QString &path, QByteArrayView bytes)
{
    const QFileInfo old(path);
    if (old.exists() && !(old.permissions() & QFile::WriteOwner)) {
        throw Error(0, u"the file is read-only: "_s + path);
    }
    const QString temporary = path + u".new"_s;
    try {
        platform::writeAndSync(temporary, bytes);
        platform::replaceFile(temporary, path);
    } catch (const Error &) {
        QFile::remove(temporary);
        throw;
    }
}

} // namespace core
