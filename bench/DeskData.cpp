#include "DeskData.h"

#include "store/Database.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

// The names written here are plain ASCII, where the order of bytes is the program's own text order.
int byteOrder(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    const int order = std::memcmp(left, right, static_cast<size_t>(std::min(leftSize, rightSize)));
    return order != 0 ? order : leftSize - rightSize;
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

} // namespace

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

void makePhoneBook(const QString &path, int entries)
{
    makeTable(path, "SimplePhoneBook.sql"_L1,
              counting(entries) +
                  u"insert into phonebook (Telno, simpledes, detaildes, IfVIP) select "
                  "printf('0533-%07d, %d', i, 13000000000 + i * 7919), 'Entry ' || i, 'Met at the fair', 'N' "
                  "from counted"_s);
}

void makeCustomers(const QString &path, int customers)
{
    makeTable(path, "Customer.sql"_L1,
              counting(customers) +
                  u"insert into customer (CustomerName, CustomerID, IfVIP, city, Address, ContactPersonName, "
                  "WorkPhones, Fax, ContactPersonEmail, PostalCode, ContactPersonMobile, note, Country, "
                  "ifinblacklist, T3) select printf('Harbour Trading %08d', i), i, 'N', 'Zibo', "
                  "'14 Long Quay, Warehouse 3', 'Li Wei', printf('0533-%08d', i * 7919 % 100000000), "
                  "case i % 4 when 0 then null else printf('0533-%08d', i * 104729 % 100000000) end, "
                  "'office@harbour.example', '255000', 13000000000 + i * 48271 % 6999999937, "
                  "'Prefers calls in the morning', 'China', 0, '1' from counted"_s);
}

void addCallNotes(const QString &path, int calls)
{
    const QString call = u"printf('Call2005%010d', i)"_s;
    const QString fill =
        counting(calls) + u"insert into callinfo select "_s + call +
        u", printf('Harbour Trading %08d', case i % 20 when 0 then 1 else 2 + i * 7919 % 4000 end), "
        "datetime('2005-01-01 08:00:00', i || ' minutes'), 'Consultant ' || (i % 40), "
        "'Asked for the delivery of order ' || i || ' and for the papers that go with it' from counted; "_s +
        counting(calls * 2) +
        u"insert into customerrequest select printf('Call2005%010d', (i + 1) / 2), "
        "'Where does delivery ' || i || ' stand, and when will the rest of the goods be sent?', "
        "'It left the harbour on Monday and will be there by Friday at noon', i % 3 = 0, "
        "'Wants to be called back by ' || (i % 40) from counted"_s;
    const Connection connection = openPlain(path);
    if (sqlite3_exec(connection.get(), fill.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(connection.get()));
    }
}

QString mobileNumber(int sn)
{
    return QString::number(13000000000 + sn * Q_INT64_C(48271) % 6999999937);
}

} // namespace bench
