#include "store/LockPause.h"

#include "store/Database.h"

namespace store {

LockPause::LockPause(std::function<void()> ended)
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(ended));
}

void LockPause::guard(const std::function<void()> &read)
{
    constexpr std::chrono::seconds pause{2};
    try {
        read();
    } catch (const core::Error &error) {
        if (tellsOfLock(error)) {
            m_timer.start(pause);
        }
        throw;
    }
}

} // namespace store
