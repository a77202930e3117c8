#include "store/engine/SqliteFunctions.h"

#include "store/TextMatcher.h"
#include "store/TextOrder.h"
#include "store/engine/SqliteStatement.h"

#include <QByteArrayView>

#include <sqlite3.h>

#include <memory>

namespace store {

namespace {

QByteArrayView textOf(sqlite3_value *value)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return text != nullptr ? QByteArrayView(text, sqlite3_value_bytes(value)) : QByteArrayView("");
}

// `text like pattern` and `text glob pattern`; SQLite passes the pattern first, and keeps the matcher
// made from it for the whole statement.
template <Wildcards wildcards>
void isLike(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
        return sqlite3_result_null(context);
    }
    constexpr int patternLimit = 50000; // SQLite's own
    if (sqlite3_value_bytes(arguments[0]) > patternLimit) {
        return sqlite3_result_error_toobig(context);
    }
    const auto *kept = static_cast<const TextMatcher *>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<TextMatcher> made;
    if (kept == nullptr) {
        made = std::make_unique<TextMatcher>(textOf(arguments[0]), wildcards);
    }
    const TextMatcher &matcher = kept != nullptr ? *kept : *made;
    sqlite3_result_int(context, matcher.matches(textOf(arguments[1])) ? 1 : 0);
    if (made) {
        sqlite3_set_auxdata(context, 0, made.release(),
                            [](void *old) { delete static_cast<TextMatcher *>(old); });
    }
}

int jetOrder(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    return compareJet({static_cast<const char *>(left), leftSize},
                      {static_cast<const char *>(right), rightSize});
}

using Function = void (*)(sqlite3_context *, int, sqlite3_value **);

void add(sqlite3 *engine, const char *name, Function function)
{
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    if (sqlite3_create_function(engine, name, 2, flags, nullptr, function, nullptr, nullptr) != SQLITE_OK) {
        throwSqliteError(engine);
    }
}

} // namespace

void registerFunctions(sqlite3 *engine)
{
    add(engine, "glob", isLike<Wildcards::Asterisk>);
    add(engine, "like", isLike<Wildcards::Percent>);
    if (sqlite3_create_collation(engine, "JET", SQLITE_UTF8, nullptr, jetOrder) != SQLITE_OK) {
        throwSqliteError(engine);
    }
}

} // namespace store
