#pragma once

#include "store/SqlTokens.h"

namespace store {

/// A statement in the given words, in SQLite's words. Throws core::Error for an unclosed quote and for more
/// than one statement.
QString toSqlite(QStringView sql, Wildcards wildcards);

} // namespace store
