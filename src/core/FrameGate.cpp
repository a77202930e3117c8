#include "core/FrameGate.h"

#include <algorithm>
#include <utility>

namespace core {

FrameGate::FrameGate(std::function<void()> update) : m_update(std::move(update))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_pauseMs = std::exchange(m_changes, 0) > floodChanges ? floodFrameMs : frameMs;
        m_update();
        m_sinceLast.start();
    });
}

void FrameGate::schedule()
{
    ++m_changes;
    if (m_timer.isActive()) {
        return;
    }
    const qint64 wait = m_sinceLast.isValid() ? m_pauseMs - m_sinceLast.elapsed() : 0;
    m_timer.start(int(std::max<qint64>(wait, 0)));
}

} // namespace core
