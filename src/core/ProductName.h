#pragma once

#include "core/TextLookup.h"

#include <QString>

namespace core {

/// The product name that an OEM mark stands for: its looked-up text, the mark itself where there is none, and
/// no name at all for the text "nothing" in any letter case. A coded name, which begins with "!", is shown as
/// it stands: its decoder belongs to whoever brands a delivery.
QString productName(const QString &oemMark, const TextLookup &texts);

} // namespace core
