#pragma once

#include "conversion/DeskConversion.h"

#include <atomic>
#include <future>
#include <optional>

namespace start {

/// A conversion of a desk's folder on a thread of its own, so that the window that shows it stays alive.
class ConversionRun
{
public:
    ConversionRun(const QString &folder, const QDate &today);
    /// Cancels it, and waits for its end.
    ~ConversionRun();
    Q_DISABLE_COPY_MOVE(ConversionRun)

    /// Ends it soon and leaves the folder as it was; too late once the files change places.
    void cancel() { m_cancelled = true; }
    bool isDone() const;
    /// Rows that were copied and rows that were compared, together.
    qint64 rowsSeen() const { return m_rowsSeen; }
    /// Once it is done, and once only. Nothing for one that was cancelled; throws core::Error for one that
    /// failed.
    std::optional<conversion::Report> takeReport();

private:
    std::atomic<bool> m_cancelled = false;
    std::atomic<qint64> m_rowsSeen = 0;
    std::future<conversion::Report> m_report;
};

} // namespace start
