#pragma once

#include "store/Database.h"
#include "store/Statement.h"

#include <QString>

#include <functional>
#include <memory>

namespace store {

/// One opened file: the driver's connection, and the engine behind it with our functions and text order.
class Database::Handle
{
public:
    enum class File { Existing, New };

    Handle(const QString &path, const Options &options, File file = File::Existing);
    Q_DISABLE_COPY_MOVE(Handle)
    ~Handle() = default;

    sqlite3 *engine() const { return m_engine; }
    Wildcards wildcards() const { return m_options.wildcards; }
    /// A statement in the given words.
    Statement prepare(const QString &sql) const;
    /// Calls `visit` for each row of a select in the engine's own words.
    void forEach(const QString &select, const QVariantList &bound,
                 const std::function<void(const Row &)> &visit) const;
    /// Runs one statement in the given words; the number of rows changed.
    qint64 execute(const QString &sql, const QVariantList &bound = {});
    /// Another file stands under the path now, or none.
    bool isReplaced() const;
    /// What every save changes: size and time of a file, and of one that is open what the head counts.
    QByteArray state() const;
    static QByteArray stamp(const QString &path);
    /// All of `work` or nothing of it; inside another transaction it becomes a part of that one.
    void transaction(const std::function<void()> &work);

private:
    /// The driver's name for this connection, given back last.
    struct DriverName
    {
        QString name;
        ~DriverName();
    };
    void openDriver(const QString &path, File file);
    void harden() const;
    void makeReady(File file);
    void renewTextOrder(File file);
    qint64 number(const QString &sql) const;
    void rollBack();
    Statement &preparedOnce(const QString &sql);

    QString m_path;
    Options m_options;
    DriverName m_driver;
    sqlite3 *m_engine = nullptr;
    QString m_lastSql;
    std::unique_ptr<Statement> m_lastStatement; ///< a loop over one statement prepares it once
};

} // namespace store
