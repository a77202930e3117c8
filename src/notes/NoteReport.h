#pragma once

#include "core/RunLog.h"
#include "store/Connection.h"
#include "store/SlicedReading.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace notes {

/// Lays the rows of a note query out as the report: lines of plain text, each ended by CR LF.
class ReportLines
{
public:
    struct Entry
    {
        QString callId;
        QString customerName;
        QString consultant;
        QString dateAndTime;
        bool ifResolved = false;
        QString request;
        QString response;
        QString note;
    };

    explicit ReportLines(core::RunLog &log);

    /// True when the entry begins a call, whose content is then to be given with it.
    bool beginsCall(const Entry &entry) const { return m_callId != entry.callId; }
    void append(const Entry &entry, const QString &content);
    const QString &text() const { return m_text; }

private:
    void line(const QString &text);
    void appendCall(const Entry &entry, const QString &content);
    QString padded(const QString &text, qint32 width) const;

    core::RunLog &m_log;
    QString m_text;
    std::optional<QString> m_customerName; ///< of the entry before
    std::optional<QString> m_callId;
    QString m_requestHeading;
    std::array<QString, 2> m_responseHeadings; ///< not resolved, resolved
    QString m_noteHeading;
};

/// Reads a note query, or the manager's search, through the shared connection and makes its report, in slices
/// of some milliseconds; the file is locked within a slice only.
class NoteReport
{
public:
    /// With `customer` the query asks for that one customer. The log must outlive the report.
    NoteReport(core::RunLog &log, const QString &customerFile, const QString &select,
               const std::optional<QString> &customer = {});

    /// Makes the report longer by one slice; false when it is whole, and after an error.
    bool GetExportContent();
    const QString &text() const { return m_lines.text(); }
    bool hasFailed() const { return m_failed; }

private:
    void open(const QString &select, const std::optional<QString> &customer);
    void append(const store::Row &row);
    QString content(const QString &callId);

    core::RunLog &m_log;
    store::Connection m_connection;
    ReportLines m_lines;
    std::optional<store::SlicedReading> m_reading;
    std::vector<int> m_textColumns; ///< the places of an entry's texts in the select
    int m_ifResolvedColumn = -1;
    bool m_failed = false;
};

} // namespace notes
