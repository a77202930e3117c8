#include "core/AtomicFile.h"
#include "store/Handle.h"
#include "store/SqlDialect.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace store {

namespace {

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
    const core::FileBeside beside(path);
    try {
        Database database(std::make_shared<Database::Handle>(beside.name(), Database::Options(),
                                                             Database::Handle::File::New));
        database.transaction([&] {
            for (const QString &statement : statementsOf(schemaSql)) {
                database.Execute(statement);
            }
            fill(database);
        });
    } catch (...) {
        QFile::remove(beside.name() + u"-journal"_s);
        throw;
    }
    QFile built(beside.name());
    if (!built.rename(path)) {
        throw core::Error(0, built.errorString() + u": "_s + path);
    }
}

} // namespace store
