#pragma once

#include "store/Recordset.h"

#include <QString>
#include <QStringList>

namespace lookup {

/// What a desk knows of a customer without looking into the file, in texts as they stand there. Whoever has
/// saved him hands it over.
struct CustomerFacts
{
    QString numbers; ///< of all columns that hold some, with commas between them
    QString name;
    QString note;
    QString vip;
    bool blackListed = false;
    QString popUpFlag;

    bool operator==(const CustomerFacts &) const = default;
};

/// The columns that hold a customer's numbers, in the order in which they count.
const QStringList &customerNumberColumns();

/// Those of the row that the recordset stands on. Throws core::Error where there is none.
CustomerFacts factsOf(const store::Recordset &customer);

} // namespace lookup
