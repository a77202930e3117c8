#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

namespace core {

/// Gathers changes for one update of the screen: the first comes at once, further ones at most ten times a
/// second; in a flood, which nobody reads along, four times.
class FrameGate : public QObject
{
public:
    explicit FrameGate(std::function<void()> update);
    void schedule();

private:
    static constexpr int frameMs = 100;
    static constexpr int floodFrameMs = 250;
    static constexpr int floodChanges = 500; ///< between two updates; a call is several, with its log lines

    std::function<void()> m_update;
    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    int m_changes = 0; ///< since the last update
    int m_pauseMs = frameMs;
};

} // namespace core
