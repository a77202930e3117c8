#pragma once

#include <QProcess>

/// How a command-line tool ended; the status is -1 for one that crashed or hung.
struct ToolRun
{
    int status = -1;
    QString output;
    QString errors;
};

inline ToolRun runTool(const QString &program, const QStringList &arguments,
                       const QString &folder = QString())
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}
