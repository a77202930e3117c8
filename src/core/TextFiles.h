#pragma once

#include "core/RunLog.h"

#include <QString>

#include <limits>

namespace core {

/// Appends `text` and a line end (CR LF) to the file in UTF-8, creating it when missing. True on success.
bool SaveTextFile(RunLog &log, const QString &path, const QString &text);

/// The file's lines, each followed by CR LF; "" when the file is missing or empty. Reads UTF-8. Of a longer
/// file than `atMost` bytes only the last lines that fit.
QString ReadTextFile(RunLog &log, const QString &path, qint64 atMost = std::numeric_limits<qint64>::max());

} // namespace core
