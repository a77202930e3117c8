#pragma once

#include "conversion/DeskConversion.h"
#include "core/Background.h"

#include <atomic>
#include <optional>

namespace start {

/// A conversion of a desk's folder on a thread of its own.
class ConversionRun
{
public:
    ConversionRun(const QString &folder, const QDate &today);
    /// Cancels it, and waits for its end.
    ~ConversionRun();
    Q_DISABLE_COPY_MOVE(ConversionRun)

    /// Ends it soon and leaves the folder as it was; too late once the files change places.
    void cancel() { m_cancelled = true; }
    bool isDone() const { return m_report.isDone(); }
    /// Rows that were copied and rows that were compared, together.
    qint64 rowsSeen() const { return m_rowsSeen; }
    /// Once it is done, and once only. Nothing for one that was cancelled; throws core::Error for one that
    /// failed.
    std::optional<conversion::Report> takeReport() { return m_report.take(); }

private:
    std::optional<conversion::Report> convert(const QString &folder, const QDate &today);

    std::atomic<bool> m_cancelled = false;
    std::atomic<qint64> m_rowsSeen = 0;
    core::Background<std::optional<conversion::Report>> m_report;
};

} // namespace start
