#pragma once

#include "RecordWriter.h"

namespace sim {

/// `text` on one line and harmless on a terminal: control characters as their visible symbols.
QString visibleText(const QString &text);

/// What the program sent, readable: a short message without its padding, a customer record field by field,
/// any other text as it is.
QString describeAnswer(const QByteArray &bytes, const CodePageChoice &codePage);

} // namespace sim
