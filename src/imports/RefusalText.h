#pragma once

#include "core/TextLookup.h"
#include "imports/RowReading.h"

namespace imports {

/// A row that was refused and why, in one line for the operator.
QString refusalText(const core::TextLookup &texts, const ListTarget &target, const RefusedRow &refused);

/// What the operator reads of a field.
QString captionOf(const core::TextLookup &texts, const TargetField &field);

} // namespace imports
