#include "core/AtomicFile.h"

#include "core/Error.h"
#include "core/platform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

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

void saveAtomically(const QString &path, QByteArrayView bytes)
{
    refuseReadOnly(path);
    const FileBeside file(path);
    platform::writeFile(file.name(), bytes);
    file.moveIntoPlace();
}

FileBeside::FileBeside(const QString &path) : m_path(path)
{
    do {
        const quint32 number = QRandomGenerator::global()->generate();
        m_name = path + u".%1.new"_s.arg(number, 8, 16, QChar(u'0'));
    } while (!platform::createFile(m_name));
}

FileBeside::~FileBeside()
{
    QFile::remove(m_name);
}

void FileBeside::moveIntoPlace() const
{
    refuseReadOnly(m_path);
    platform::syncFile(m_name);
    platform::replaceFile(m_name, m_path);
}

void removeLeftBeside(const QString &path)
{
    const QFileInfo file(path);
    const QString number = u"[0-9a-f]"_s.repeated(8);
    for (const QFileInfo &left : file.dir().entryInfoList({file.fileName() + u'.' + number + u".new"_s})) {
        QFile::remove(left.filePath());
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
