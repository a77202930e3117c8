#pragma once

#include "RunningProgram.h"
#include "Table.h"

namespace bench {

/// The size of a usual large desk, of the largest, and of the small one that it is compared with.
inline constexpr int usualDesk = 100'000;
inline constexpr int largestDesk = 1'000'000;
inline constexpr int smallDesk = 10'000;

/// The rows of each area. What they measure starts when a row is asked for; the stations must outlive them.
Rows lookupRows(int customers);
Rows customerRows(Stations &stations, int customers);
Rows exportRows(Stations &stations, int customers);
Rows noteRows(Stations &stations);
Rows languageRows(Stations &stations);
Rows receptionRows();
/// The start; without customers memory and languages, too.
Rows startRows(int customers);
/// What grows with the desk, at the largest against the small one.
Rows growthRows(Stations &stations);

} // namespace bench
