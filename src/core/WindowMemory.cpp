#include "core/WindowMemory.h"

#include "core/AtomicFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace core {

void WindowMemory::load()
{
    constexpr qint64 saneSize = 1 << 20;
    QFile file(m_paths.WindowsFile);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    const QJsonObject windows = QJsonDocument::fromJson(file.read(saneSize)).object();
    for (auto window = windows.begin(); window != windows.end(); ++window) {
        m_geometries.insert(window.key(), QByteArray::fromBase64(window.value().toString().toLatin1()));
    }
}

void WindowMemory::setGeometry(const QString &window, const QByteArray &geometry)
{
    if (m_geometries.value(window) != geometry) {
        m_geometries.insert(window, geometry);
        save();
    }
}

void WindowMemory::save()
{
    m_log.trap("WindowMemory"_L1, [&] {
        QJsonObject windows;
        for (auto window = m_geometries.cbegin(); window != m_geometries.cend(); ++window) {
            windows.insert(window.key(), QString::fromLatin1(window.value().toBase64()));
        }
        saveAtomically(m_paths.WindowsFile, QJsonDocument(windows).toJson());
    });
}

} // namespace core
