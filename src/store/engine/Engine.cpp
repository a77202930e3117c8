#include "store/engine/Engine.h"

#include "store/engine/SqliteEngine.h"

#include <algorithm>
#include <utility>

namespace store {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds longestWait{500};

struct Patience
{
    Clock::duration left{longestWait};
    Clock::time_point since = Clock::now();
    bool none = false;

    // Slower than time passes: the work between two waits of one turn must not allow the second.
    void recover()
    {
        constexpr int slower = 4;
        const Clock::time_point now = Clock::now();
        left = std::min<Clock::duration>(longestWait, left + (now - since) / slower);
        since = now;
    }
    void use(Clock::time_point begin)
    {
        since = Clock::now();
        left -= since - begin;
    }
};

// As errno does, it belongs to the thread, since that is what stands still.
thread_local Patience patience;

} // namespace

bool waitForLock(int times, const std::function<void(milliseconds)> &sleep)
{
    constexpr int longestPause = 25;
    if (times == 0) {
        patience.recover();
    }
    const auto left = std::chrono::duration_cast<milliseconds>(patience.left);
    if (patience.none || left <= milliseconds(0)) {
        return false;
    }
    const Clock::time_point begin = Clock::now();
    sleep(std::min(left, milliseconds(std::min(1 + times * 2, longestPause))));
    patience.use(begin);
    return true;
}

NoWaiting::NoWaiting(bool applies) : m_before(std::exchange(patience.none, patience.none || applies)) {}

NoWaiting::~NoWaiting()
{
    patience.none = m_before;
}

QString Row::text(int column) const
{
    return QString::fromUtf8(bytes(column));
}

qint32 Row::integer(int column) const
{
    const qint64 number = key(column);
    const bool fits = number == static_cast<qint32>(number); // one cut to 32 bits would name another row
    return fits ? static_cast<qint32>(number) : 0;
}

void Engine::forEach(const SqlTokens &select, const QVariantList &bound,
                     const std::function<void(const Row &)> &visit)
{
    const std::unique_ptr<Statement> statement = prepare(select);
    statement->bind(bound);
    while (statement->step()) {
        visit(*statement);
    }
}

Statement &Engine::preparedOnce(const QString &sql)
{
    if (!m_lastStatement || m_lastSql != sql) {
        m_lastStatement = prepare(sql);
        m_lastSql = sql;
    }
    return *m_lastStatement;
}

qint64 Engine::execute(const QString &sql, const QVariantList &bound)
{
    Statement &statement = preparedOnce(sql);
    const StatementReset reset(statement);
    const qint64 before = changedRows();
    statement.bind(bound);
    while (statement.step()) {
    }
    return changedRows() - before;
}

std::shared_ptr<Engine> openEngine(const QString &path, Engine::Mode mode, Wildcards wildcards)
{
    return std::make_shared<SqliteEngine>(path, mode, wildcards);
}

void moveDatabase(const QString &from, const QString &to)
{
    SqliteEngine::move(from, to);
}

} // namespace store
