#pragma once

#include "core/platform.h"

#include <QLocalServer>
#include <QString>

#include <functional>

namespace app {

/// Sees to it that one user runs one instance: the first one holds a lock, until its process ends at the
/// latest, and listens for later ones, which only ask it to come to the front.
class SingleInstance
{
public:
    /// Lock and socket stand in `runtimeFolder`.
    explicit SingleInstance(const QString &runtimeFolder);

    /// False when another instance runs. Throws core::Error when the lock cannot be used at all, and when
    /// later instances cannot be heard.
    bool tryToBeFirst();
    /// For the second instance: brings the running one's window to the front.
    void callRunningToFront() const;
    /// For the first instance: what to do when a second one was started.
    void onSecondInstance(std::function<void()> handler);

private:
    QString m_lockFile;
    core::platform::ProcessLock m_lock; ///< of the first instance
    QString m_socketName;
    QLocalServer m_server;
};

} // namespace app
