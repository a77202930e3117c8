#include "app/SingleInstance.h"

#include "core/Error.h"

#include <QLocalSocket>

using namespace Qt::StringLiterals;

namespace app {

SingleInstance::SingleInstance(const QString &runtimeFolder)
    : m_lockFile(runtimeFolder + u"/calldesk.lock"_s), m_socketName(runtimeFolder + u"/calldesk.socket"_s)
{}

bool SingleInstance::tryToBeFirst()
{
    m_lock = core::platform::takeProcessLock(m_lockFile);
    if (!m_lock) {
        return false;
    }
    QLocalServer::removeServer(m_socketName); // left behind by a killed process: we hold the lock
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server.listen(m_socketName)) {
        throw core::Error(int(m_server.serverError()), m_server.errorString() + u": "_s + m_socketName);
    }
    return true;
}

void SingleInstance::callRunningToFront() const
{
    constexpr int patienceMs = 500;
    core::platform::allowOthersToFront();
    QLocalSocket socket;
    socket.connectToServer(m_socketName);
    socket.waitForConnected(patienceMs);
    socket.disconnectFromServer();
}

void SingleInstance::onSecondInstance(std::function<void()> handler)
{
    QObject::connect(
        &m_server, &QLocalServer::newConnection, &m_server, [this, handler = std::move(handler)] {
            while (QLocalSocket *caller = m_server.nextPendingConnection()) {
                QObject::connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
                handler();
            }
        });
}

} // namespace app
