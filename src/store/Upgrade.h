#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "store/CustomerPopUpTable.h"

namespace store {

/// Adds the two call-note tables to a customer database that has neither, and the indexes that their searches
/// go through where they are missing. Always true; a failure is logged.
bool UpdateDatabase_Customer_0606191111(core::RunLog &log, const core::Paths &paths);

/// Rebuilds the customer pop-up table from the rows as they stand, then repairs the values that the customer
/// editor cannot load. 1, or 0 after a failure, which is logged; the table keeps its old rows when the
/// reading failed.
qint32 FixCustomerData(core::RunLog &log, const core::Paths &paths, CustomerPopUpTable &table);

/// The same for one customer, who may have been deleted meanwhile: with all others as FixCustomerData left
/// them the outcome is the same, in a few milliseconds. Logs under that name, too.
qint32 FixSavedCustomer(core::RunLog &log, const core::Paths &paths, CustomerPopUpTable &table, qint32 sn);

} // namespace store
