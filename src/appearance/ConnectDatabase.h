#pragma once

#include "core/RunLog.h"

#include <QAbstractItemModel>
#include <QTableView>

namespace appearance {

/// Shows a result in a grid, and has the grid drawn anew. The result must outlive the grid.
bool ConnectDatabase(core::RunLog &log, QAbstractItemModel &result, QTableView &grid);

} // namespace appearance
