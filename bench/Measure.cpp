#include "Measure.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <malloc.h>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace bench {

double queuedMs(qint64 process)
{
    QFile file(u"/proc/%1/schedstat"_s.arg(process > 0 ? QString::number(process) : u"thread-self"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() / 1e6 : 0;
}

double msOf(const std::function<void()> &work)
{
    const double queuedBefore = queuedMs();
    QElapsedTimer timer;
    timer.start();
    work();
    const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    return ms - (queuedMs() - queuedBefore);
}

double cpuSeconds()
{
    timespec time = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double cpuMsOf(const std::function<void()> &work)
{
    const double before = cpuSeconds();
    work();
    return (cpuSeconds() - before) * 1e3;
}

double heldMb(qint64 process)
{
    QFile file(u"/proc/%1/statm"_s.arg(process > 0 ? QString::number(process) : u"self"_s));
    constexpr double pagesPerMb = 256;
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() / pagesPerMb : 0;
}

double residentMb()
{
    malloc_trim(0);
    return heldMb();
}

void waitUntil(const std::function<bool()> &condition)
{
    constexpr qint64 patienceMs = 300'000;
    QTimer waking;
    waking.start(1);
    const QDeadlineTimer patience(patienceMs);
    while (!condition()) {
        if (patience.hasExpired()) {
            throw std::runtime_error("nothing comes of it within minutes");
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

EventLoopWatch::EventLoopWatch(QObject &watched) : m_watched(watched), m_thread([this] { watch(); }) {}

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
                delivered(waited.count());
            },
            Qt::QueuedConnection);
        m_delivered.wait(false);
        m_delivered = m_ended.load();
        std::this_thread::sleep_for(milliseconds(1));
    }
}

// In the watched thread.
void EventLoopWatch::delivered(double waitedMs)
{
    const double queued = queuedMs();
    const double queuedBefore = std::exchange(m_queuedMs, queued).value_or(queued);
    m_longestMs = std::max(m_longestMs.load(), waitedMs - (queued - queuedBefore));
    m_delivered = true;
    m_delivered.notify_one();
}

Waits::Waits()
{
    m_idle.moveToThread(&m_empty);
    m_empty.start();
}

// What is still posted must not be delivered once its watch is gone.
Waits::~Waits()
{
    m_empty.quit();
    m_empty.wait();
}

} // namespace bench
