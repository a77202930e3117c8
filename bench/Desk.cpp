#include "Desk.h"

#include "core/QtClock.h"
#include "core/RunLog.h"
#include "store/Upgrade.h"
#include "store/engine/SqliteFunctions.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

// For reading and for columns without an index, where the order does not matter.
int byteOrder(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    const int order = std::memcmp(left, right, static_cast<size_t>(std::min(leftSize, rightSize)));
    return order != 0 ? order : leftSize - rightSize;
}

QString counting(int rows)
{
    return u"with recursive counted(i) as (select 1 union all select i + 1 from counted where i < %1) "_s.arg(
        rows);
}

/// One of eight words, which depends on the row's number.
QString word(int factor)
{
    return u"(case i * %1 / 8 % 8 when 0 then 'Anna' when 1 then 'Spółka' when 2 then '张伟' when 3 then "
           "'贸易公司' when 4 then 'محمد' when 5 then 'İbrahim' when 6 then 'Handels' else 'Лидия' end)"_s
               .arg(factor);
}

QString phoneBookOf(int entries)
{
    return counting(entries) +
           u"insert into phonebook (Telno, simpledes, detaildes, IfVIP) select "
           "printf('0533-%07d, %d', i, 13000000000 + i * 7919), 'Entry ' || i, 'Met at the fair', 'N' "
           "from counted"_s;
}

QString customersOf(int customers)
{
    return counting(customers) +
           u"insert into customer (CustomerName, CustomerID, CustomerType, broker, IfVIP, city, Address, "
           "ContactPersonName, WorkPhones, Fax, ContactPersonEmail, PostalCode, ContactPersonMobile, note, "
           "Country, ifinblacklist, T3) select "_s +
           word(104729) + u" || ' ' || "_s + word(7919) + u" || i, i, "_s + word(31) + u", "_s + word(5) +
           u", 'N', "_s + word(1299709) + u", '14 Long Quay, Warehouse 3', "_s + word(15485863) +
           u" || ' ' || "_s + word(17) +
           u", printf('0533-%08d', i * 7919 % 100000000), "
           "case i % 4 when 0 then null else printf('0533-%08d', i * 104729 % 100000000) end, "
           "i || '@harbour.example', '255000', 13000000000 + i * 48271 % 6999999937, 'A note about ' || "_s +
           word(13) + u" || ', who asked for it twice', 'China', 0, '1' from counted"_s;
}

QString callsOf(int calls)
{
    return counting(calls) +
           u"insert into callinfo select printf('Call2005%010d', i), "
           "printf('Harbour Trading %08d', case i % 20 when 0 then 1 else 2 + i * 7919 % 4000 end), "
           "datetime('2005-01-01 08:00:00', i || ' minutes'), 'Consultant ' || (i % 40), "
           "'Asked for the delivery of order ' || i || ' and for the papers that go with it' from counted"_s;
}

QString requestsOf(int calls)
{
    return counting(calls * 2) +
           u"insert into customerrequest select printf('Call2005%010d', (i + 1) / 2), "
           "'Where does delivery ' || i || ' stand, and when will the rest of the goods be sent?', "
           "'It left the harbour on Monday and will be there by Friday at noon', i % 3 = 0, "
           "'Wants to be called back by ' || (i % 40) from counted"_s;
}

void fill(const QString &path, const QStringList &statements)
{
    const Connection connection = openPlain(path);
    store::registerFunctions(connection.get()); // the indexes are to be in the program's order
    readThrough(connection.get(), u"begin"_s);
    for (const QString &statement : statements) {
        readThrough(connection.get(), statement);
    }
    readThrough(connection.get(), u"commit"_s);
}

/// The delivered files; a database that is there stays as it is.
void copyDelivered(const QString &to)
{
    const QDir delivered(QStringLiteral(CALLDESK_DELIVERED));
    QDirIterator files(delivered.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString target = to + u'/' + delivered.relativeFilePath(files.next());
        QDir().mkpath(QFileInfo(target).path());
        if (!target.endsWith(".ccsm"_L1) && !target.endsWith(".cpbk"_L1)) {
            QFile::remove(target);
        }
        QFile::copy(files.filePath(), target);
    }
}

void fillDesk(const core::Paths &paths, int customers)
{
    const core::QtClock clock;
    const core::ProcessValues values;
    core::RunLog log(paths, clock, values);
    store::UpdateDatabase_Customer_0606191111(log, paths); // makes the tables of call notes
    fill(paths.PhoneBookFile, {phoneBookOf(customers / 10)});
    fill(paths.CustomerFile, {customersOf(customers), callsOf(Desk::calls), requestsOf(Desk::calls)});
}

/// Another desk as soon as the schema or what is filled in changes.
QString folderOf(int customers)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    QFile schema(QStringLiteral(CALLDESK_DELIVERED "/Customer.ccsm"));
    if (!schema.open(QIODevice::ReadOnly) || !hash.addData(&schema)) {
        throw std::runtime_error("the delivered customer database is missing");
    }
    hash.addData((customersOf(customers) + phoneBookOf(customers) + callsOf(Desk::calls)).toUtf8());
    return QStringLiteral(CALLDESK_BENCH_DESKS "/%1-").arg(customers) +
           QString::fromLatin1(hash.result().toHex().first(8));
}

} // namespace

Desk::Desk(int customers)
    : m_customers(customers), m_data(QStringLiteral(CALLDESK_BENCH_DESKS "-data-XXXXXX")),
      m_paths(core::pathsBelow(folderOf(customers), m_data.path()))
{
    const QString folder = m_paths.StartFolder;
    if (!QFile::exists(folder)) {
        const QString aside = folder + u".new"_s; // a desk that is broken off while it is made is none
        QDir(aside).removeRecursively();
        copyDelivered(aside);
        if (customers > 0) {
            std::fprintf(stderr, "making a desk of %d customers, once\n", customers);
            fillDesk(core::pathsBelow(aside, m_data.path()), customers);
        }
        QDir().rename(aside, folder);
    }
    copyDelivered(folder);
}

QString Desk::busyCustomer()
{
    return u"Harbour Trading 00000001"_s;
}

QString Desk::mobileNumber(int sn)
{
    return QString::number(13000000000 + sn * Q_INT64_C(48271) % 6999999937);
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

int forEachRow(sqlite3 *engine, const QString &statement, const std::function<void(sqlite3_stmt *)> &visit)
{
    const QByteArray sql = statement.toUtf8();
    sqlite3_stmt *prepared = nullptr;
    int result = sqlite3_prepare_v2(engine, sql.constData(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> end(prepared, sqlite3_finalize);
    int rows = 0;
    while (result == SQLITE_OK || result == SQLITE_ROW) {
        result = sqlite3_step(prepared);
        if (result == SQLITE_ROW) {
            visit(prepared);
            ++rows;
        }
    }
    if (result != SQLITE_DONE) {
        throw std::runtime_error(sqlite3_errmsg(engine));
    }
    return rows;
}

int readThrough(sqlite3 *engine, const QString &statement)
{
    return forEachRow(engine, statement, [](sqlite3_stmt *row) {
        for (int column = 0; column < sqlite3_column_count(row); ++column) {
            sqlite3_column_text(row, column);
        }
    });
}

double mbOfFile(const QString &path)
{
    return double(QFileInfo(path).size()) / (1 << 20);
}

QString textOf(sqlite3_stmt *row, int column)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(row, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(row, column));
}

} // namespace bench
