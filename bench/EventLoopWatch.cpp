#include "EventLoopWatch.h"

#include <algorithm>
#include <chrono>

namespace bench {

EventLoopWatch::EventLoopWatch() : m_thread([this] { watch(); }) {}

EventLoopWatch::~EventLoopWatch()
{
    m_ended = true;
    m_delivered = true;
    m_delivered.notify_one();
    m_thread.join();
}

void EventLoopWatch::watch()
{
    using namespace std::chrono;
    while (!m_ended) {
        const auto posted = steady_clock::now();
        QMetaObject::invokeMethod(
            &m_watched,
            [this, posted] {
                const duration<double, std::milli> waited = steady_clock::now() - posted;
                m_longestMs = std::max(m_longestMs, waited.count());
                m_delivered = true;
                m_delivered.notify_one();
            },
            Qt::QueuedConnection);
        m_delivered.wait(false);
        m_delivered = m_ended.load();
        std::this_thread::sleep_for(milliseconds(1));
    }
}

} // namespace bench
