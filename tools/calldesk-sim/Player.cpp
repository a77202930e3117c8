#include "Player.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sim {

namespace {

using SteadyClock = std::chrono::steady_clock;

void waitUntil(SteadyClock::time_point due, const Stage &stage)
{
    using namespace std::chrono_literals;
    const auto remaining = due - SteadyClock::now();
    if (remaining > 2ms) {
        stage.wait(remaining - 1ms);
    }
    while (SteadyClock::now() < due) {
    }
}

double secondsBetween(SteadyClock::time_point from, SteadyClock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}

} // namespace

PlayReport play(const DatagramSeries &series, const Stage &stage)
{
    PlayReport report;
    const SteadyClock::time_point start = SteadyClock::now();
    for (qint64 i = 0; i < series.count(); ++i) {
        const auto due = start + std::chrono::nanoseconds(series.due(i));
        waitUntil(due, stage);
        const QString line = series.say(i);
        if (!line.isEmpty()) {
            stage.say(line);
        }
        stage.send(series.datagram(i, QDateTime::currentDateTime()));
        report.seconds = secondsBetween(start, SteadyClock::now());
        report.worstLateness = std::max(report.worstLateness, secondsBetween(due, SteadyClock::now()));
        report.afterFirstBurst += series.due(i) > 0 ? 1 : 0;
        ++report.sent;
    }
    return report;
}

QString describe(const PlayReport &report)
{
    QString text = report.sent == 1 ? u"1 datagram"_s : u"%1 datagrams"_s.arg(report.sent);
    const qint64 timed = report.afterFirstBurst > 0 ? report.afterFirstBurst : report.sent;
    if (report.sent > 1) {
        text += u" in %1 s, %2 a second"_s.arg(report.seconds, 0, 'f', 3)
                    .arg(static_cast<double>(timed) / report.seconds, 0, 'f', 0);
    }
    if (report.afterFirstBurst > 0) {
        text += u", at most %1 ms late"_s.arg(report.worstLateness * 1000, 0, 'f', 1);
    }
    return text;
}

} // namespace sim
