#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <cstdio>
#include <utility>

namespace bench {

/// Says a word on standard output, which the benchmark reads line by line.
inline void say(const char *word)
{
    std::puts(word);
    std::fflush(stdout);
}

/// Says "painted" as soon as a window stands on the screen for the first time, its controls included.
class PaintedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    // A window paints itself and every control in the course of one event.
    bool notify(QObject *receiver, QEvent *event) override
    {
        const bool paints = event->type() == QEvent::Paint && receiver->isWidgetType();
        ++m_depth;
        const bool handled = QApplication::notify(receiver, event);
        --m_depth;
        m_painted = m_painted || paints;
        if (m_painted && m_depth == 0 && !std::exchange(m_said, true)) {
            say("painted");
        }
        return handled;
    }

private:
    int m_depth = 0;
    bool m_painted = false;
    bool m_said = false;
};

} // namespace bench
