#pragma once

#include <QString>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace bench {

/// Reads a run log that is a named pipe, and counts the lines of each of the sender's datagrams.
class LogLines
{
public:
    /// Removes the pipe in the end: a program that starts reads its run log.
    LogLines(const QString &pipe, int datagrams);
    ~LogLines();
    Q_DISABLE_COPY_MOVE(LogLines)

    /// Returns when nothing has been logged for half a second.
    void waitUntilQuiet() const;
    /// How many datagrams have not been logged exactly twice; ends the reading.
    int incomplete();

private:
    void readAll();
    void count(const std::string &line);

    QString m_name;
    int m_pipe;
    std::vector<int> m_linesOf;
    std::atomic<int> m_lines = 0;
    std::thread m_thread;
};

} // namespace bench
