#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"

namespace store {

/// Adds the two call-note tables to a customer database that has neither, and the indexes that their searches
/// go through where they are missing. Always true; a failure is logged.
bool UpdateDatabase_Customer_0606191111(core::RunLog &log, const core::Paths &paths);

/// Repairs the values that the customer editor cannot load, in so many rows that it takes some milliseconds.
/// 1, or `moreToFix` where others are left for the next call, or 0 after a failure, which is logged. Who pops
/// up stays the same: a customer without a flag does before it and after.
qint32 FixCustomerData(core::RunLog &log, const core::Paths &paths);
inline constexpr qint32 moreToFix = 2;

/// The same for one customer, who may have been deleted meanwhile. Logs under that name, too.
qint32 FixSavedCustomer(core::RunLog &log, const core::Paths &paths, qint32 sn);

} // namespace store
