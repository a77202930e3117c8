#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "store/Database.h"
#include "store/SlicedReading.h"

#include <QObject>
#include <QTimer>

#include <optional>

namespace lookup {

/// What the call notes hold of the customer who is calling, read behind the call: in slices, a moment after
/// the last call came, and without waiting for another program's lock.
class CallerNotes : public QObject
{
    Q_OBJECT

public:
    struct Summary
    {
        QString lastDate; ///< "YYYY-MM-DD" of the last note; empty without any
        int open = 0;     ///< requests that are not resolved
    };

    /// Both must outlive the reading.
    CallerNotes(const core::Paths &paths, core::RunLog &log);

    /// Reads for a customer; what is still being read for another one is dropped.
    void read(qint32 sn);
    void drop();

Q_SIGNALS:
    void isRead(const lookup::CallerNotes::Summary &summary);

private:
    void turn();
    void open();
    bool readOn();

    const core::Paths &m_paths;
    core::RunLog &m_log;
    qint32 m_sn = 0;
    Summary m_summary;
    std::optional<store::Database> m_database;
    std::optional<store::SlicedReading> m_reading;
    QTimer m_next;
};

} // namespace lookup
