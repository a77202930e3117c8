#pragma once

#include "Ratios.h"

namespace bench {

/// Building both number indexes from real database files, beside the SQLite C interface reading the same
/// columns.
void addIndexLoadRow(std::vector<Row> &rows, int customers);

} // namespace bench
