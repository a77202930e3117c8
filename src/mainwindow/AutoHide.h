#pragma once

#include <QtGlobal>

namespace mainwindow {

/// Hides a window that a call has brought up, some seconds later, unless the operator turns to it.
class AutoHide
{
public:
    static constexpr qint16 lastTick = 5; ///< ticks are a second apart

    void start()
    {
        m_flag = true;
        m_ticks = 0;
    }
    void clear()
    {
        m_flag = false;
        m_ticks = 0;
    }
    bool isRunning() const { return m_flag; }

    /// One second has passed; true when it is time to hide.
    bool tick()
    {
        if (!m_flag || ++m_ticks < lastTick) {
            return false;
        }
        clear();
        return true;
    }

private:
    bool m_flag = false;
    qint16 m_ticks = 0;
};

} // namespace mainwindow
