#pragma once

#include "core/CodePage.h"

#include <QString>

#include <optional>

namespace messages {

/// The record of a short message (docs/formats.md): fields of 50, 50 and 100 byte columns of the code page,
/// then "{{{", the text and "}}}". A destination that is too long is cut, never within a character.
QString smsRecord(const QString &sendTo, const QString &text, const core::CodePage &codePage);

/// As much of a text as fits with its record into one datagram, in whole characters; line ends are CR LF.
QString sendableText(const QString &text, const core::CodePage &codePage);

/// The message text of a received record, whose double-byte destination may make it shorter than its columns.
/// Nothing for a record that ends with its fields; throws core::Error for one too short to hold its
/// delimiters.
std::optional<QString> smsText(const QString &record);

} // namespace messages
