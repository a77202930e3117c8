#include "store/Database.h"

#include "core/AtomicFile.h"
#include "core/TextLookup.h"
#include "store/RecordsetSource.h"
#include "store/Select.h"
#include "store/engine/FileState.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

Database::Database(const QString &path, Mode mode, Wildcards wildcards)
    : m_engine(openEngine(path, mode, wildcards))
{}

Recordset Database::OpenRecordset(const QString &tableOrSelect, const QVariantList &bound)
{
    return Recordset(openSource(m_engine, tableOrSelect, bound));
}

qint64 Database::Execute(const QString &sql, const QVariantList &bound)
{
    return m_engine->execute(sql, bound);
}

void Database::forEachRow(const QString &select, const std::function<void(const Row &)> &visit)
{
    forEachBoundRow(select, {}, visit);
}

void Database::forEachBoundRow(const QString &select, const QVariantList &bound,
                               const std::function<void(const Row &)> &visit)
{
    const SqlTokens words(select);
    const std::optional<Select> apart = parseSelect(words);
    const bool oneTable = apart && apart->tables.size() == 1;
    m_engine->forEach(oneTable ? apart->inOrder(apart->columns) : words, bound, visit);
}

void Database::forEachRow(const QString &table, const QStringList &columns,
                          const std::function<void(const Row &)> &visit)
{
    forEachRow(u"select "_s + columns.join(u',') + u" from "_s + table, visit);
}

QStringList Database::tableNames() const
{
    return m_engine->tableNames();
}

bool Database::hasIndex(const QString &table, const QString &name) const
{
    const QStringList tables = tableNames();
    return std::ranges::any_of(tables, [&](const QString &each) {
        const QList<Index> indexes = m_engine->indexesOf(each);
        return std::ranges::any_of(indexes, [&](const Index &index) { return index.isNamed(table, name); });
    });
}

void Database::keepLastNumber(const QString &table, qint64 number)
{
    m_engine->keepLastNumber(table, number);
}

void Database::transaction(const std::function<void()> &work)
{
    m_engine->transaction(work);
}

QString Database::path() const
{
    return m_engine->path();
}

bool Database::isReplaced() const
{
    return m_engine->isReplaced();
}

std::optional<QByteArray> stateOf(const QString &path)
{
    const NoWaiting atOnce;
    try {
        return Database(path, Database::Mode::ReadOnly).engine()->state();
    } catch (const core::Error &error) {
        return tellsOfLock(error) ? std::nullopt : std::optional(stampOf(path));
    }
}

QStringList damageOf(const QString &path, const std::function<bool()> &ended)
{
    const Database database(path, Database::Mode::ReadOnly);
    database.engine()->endWhen(ended);
    return database.engine()->damage();
}

void copyDatabase(const QString &from, const QString &to, Database::Mode mode,
                  const std::function<void()> &between)
{
    Database(from, Database::Mode::ReadOnly).engine()->copyTo(to, mode, between);
}

bool tellsOfLock(const core::Error &error)
{
    return error.kind() == core::Error::Kind::Locked;
}

bool tellsOfDamage(const core::Error &error)
{
    return error.kind() == core::Error::Kind::Damaged;
}

core::Error damageError(const QString &description)
{
    return {0, description, core::Error::Kind::Damaged};
}

bool isLocked(const QString &path)
{
    const NoWaiting atOnce;
    try {
        Database database(path);
        database.transaction([] {});
        return false;
    } catch (const core::Error &error) {
        return tellsOfLock(error);
    }
}

QString notWrittenText(const core::TextLookup &texts, const QString &key, const QString &path)
{
    const QString text = texts.Lms(key);
    return isLocked(path) ? text + u'\n' + texts.Lms(u"HeldElsewhere"_s) : text;
}

void createDatabase(const QString &path, const QString &schemaSql,
                    const std::function<void(Database &)> &fill)
{
    if (QFile::exists(path)) {
        throw core::Error(0, u"the file exists: "_s + path);
    }
    const core::FileBeside beside(path);
    {
        Database database(beside.name(), Database::Mode::New);
        database.transaction([&] {
            for (const SqlTokens &statement : statementsOf(schemaSql)) {
                database.engine()->prepare(statement)->step();
            }
            fill(database);
        });
    }
    QFile built(beside.name());
    if (!built.rename(path)) {
        throw core::Error(0, built.errorString() + u": "_s + path);
    }
}

} // namespace store
