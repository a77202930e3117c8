#include "store/Handle.h"
#include "store/SqlDialect.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace store {

namespace {

void removeRemains(const QString &path)
{
    QFile::remove(path);
    QFile::remove(path + u"-journal"_s);
}

void refuseExisting(const QString &path)
{
    if (QFile::exists(path)) {
        throw core::Error(0, u"the file exists: "_s + path);
    }
}

} // namespace

void createDatabase(const QString &path, const QString &schemaSql,
                    const std::function<void(Database &)> &fill)
{
    refuseExisting(path);
    const QString beside = path + u".new"_s;
    removeRemains(beside);
    try {
        Database database(
            std::make_shared<Database::Handle>(beside, Database::Options(), Database::Handle::File::New));
        database.transaction([&] {
            for (const QString &statement : statementsOf(schemaSql)) {
                database.Execute(statement);
            }
            fill(database);
        });
    } catch (...) {
        removeRemains(beside);
        throw;
    }
    QFile built(beside);
    if (!built.rename(path)) {
        removeRemains(beside);
        throw core::Error(0, built.errorString() + u": "_s + path);
    }
}

} // namespace store
