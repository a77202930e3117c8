#pragma once

#include "appearance/RecordGrid.h"
#include "core/TextLookup.h"
#include "store/ResultModel.h"

namespace customers {

/// Gives the rows of the customer table their headings, and puts the usual columns in front.
void titleCustomerColumns(store::ResultModel &rows, const core::TextLookup &texts);

/// Shows the usual columns alone. Call once the rows stand; the operator's own choice then comes on top.
void showUsualCustomerColumns(appearance::RecordGrid &grid);

} // namespace customers
