#include "appearance/ConnectDatabase.h"

using namespace Qt::StringLiterals;

namespace appearance {

bool ConnectDatabase(core::RunLog &log, QAbstractItemModel &result, QTableView &grid)
{
    return log.trap("ConnectDatabase"_L1, [&] {
        grid.setModel(&result);
        grid.viewport()->update();
    });
}

} // namespace appearance
