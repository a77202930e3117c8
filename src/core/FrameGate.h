#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

namespace core {

/// Gathers changes for one update of the screen: the first comes at once, further ones at most ten times a
/// second.
class FrameGate : public QObject
{
public:
    explicit FrameGate(std::function<void()> update);
    void schedule();

private:
    static constexpr qint64 frameMs = 100;

    std::function<void()> m_update;
    QTimer m_timer;
    QElapsedTimer m_sinceLast;
};

} // namespace core
