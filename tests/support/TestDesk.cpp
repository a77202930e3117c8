#include "support/TestDesk.h"

#include "store/Database.h"
#include "store/SqlDialect.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace support {

TestDesk::TestDesk()
{
    QDir(folder.path()).mkdir(u"start"_s);
    QDir(folder.path()).mkpath(u"data/SMS"_s);
    paths = core::pathsBelow(folder.filePath(u"start"_s), folder.filePath(u"data"_s));
}

QStringList TestDesk::logMessages() const
{
    constexpr qsizetype stampWidth = 23; // "<YYYY-MM-DD HH:MM:SS>  "
    QStringList messages;
    const QString text = QString::fromUtf8(fileBytes(paths.RunLogFile));
    for (const QString &line : text.split(u"\r\n"_s, Qt::SkipEmptyParts)) {
        messages.append(line.mid(stampWidth));
    }
    return messages;
}

QByteArray TestDesk::fileBytes(const QString &path) const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestDesk::runSql(const QString &path, const QString &statements) const
{
    if (!QFile::exists(path)) {
        store::createDatabase(path, statements, [](store::Database &) {});
        return;
    }
    store::Database database(path);
    for (const QString &statement : store::statementsOf(statements)) {
        database.Execute(statement);
    }
}

void TestDesk::writeFile(const QString &path, const QByteArray &bytes) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        QTest::qFail(qPrintable(u"cannot write "_s + path), __FILE__, __LINE__);
    }
}

} // namespace support
