#pragma once

#include <QTimer>

#include <functional>

namespace store {

/// Keeps a grid from waiting for the file anew with each of its rows while another program has locked it: for
/// a while after the first failure nothing is read.
class LockPause
{
public:
    /// `ended` is called when reading may be tried again.
    explicit LockPause(std::function<void()> ended);

    /// Runs `read`, and begins a pause where a lock is what it throws of.
    void guard(const std::function<void()> &read);
    bool isActive() const { return m_timer.isActive(); }
    void stop() { m_timer.stop(); }

private:
    QTimer m_timer;
};

} // namespace store
