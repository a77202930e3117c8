#pragma once

#include "support/Rows.h"
#include "support/TestDesk.h"

/// The rows of the phone book that the tests begin with; the third has nothing but its key.
inline const QString phoneBookRows =
    u"create table phonebook (SN counter, Telno text(255), simpledes text(255), detaildes text(255),"
    " ifinblacklist text(1), IfVIP text(1)); create unique index SN on phonebook (SN);"
    "insert into phonebook values (3, '5550144', 'Miller', 'pays late', 'Y', 'G'),"
    " (5, '9533-12', 'Żółw [new]', 'calls at 5', 'N', 'Y'), (8, null, null, null, null, null),"
    " (9, '5550177', 'Baker', '50% off*', 'N', 'N')"_s;

/// The table as it stands, one line a row.
inline QStringList tableRows(const support::TestDesk &desk)
{
    return support::rowsOf(desk.paths.PhoneBookFile, u"select * from phonebook order by SN"_s).split(u'\n');
}
