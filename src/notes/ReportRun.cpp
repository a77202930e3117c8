#include "notes/ReportRun.h"

namespace notes {

ReportRun::ReportRun(core::RunLog &log, const QString &customerFile, const QString &select,
                     const std::optional<QString> &customer, QObject *parent)
    : QObject(parent), m_report(log, customerFile, select, customer)
{
    connect(&m_timer, &QTimer::timeout, this, &ReportRun::goOn);
    m_timer.start(0);
}

void ReportRun::goOn()
{
    if (!m_report.GetExportContent()) {
        m_timer.stop();
        deleteLater();
        m_report.hasFailed() ? Q_EMIT failed() : Q_EMIT finished(m_report.text());
    }
}

} // namespace notes
