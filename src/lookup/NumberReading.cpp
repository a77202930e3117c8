#include "lookup/NumberReading.h"

#include "lookup/PhoneNumbers.h"

#include <QFileInfo>

#include <algorithm>
#include <exception>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr int firstNumberColumn = 2;
constexpr qint64 firstRowsAtOnce = 1000; // all of a small desk; of a large one the window waits for these
constexpr qint64 firstRowsInBetween = 500;

bool isAscii(std::string_view bytes)
{
    uchar all = 0; // without a branch for each byte, many are looked at in one step
    for (const char byte : bytes) {
        all |= static_cast<uchar>(byte);
    }
    return all < 0x80;
}

store::Database openWhatIsLeft(const QString &file, bool waits)
{
    using store::Database;
    const store::NoWaiting atOnce(!waits);
    try {
        return Database(file);
    } catch (const core::Error &error) {
        if (!store::tellsOfDamage(error)) {
            throw;
        }
        return Database(file, Database::Mode::Salvage);
    }
}

} // namespace

QString CallerTable::columns() const
{
    const QString shown = isCustomers ? u",CustomerName,note,IfVIP,ifinblacklist,T3"_s : QString();
    return u"rowid,SN,"_s + numberColumns.join(u',') + shown;
}

void CallerTable::readNumbers(std::string &utf8, const store::Row &row) const
{
    utf8.clear();
    for (int column = 0; column < numberColumns.size(); ++column) {
        if (column > 0) {
            utf8 += ',';
        }
        const QByteArrayView numbers = row.bytes(firstNumberColumn + column);
        utf8.append(numbers.data(), static_cast<size_t>(numbers.size()));
    }
}

KnownCustomers::Row CallerTable::customer(const store::Row &row) const
{
    const int first = firstNumberColumn + int(numberColumns.size());
    return {.sn = row.integer(1),
            .name = row.bytes(first),
            .note = row.bytes(first + 1),
            .vip = row.bytes(first + 2),
            .blackListed = row.integer(first + 3) != 0,
            .popUpFlag = row.bytes(first + 4)};
}

NumberReading::NumberReading(core::RunLog &log, const core::CodePage &codePage, CallerTable table,
                             Start start)
    : m_log(log), m_codePage(codePage), m_table(std::move(table)), m_waits(start == Start::AtOnce),
      m_database(openWhatIsLeft(m_table.file, m_waits)),
      m_pace(start == Start::AtOnce ? firstRowsAtOnce : firstRowsInBetween),
      m_lastKey(std::numeric_limits<qint64>::min())
{}

NumberReading::Progress NumberReading::readOn()
{
    const store::NoWaiting atOnce(!m_waits);
    try {
        if (!m_rowsEnded) {
            readRows();
        }
    } catch (const core::Error &error) {
        if (store::tellsOfLock(error)) {
            return Progress::Locked;
        }
        throw;
    }
    return m_rowsEnded && m_entries.finishSome() ? Progress::Ended : Progress::More;
}

void NumberReading::readRows()
{
    try {
        readPiece();
    } catch (const core::Error &error) {
        if (!store::tellsOfDamage(error)) {
            throw;
        }
        m_damage = m_damage ? m_damage : error;
        m_rowsEnded = !skipDamage();
    }
    if (m_rowsEnded) {
        finishRows();
    }
}

void NumberReading::readPiece()
{
    qint64 rows = 0;
    const qint64 wanted = m_pace.begin();
    const QString select = u"select %1 from %2 where rowid>%3 order by rowid limit %4"_s;
    m_database.forEachRow(select.arg(m_table.columns(), m_table.name).arg(m_lastKey).arg(wanted),
                          [&](const store::Row &row) {
                              ++rows;
                              append(row);
                          });
    m_pace.end();
    m_rowsEnded = rows < wanted;
    if (!m_rowsEnded && !std::exchange(m_expects, true)) {
        expectRest(rows);
    }
}

