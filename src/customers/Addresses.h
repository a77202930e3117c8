#pragma once

#include "core/RunLog.h"
#include "core/Shell.h"

#include <QString>

namespace customers {

/// Opens a web page as the operator has typed it: what does not begin with "http://", in these small letters,
/// or "https://", gets it in front. An empty address does nothing.
void OpenIE(core::RunLog &log, core::Shell &shell, const QString &address);

/// Starts a mail; an empty address does nothing.
void SendEmail(core::RunLog &log, core::Shell &shell, const QString &address);

} // namespace customers
