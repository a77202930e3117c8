#pragma once

#include "core/RunLog.h"
#include "store/Database.h"
#include "store/SqlTokens.h"
#include "support/Fakes.h"

#include <QDirIterator>
#include <QTemporaryDir>

namespace support {

/// The number and description of the error that this ends in; "" without one.
template <typename Act>
QString errorOf(const Act &act)
{
    try {
        act();
        return {};
    } catch (const core::Error &error) {
        return QString::number(error.number()) + u' ' + error.description();
    }
}
inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
/// What stands in a folder and below it, with its contents.
inline QMap<QString, QByteArray> filesBelow(const QString &folder, QDir::Filters kinds = QDir::Files)
{
    QMap<QString, QByteArray> files;
    QDirIterator found(folder, kinds | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (found.hasNext()) {
        const QString path = found.next();
        files.insert(QDir(folder).relativeFilePath(path), bytesOf(path));
    }
    return files;
}

/// Another program that keeps a database file to itself.
class TakenFile
{
public:
    explicit TakenFile(const QString &path) : m_database(path) { m_database.Execute(u"begin exclusive"_s); }

private:
    store::Database m_database;
};

/// A desk in a temporary folder: start and data folder, run log, clock. Everything a unit of logic needs.
struct TestDesk
{
    TestDesk()
    {
        QDir(folder.path()).mkdir(u"start"_s);
        QDir(folder.path()).mkpath(u"data/SMS"_s);
        paths = core::pathsBelow(folder.filePath(u"start"_s), folder.filePath(u"data"_s));
    }

    /// The run log's messages without their time stamps.
    QStringList logMessages() const
    {
        static const QRegularExpression stamp(u"^<[^>]*>  "_s, QRegularExpression::MultilineOption);
        const QString text = QString::fromUtf8(fileBytes(paths.RunLogFile)).remove(stamp);
        return text.split(u"\r\n"_s, Qt::SkipEmptyParts);
    }
    QByteArray fileBytes(const QString &path) const { return bytesOf(path); }
    void writeFile(const QString &path, const QByteArray &bytes) const
    {
        QFile file(path);
        QVERIFY2(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), qPrintable(path));
    }
    /// Runs statements in the given words on a database file, which is made when missing.
    void runSql(const QString &path, const QString &statements) const
    {
        if (!QFile::exists(path)) {
            store::createDatabase(path, {}, [](store::Database &) {});
        }
        store::Database database(path);
        for (const store::SqlTokens &statement : store::statementsOf(statements)) {
            database.engine()->prepare(statement)->step();
        }
    }

    QTemporaryDir folder;
    core::Paths paths;
    FakeClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};
};

} // namespace support
