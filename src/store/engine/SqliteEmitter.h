#pragma once

#include "store/SqlTokens.h"

namespace store {

/// A statement in the given words, in SQLite's words. Throws core::Error for more than one statement.
QString toSqlite(const SqlTokens &sql, Wildcards wildcards);

} // namespace store
