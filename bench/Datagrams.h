#pragma once

#include <QString>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace bench {

/// What the datagrams of a sender are told apart by: a running number from 0 in the parameter block "RAWCID",
/// always of eight digits.
inline constexpr char idBlock[] = "{RAWCID:[";
inline constexpr int idDigits = 8;

/// Sends the calls of `count` different datagrams to a port of this machine: calls of known customers, every
/// fourth with a Chinese name. `rate` a second, each at its own time; 0 sends them as fast as it can. The
/// result is how many seconds it took.
double sendCalls(quint16 port, int count, int rate);
/// A call from a number, whose sender knows nothing else of the caller.
void sendCallFrom(quint16 port, const QString &number);
/// Ends whoever listens on the port.
void sendShutDown(quint16 port);

/// The least that receiving costs: reads datagrams from the port and writes each into the log twice, with a
/// time stamp before it, opening and closing the file each time. Says "ready", and at
/// "SHUTDOWNALL" the CPU seconds that it has taken since.
void receivePlainly(quint16 port, const QString &logFile);

/// Makes a run log that is a named pipe, so that every line can be counted although the log erases itself.
void makePipe(const QString &path);

/// Reads such a pipe, and counts the lines of each of the sender's datagrams.
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