// The rows that follow are taken to be like those of the first piece. How many they are is told by the last
// key, which a table with gaps has far behind them, and so by the size of the file. Both may lie: where
// there is no such room, and beyond a desk of any size, it grows with the rows.
void NumberReading::expectRest(qint64 read)
{
    constexpr qint64 leastRowBytes = 32;
    constexpr qint64 mostRows = 4'000'000;
    constexpr double margin = 1.05;
    try {
        m_database.forEachRow(u"select max(rowid) from "_s + m_table.name, [&](const store::Row &row) {
            const qint64 rows =
                std::min({row.key(0), QFileInfo(m_table.file).size() / leastRowBytes, mostRows});
            const double times = margin * static_cast<double>(rows) / static_cast<double>(read);
            m_entries.expect(times);
            m_customers.expect(times);
        });
    } catch (const std::exception &) { // the rows themselves tell of what is damaged or locked
    }
}

void NumberReading::append(const store::Row &row)
{
    const qint64 key = row.key(0);
    if (key <= m_lastKey) {
        throw store::damageError(u"the rows do not stand in their order: "_s + m_table.file);
    }
    m_lastKey = key;
    m_hasRows = true;
    m_table.readNumbers(m_numbers, row);
    appendNumbers(row.integer(1));
    if (m_table.isCustomers) {
        const KnownCustomers::Row customer = m_table.customer(row);
        m_hasUnflagged = m_hasUnflagged || customer.popUpFlag.isEmpty() || customer.popUpFlag == " ";
        m_customers.append(customer);
    }
}

void NumberReading::appendNumbers(qint32 sn)
{
    const auto appendAll = [&](const auto &text) {
        for (const auto piece : phoneNumberPieces(m_log, m_codePage, text)) {
            m_entries.append(piece, sn);
        }
    };
    if (isAscii(m_numbers)) {
        appendAll(QLatin1StringView(m_numbers.data(), qsizetype(m_numbers.size())));
    } else {
        appendAll(QString::fromStdString(m_numbers));
    }
}

// What lies on a damaged page cannot be read from any key on that leads to it: the first key behind it is
// found by steps that double, and then by halving the last one. No program gives a row a key below 1.
bool NumberReading::skipDamage()
{
    constexpr int mostGaps = 1000; // a file in shreds must not be searched for ever
    constexpr qint64 lastOfAll = std::numeric_limits<qint64>::max();
    m_lastKey = std::max<qint64>(m_lastKey, 0);
    qint64 bad = m_lastKey;
    qint64 good = bad;
    for (qint64 step = 1; good == m_lastKey || !canReadBehind(good); step *= 2) {
        bad = good;
        if (step > lastOfAll / 2 || m_lastKey > lastOfAll - step) {
            return false;
        }
        good = m_lastKey + step;
    }
    while (good - bad > 1) {
        const qint64 middle = bad + (good - bad) / 2;
        (canReadBehind(middle) ? good : bad) = middle;
    }
    m_lastKey = good;
    return ++m_gaps < mostGaps;
}

bool NumberReading::canReadBehind(qint64 key)
{
    try {
        const QString select = u"select %1 from %2 where rowid>%3 order by rowid limit 1"_s;
        m_database.forEachRow(select.arg(m_table.columns(), m_table.name).arg(key),
                              [](const store::Row &) {});
        return true;
    } catch (const core::Error &error) {
        if (!store::tellsOfDamage(error)) {
            throw;
        }
        return false;
    }
}

void NumberReading::finishRows()
{
    if (!m_hasRows && !m_damage) {
        m_entries.append(QStringView(), 0);
    }
    if (m_entries.isEmpty()) {
        throw m_damage.value_or(
            core::Error(0, u"no row holds a number: "_s + m_table.name, core::Error::Kind::Empty));
    }
    m_customers.finish();
}

} // namespace lookup
