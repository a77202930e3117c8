#pragma once

#include "core/Paths.h"

namespace start {

/// The language for what is shown before the desk's own files are read: the one of the settings, where the
/// program was built with it, else the system's or English. Writes nothing, not even to the run log.
QString startLanguage(const core::Paths &paths, quint16 systemLanguageId);

} // namespace start
