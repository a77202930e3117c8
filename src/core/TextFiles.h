#pragma once

#include "core/RunLog.h"

#include <QString>

namespace core {

/// Appends `text` and a line end (CR LF) to the file in UTF-8, creating it when missing. True on success.
bool SaveTextFile(RunLog &log, const QString &path, const QString &text);

/// The file's lines, each followed by CR LF; "" when the file is missing or empty. Reads UTF-8.
QString ReadTextFile(RunLog &log, const QString &path);

} // namespace core
