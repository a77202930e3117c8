#pragma once

#include "core/TextLookup.h"
#include "store/Database.h"

namespace store {

/// What the operator is told of a database that could not be written to, and, where another desk or program
/// holds it, that this is why.
inline QString notWrittenText(const core::TextLookup &texts, const QString &key, const QString &path)
{
    const QString text = texts.Lms(key);
    return isLocked(path) ? text + u'\n' + texts.Lms(QStringLiteral("HeldElsewhere")) : text;
}

} // namespace store
