#pragma once

#include "core/RunLog.h"
#include "store/Database.h"

#include <QString>

#include <optional>

namespace store {

/// The shared connection of lists, searches and reports: opened and closed at will, on one file at a time.
/// Its like-patterns use % and _.
class Connection
{
public:
    enum class State { Closed = 0, Open = 1 };

    State state() const { return m_database ? State::Open : State::Closed; }
    /// Throws core::Error as Database does.
    void open(const QString &path);
    void close() { m_database.reset(); }
    /// The opened file. Throws core::Error while closed.
    Database &database();

private:
    std::optional<Database> m_database;
};

/// Opens the connection on the file. One that is open already is left as it is, whatever file it is on.
bool ConnectDatabase(core::RunLog &log, Connection &connection, const QString &path);

/// Counts the rows by walking them; the recordset is left behind its last row.
qint32 GetRecordSetRows(core::RunLog &log, Recordset &recordset);

/// Pads `text` to `width` characters with copies of `fill`, behind it or in front; a longer text is never
/// cut. Empty when there is nothing to fill with.
QString FillString(core::RunLog &log, const QString &text, bool padAtEnd, qint32 width, const QString &fill);

} // namespace store
