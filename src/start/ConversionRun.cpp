#include "start/ConversionRun.h"

using namespace std::chrono_literals;

namespace start {

namespace {

struct Cancelled : std::exception
{};

} // namespace

ConversionRun::ConversionRun(const QString &folder, const QDate &today)
{
    m_report = std::async(std::launch::async, [this, folder, today] {
        return conversion::convertDesk(folder, today, [this] {
            if (m_cancelled) {
                throw Cancelled();
            }
            ++m_rowsSeen;
        });
    });
}

// The future of a thread waits for it when it goes.
ConversionRun::~ConversionRun()
{
    cancel();
}

bool ConversionRun::isDone() const
{
    return m_report.wait_for(0s) == std::future_status::ready;
}

std::optional<conversion::Report> ConversionRun::takeReport()
{
    try {
        return m_report.get();
    } catch (const Cancelled &) {
        return {};
    }
}

} // namespace start
