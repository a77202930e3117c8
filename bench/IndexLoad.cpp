#include "IndexLoad.h"

#include "core/Paths.h"
#include "core/QtClock.h"
#include "core/RunLog.h"
#include "lookup/NumberIndex.h"
#include "store/Database.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

// The names written here are plain ASCII, where the order of bytes is the program's own text order.
int byteOrder(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    const int order = std::memcmp(left, right, static_cast<size_t>(std::min(leftSize, rightSize)));
    return order != 0 ? order : leftSize - rightSize;
}

Connection openPlain(const QString &path)
{
    sqlite3 *engine = nullptr;
    const int opened = sqlite3_open(path.toUtf8().constData(), &engine);
    Connection connection(engine, sqlite3_close);
    if (opened != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(engine));
    }
    sqlite3_create_collation(engine, "JET", SQLITE_UTF8, nullptr, byteOrder);
    return connection;
}

QString schema(QLatin1StringView name)
{
    QFile file(QLatin1StringView(CALLDESK_SCHEMA_FOLDER) + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void makeTable(const QString &path, QLatin1StringView schemaName, const QString &fill)
{
    store::createDatabase(path, schema(schemaName), [](store::Database &) {});
    const Connection connection = openPlain(path);
    if (sqlite3_exec(connection.get(), fill.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(connection.get()));
    }
}

QString counting(int rows)
{
    return u"with recursive counted(i) as (select 1 union all select i + 1 from counted where i < %1) "_s.arg(
        rows);
}

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
    makeTable(paths.PhoneBookFile, "SimplePhoneBook.sql"_L1,
              counting(customers / 10) +
                  u"insert into phonebook (Telno, simpledes, detaildes, IfVIP) select "
                  "printf('0533-%07d, %d', i, 13000000000 + i * 7919), 'Entry ' || i, 'Met at the fair', 'N' "
                  "from counted"_s);
    makeTable(paths.CustomerFile, "Customer.sql"_L1,
              counting(customers) +
                  u"insert into customer (CustomerName, CustomerID, IfVIP, city, Address, ContactPersonName, "
                  "WorkPhones, Fax, ContactPersonEmail, PostalCode, ContactPersonMobile, note, Country, "
                  "ifinblacklist, T3) select printf('Harbour Trading %08d', i), i, 'N', 'Zibo', "
                  "'14 Long Quay, Warehouse 3', 'Li Wei', printf('0533-%08d', i * 7919 % 100000000), "
                  "case i % 4 when 0 then null else printf('0533-%08d', i * 104729 % 100000000) end, "
                  "'office@harbour.example', '255000', 13000000000 + i * 48271 % 6999999937, "
                  "'Prefers calls in the morning', 'China', 0, '1' from counted"_s);
}

void buildIndexes(benchmark::State &state, Desk &desk)
{
    for (auto _ : state) {
        lookup::NumberIndex index(desk.paths, desk.log);
        index.LoadPhoneNumberSNArray();
        index.LoadCustomerPhoneNumberSnArray();
        if (index.FindCustomerSnOfCaller(u"053300007919") != 1) {
            state.SkipWithError("the index was not built");
        }
    }
}

qint64 readPlainly(const QString &path, const char *select)
{
    const Connection connection = openPlain(path);
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
            "select SN, WorkPhones, ContactPersonMobile, Fax, ContactPersonHomePhones from customer"));
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
