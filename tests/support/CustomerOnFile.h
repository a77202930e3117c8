#pragma once

#include "lookup/CustomerFacts.h"
#include "store/Database.h"

namespace support {

/// What a save of that customer, as he now stands in the file, would hand over; nothing once he is deleted.
inline std::optional<lookup::CustomerFacts> customerOnFile(const QString &path, qint32 sn)
{
    store::Database database(path);
    const store::Recordset row =
        database.OpenRecordset(QStringLiteral("select * from customer where SN=%1").arg(sn));
    return row.EOFile() ? std::nullopt : std::optional(lookup::factsOf(row));
}

} // namespace support
