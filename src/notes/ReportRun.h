#pragma once

#include "notes/NoteReport.h"

#include <QObject>
#include <QTimer>

namespace notes {

/// Makes a report while the event loop goes on, one slice a turn. Ends early when it is deleted.
class ReportRun : public QObject
{
    Q_OBJECT

public:
    ReportRun(core::RunLog &log, const QString &customerFile, const QString &select,
              const std::optional<QString> &customer, QObject *parent);

Q_SIGNALS:
    /// One of the two comes, once; the error stands in the run log.
    void finished(const QString &report);
    void failed();

private:
    void goOn();

    NoteReport m_report;
    QTimer m_timer;
};

} // namespace notes
