#pragma once

#include "lookup/NumberIndex.h"
#include "store/CustomerPopUpTable.h"

#include <QStringView>

namespace lookup {

/// Whether a call from this number pops up: it does when a customer holds the number and that customer's
/// pop-up flag is not "0".
bool callerPopsUp(NumberIndex &numbers, const store::CustomerPopUpTable &flags, QStringView callerNumber);

} // namespace lookup
