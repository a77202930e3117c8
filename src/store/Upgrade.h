#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "store/Recordset.h"

namespace store {

/// Adds the two call-note tables to a customer database that has neither, and the indexes that their searches
/// go through where they are missing. Always true; a failure is logged.
bool UpdateDatabase_Customer_0606191111(core::RunLog &log, const core::Paths &paths);

/// Repairs the values that the customer editor cannot load, in so many rows that it takes some milliseconds.
/// 1, or `moreToFix` where others are left for the next call, or 0 after a failure, which is logged. Who pops
/// up stays the same: a customer without a flag does before it and after.
qint32 FixCustomerData(core::RunLog &log, const core::Paths &paths);
inline constexpr qint32 moreToFix = 2;

/// The same of the row that a recordset is about to write, between its Edit or AddNew and its Update. Throws
/// core::Error.
void repairCustomer(Recordset &customer);

} // namespace store
