#include "store/EngineFunctions.h"

#include "store/Statement.h"
#include "store/TextOrder.h"

#include <QByteArrayView>

#include <sqlite3.h>

namespace store {

namespace {

void isNull(sqlite3_context *context, int, sqlite3_value **arguments)
{
    sqlite3_result_int(context, sqlite3_value_type(arguments[0]) == SQLITE_NULL ? 1 : 0);
}

int jetOrder(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    return compareJet({static_cast<const char *>(left), leftSize},
                      {static_cast<const char *>(right), rightSize});
}

} // namespace

void registerFunctions(sqlite3 *engine)
{
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    bool good = sqlite3_create_function_v2(engine, "isnull", 1, flags, nullptr, isNull, nullptr, nullptr,
                                           nullptr) == SQLITE_OK;
    good = good &&
           sqlite3_create_collation_v2(engine, "JET", SQLITE_UTF8, nullptr, jetOrder, nullptr) == SQLITE_OK;
    if (!good) {
        throwEngineError(engine);
    }
}

} // namespace store
