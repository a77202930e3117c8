#include "store/engine/FileState.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>

namespace store {

namespace {

struct Chain
{
    QByteArray first;
    QByteArray last;
};

// By the absolute path. Each thread has its own: what another one of this desk's has saved is news here.
thread_local QHash<QString, Chain> ownSaves;

} // namespace

QByteArray stampOf(const QString &path)
{
    const QFileInfo file(path);
    return QByteArray::number(file.size()) + ' ' +
           QByteArray::number(file.lastModified().toMSecsSinceEpoch());
}

void rememberOwnSave(const QString &path, const QByteArray &before, const QByteArray &after)
{
    Chain &chain = ownSaves[QFileInfo(path).absoluteFilePath()];
    chain.first = chain.last == before ? chain.first : before;
    chain.last = after;
}

QByteArray withoutOwnSaves(const QString &path, const QByteArray &state)
{
    const Chain chain = ownSaves.value(QFileInfo(path).absoluteFilePath());
    return chain.last == state ? chain.first : state;
}

} // namespace store
