#include "Receiving.h"

#include <QFile>

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int boundSocket(quint16 port)
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in place = {};
    place.sin_family = AF_INET;
    place.sin_port = htons(port);
    const int bufferBytes = 4 << 20;
    ::setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &bufferBytes, sizeof bufferBytes);
    if (::bind(socket, reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0) {
        throw std::runtime_error("the port is taken");
    }
    return socket;
}

void appendLine(const char *path, const char *line, size_t length)
{
    const int file = ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (::write(file, line, length) != static_cast<ssize_t>(length)) {
        throw std::runtime_error("the log cannot be written");
    }
    ::close(file);
}

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

double bench::cpuSeconds()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void bench::receivePlainly(quint16 port, const QString &logFile)
{
    constexpr char stamp[] = "<2026-11-21 09:30:15>  ";
    constexpr char end[] = "SHUTDOWNALL";
    constexpr size_t stampLength = sizeof stamp - 1;
    constexpr size_t sizeLimit = 20000; // the program's own: a file that grows without end costs more
    const QByteArray path = QFile::encodeName(logFile);
    char line[1 << 16];
    size_t written = 0;
    std::memcpy(line, stamp, stampLength);
    char *datagram = line + stampLength;
    const int socket = boundSocket(port);
    std::puts("ready");
    std::fflush(stdout);
    const double before = cpuSeconds();
    for (;;) {
        const ssize_t size = ::recvfrom(socket, datagram, sizeof line - stampLength - 2, 0, nullptr, nullptr);
        if (size < 0 || std::memcmp(datagram, end, sizeof end - 1) == 0) {
            break;
        }
        std::memcpy(datagram + size, "\r\n", 2);
        const size_t length = stampLength + static_cast<size_t>(size) + 2;
        appendLine(path.constData(), line, length);
        appendLine(path.constData(), line, length);
        written += 2 * length;
        if (written > sizeLimit) {
            ::unlink(path.constData());
            written = 0;
        }
    }
    std::printf("cpu %.6f\n", cpuSeconds() - before);
}
