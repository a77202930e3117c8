#pragma once

struct sqlite3;

namespace store {

/// Gives one connection what the given words need beyond SQLite's own: like-patterns that ignore case in
/// every script, and the text order JET. Throws core::Error.
void registerFunctions(sqlite3 *engine);

} // namespace store
