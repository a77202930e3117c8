#include "store/Connection.h"

using namespace Qt::StringLiterals;

namespace store {

void Connection::open(const QString &path)
{
    m_database.emplace(path, Database::Mode::ReadWrite, Wildcards::Percent);
}

Database &Connection::database()
{
    if (!m_database) {
        throw core::Error(0, u"the connection is closed"_s);
    }
    return *m_database;
}

bool ConnectDatabase(core::RunLog &log, Connection &connection, const QString &path)
{
    return log.trap("ConnectDatabase"_L1, [&] {
        if (connection.state() != Connection::State::Open) {
            connection.open(path);
        }
    });
}

qint32 GetRecordSetRows(core::RunLog &log, Recordset &recordset)
{
    return log.trap("GetRecordSetRows"_L1, 0, [&] {
        qint32 rows = 0;
        if (recordset.RecordCount() == 0) {
            return rows;
        }
        for (recordset.MoveFirst(); !recordset.EOFile(); recordset.MoveNext()) {
            ++rows;
        }
        return rows;
    });
}

QString FillString(core::RunLog &log, const QString &text, bool padAtEnd, qint32 width, const QString &fill)
{
    return log.trap("FillString"_L1, QString(), [&] {
        const qsizetype missing = width - text.size();
        if (missing <= 0) {
            return text;
        }
        if (fill.isEmpty()) {
            throw core::Error(0, u"there is nothing to fill with"_s);
        }
        const QString copies = fill.repeated((missing + fill.size() - 1) / fill.size());
        return padAtEnd ? (text + copies).left(width) : (copies + text).right(width);
    });
}

} // namespace store
