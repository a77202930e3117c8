#pragma once

#include "store/engine/Engine.h"

struct sqlite3;

namespace store {

/// A SQLite file, open from construction to destruction.
class SqliteEngine final : public Engine
{
public:
    /// Throws core::Error where the file is missing, no database, damaged or may not be opened. One that is
    /// marked read-only opens in every mode; only writing then fails.
    SqliteEngine(const QString &path, Mode mode, Wildcards wildcards);
    ~SqliteEngine() override;
    Q_DISABLE_COPY_MOVE(SqliteEngine)

    static void move(const QString &from, const QString &to);

    std::unique_ptr<Statement> prepare(const SqlTokens &sql) override;
    void transaction(const std::function<void()> &work) override;
    QStringList tableNames() override;
    QList<Index> indexesOf(const QString &table) override;
    QString autoNumberOf(const QString &table) override;
    qint64 reserveNumber(const QString &table) override;
    void keepLastNumber(const QString &table, qint64 number) override;
    QString path() const override;
    bool isReplaced() const override;
    QByteArray state() const override;
    QStringList damage() override;
    void copyTo(const QString &path, Mode mode, const std::function<void()> &between) override;
    void endWhen(std::function<bool()> ended) override;

protected:
    qint64 changedRows() const override;

private:
    struct Close
    {
        void operator()(sqlite3 *engine) const;
    };
    sqlite3 *raw() const { return m_engine.get(); }
    void open();
    void harden() const;
    void makeReady();
    void renewTextOrder();
    QVariant first(const QString &select, const QVariantList &bound = {});
    QStringList texts(const QString &select, const QVariantList &bound = {});
    QByteArray stateWithOwnSaves() const;
    void rollBack();

    QString m_path;
    Mode m_mode;
    Wildcards m_wildcards;
    std::function<bool()> m_ended;
    std::unique_ptr<sqlite3, Close> m_engine;
};

} // namespace store
