#include "IndexLoad.h"

#include "DeskData.h"

#include "core/Paths.h"
#include "core/QtClock.h"
#include "core/RunLog.h"
#include "lookup/NumberIndex.h"

#include <QTemporaryDir>

#include <memory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// A phone book and a customer database with ten times as many rows; 2.75 numbers a customer.
struct Desk
{
    explicit Desk(int customers);

    QTemporaryDir folder;
    core::Paths paths = core::pathsBelow(folder.path(), folder.path());
    core::QtClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};
};

Desk::Desk(int customers)
{
    bench::makePhoneBook(paths.PhoneBookFile, customers / 10);
    bench::makeCustomers(paths.CustomerFile, customers);
}

void buildIndexes(benchmark::State &state, Desk &desk)
{
    for (auto _ : state) {
        const core::CodePage codePage(936);
        lookup::NumberIndex index(desk.paths, desk.log, codePage);
        index.LoadPhoneNumberSNArray();
        index.LoadCustomerPhoneNumberSnArray();
        while (index.isLoading()) {
            index.continueLoading();
        }
        if (index.FindCustomerSnOfCaller(u"053300007919") != 1) {
            state.SkipWithError("the index was not built");
        }
    }
}

qint64 readPlainly(const QString &path, const char *select)
{
    const bench::Connection connection = bench::openPlain(path);
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(connection.get(), select, -1, &statement, nullptr);
    qint64 sum = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        sum += sqlite3_column_int(statement, 0);
        for (int column = 1; column < sqlite3_column_count(statement); ++column) {
            benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
            sum += sqlite3_column_bytes(statement, column);
        }
    }
    sqlite3_finalize(statement);
    return sum;
}

void readColumns(benchmark::State &state, const Desk &desk)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(readPlainly(desk.paths.PhoneBookFile, "select SN, Telno from phonebook"));
        benchmark::DoNotOptimize(readPlainly(
            desk.paths.CustomerFile,
            "select SN, WorkPhones, ContactPersonMobile, Fax, ContactPersonHomePhones, CustomerName, note, "
            "IfVIP, ifinblacklist, T3 from customer"));
    }
}

} // namespace

void bench::addIndexLoadRow(std::vector<Row> &rows, int customers)
{
    const auto desk = std::make_shared<Lazy<Desk>>(customers);
    rows.push_back({.name = "building both indexes in ns, " + std::to_string(customers) + " customers",
                    .figure = [desk](benchmark::State &state) { buildIndexes(state, desk->get()); },
                    .floor = [desk](benchmark::State &state) { readColumns(state, desk->get()); },
                    .maxRatio = 4});
}
