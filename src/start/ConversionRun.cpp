#include "start/ConversionRun.h"

namespace start {

namespace {

struct Cancelled : std::exception
{};

} // namespace

ConversionRun::ConversionRun(const QString &folder, const QDate &today)
    : m_report([this, folder, today] { return convert(folder, today); })
{}

ConversionRun::~ConversionRun()
{
    cancel();
}

std::optional<conversion::Report> ConversionRun::convert(const QString &folder, const QDate &today)
{
    try {
        return conversion::convertDesk(folder, today, [this] {
            if (m_cancelled) {
                throw Cancelled();
            }
            ++m_rowsSeen;
        });
    } catch (const Cancelled &) {
        return {};
    }
}

} // namespace start
