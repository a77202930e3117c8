#pragma once

#include "core/Paths.h"
#include "core/ProcessValues.h"
#include "core/RunLog.h"
#include "support/Fakes.h"

#include <QTemporaryDir>

namespace support {

/// A desk in a temporary folder: start and data folder, run log, clock. Everything a unit of logic needs.
class TestDesk
{
public:
    TestDesk();

    /// The run log's messages without their time stamps.
    QStringList logMessages() const;
    QByteArray fileBytes(const QString &path) const;
    /// Runs statements in the given words on a database file, which is made when missing.
    void runSql(const QString &path, const QString &statements) const;
    void writeFile(const QString &path, const QByteArray &bytes) const;

    QTemporaryDir folder;
    core::Paths paths;
    FakeClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};
};

} // namespace support
