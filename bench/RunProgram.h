#pragma once

#include <QString>

namespace bench {

struct ProgramPlace
{
    QString desk;
    QString data;
    quint16 port;
};

/// Runs the whole program as main() does, but for message boxes: one that wants to open fails the run. Says
/// "painted" when its main window stands, and at "SHUTDOWNALL" the CPU seconds that it has taken since. The
/// result is the process's exit status.
///
/// `watched` makes the run log a named pipe, so that every line can be counted although the log erases
/// itself, and also says for how many milliseconds the event loop let an event wait at the longest.
int runProgram(const ProgramPlace &place, bool watched);

} // namespace bench
