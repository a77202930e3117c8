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
    /// Comes once and also after an error, then with the part that could be read.
    void finished(const QString &report);

private:
    void goOn();

    NoteReport m_report;
    QTimer m_timer;
};

} // namespace notes
