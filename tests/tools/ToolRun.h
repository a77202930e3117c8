#pragma once

#include <QProcess>

/// How a command-line tool ended; the status is -1 for one that crashed or hung.
struct ToolRun
{
    int status = -1;
    QString output;
    QString errors;
};

/// Runs a tool with the options of one line, in which double quotes hold an option together.
inline ToolRun runTool(const char *program, const QString &options, const QString &folder = QString(),
                       const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.start(QString::fromUtf8(program), QProcess::splitCommand(options));
    const bool ended = process.waitForFinished(100'000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}
