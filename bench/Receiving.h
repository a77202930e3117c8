#pragma once

#include <QtGlobal>

class QString;

namespace bench {

/// CPU seconds that this process has used so far, its own and the kernel's on its behalf.
double cpuSeconds();

/// The least that receiving costs: reads datagrams from the port and writes each into the log twice, with a
/// time stamp before it, opening and closing the file each time. Says "ready", and at
/// "SHUTDOWNALL" the CPU seconds that it has taken since.
void receivePlainly(quint16 port, const QString &logFile);

} // namespace bench
