#include "Datagrams.h"

#include "Desk.h"
#include "Measure.h"
#include "RecordWriter.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr char endLine[] = "END\n";
constexpr qint64 nanosecondsASecond = 1'000'000'000;

/// A socket that sends to one port of this machine.
class LoopbackSender
{
public:
    explicit LoopbackSender(quint16 port) : m_socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in place = {};
        place.sin_family = AF_INET;
        place.sin_port = htons(port);
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(m_socket, reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0) {
            throw std::runtime_error("no socket to send from");
        }
    }
    ~LoopbackSender() { ::close(m_socket); }
    Q_DISABLE_COPY_MOVE(LoopbackSender)

    void send(const QByteArray &datagram) const
    {
        if (::send(m_socket, datagram.constData(), static_cast<size_t>(datagram.size()), 0) < 0) {
            throw std::runtime_error(std::strerror(errno));
        }
    }

private:
    int m_socket;
};

/// A datagram without its running number.
struct Call
{
    explicit Call(int n);
    void setId(int id)
    {
        bytes.replace(idAt, idDigits, QByteArray::number(id).rightJustified(idDigits, '0'));
    }

    QByteArray bytes;
    qsizetype idAt;
};

Call::Call(int n)
{
    const int sn = 1 + n * 97;
    sim::CallFields fields;
    fields.channel = u"0007"_s;
    fields.time = u"2026-11-21 09:30:15"_s;
    fields.line = u"05332345678"_s;
    fields.number = Desk::mobileNumber(sn);
    fields.name = n % 4 == 0 ? u"港湾贸易公司"_s : u"Harbour Trading"_s;
    fields.match = QString::number(sn);
    fields.ip = u"192.168.1.20"_s;
    fields.rawCid = QString(idDigits, u'0');
    fields.detail = u"Prefers calls in the morning"_s;
    bytes = sim::callRecord(fields, sim::CodePageChoice());
    idAt = bytes.indexOf(idBlock) + qsizetype(std::strlen(idBlock));
}

qint64 now()
{
    timespec time = {};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * nanosecondsASecond + time.tv_nsec;
}

void sleepUntil(qint64 due)
{
    const timespec time = {due / nanosecondsASecond, due % nanosecondsASecond};
    ::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr);
}

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

} // namespace

double sendCalls(quint16 port, int count, int rate)
{
    constexpr int differentCalls = 1000;
    std::vector<Call> calls;
    calls.reserve(differentCalls);
    for (int i = 0; i < differentCalls; ++i) {
        calls.emplace_back(i);
    }
    const LoopbackSender sender(port);
    ::prctl(PR_SET_TIMERSLACK, 1); // or the pace is kept in steps of 50 microseconds
    const qint64 step = rate > 0 ? nanosecondsASecond / rate : 0;
    const qint64 start = now();
    for (int i = 0; i < count; ++i) {
        Call &call = calls[static_cast<size_t>(i % differentCalls)];
        call.setId(i);
        sleepUntil(start + i * step);
        sender.send(call.bytes);
    }
    return static_cast<double>(now() - start) / nanosecondsASecond;
}

void sendCallFrom(quint16 port, const QString &number)
{
    sim::CallFields fields;
    fields.number = number;
    fields.rawCid = u"1"_s;
    LoopbackSender(port).send(sim::callRecord(fields, sim::CodePageChoice()));
}

void sendShutDown(quint16 port)
{
    LoopbackSender(port).send(sim::commandRecord(u"SHUTDOWNALL", {}, sim::CodePageChoice()));
}

void receivePlainly(quint16 port, const QString &logFile)
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

void makePipe(const QString &path)
{
    QFile::remove(path);
    if (::mkfifo(QFile::encodeName(path).constData(), 0600) != 0) {
        throw std::runtime_error(std::strerror(errno));
    }
}

// Open for writing, too: the program opens and closes the pipe for each entry, and so it never looks ended
// between two.
LogLines::LogLines(const QString &pipe, int datagrams)
    : m_name(pipe), m_pipe(::open(QFile::encodeName(pipe).constData(), O_RDWR | O_CLOEXEC)),
      m_linesOf(static_cast<size_t>(datagrams))
{
    if (m_pipe < 0) {
        throw std::runtime_error("the run log is no pipe");
    }
    ::fcntl(m_pipe, F_SETPIPE_SZ, 1 << 20); // this thread may be late; the program must not wait for it
    m_thread = std::thread([this] { readAll(); });
}

LogLines::~LogLines()
{
    incomplete();
    ::close(m_pipe);
    QFile::remove(m_name);
}

void LogLines::waitUntilQuiet() const
{
    for (int before = -1; before != m_lines;) {
        before = m_lines;
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
    }
}

int LogLines::incomplete()
{
    if (m_thread.joinable() && ::write(m_pipe, endLine, sizeof endLine - 1) > 0) {
        m_thread.join();
    }
    return static_cast<int>(std::count_if(m_linesOf.begin(), m_linesOf.end(), [](int n) { return n != 2; }));
}

void LogLines::readAll()
{
    std::string line;
    std::vector<char> bytes(1 << 16);
    for (;;) {
        const ssize_t size = ::read(m_pipe, bytes.data(), bytes.size());
        for (ssize_t i = 0; i < size; ++i) {
            line += bytes[static_cast<size_t>(i)];
            if (line.back() != '\n') {
                continue;
            }
            if (line == endLine) {
                return;
            }
            ++m_lines;
            count(line);
            line.clear();
        }
    }
}

void LogLines::count(const std::string &line)
{
    const size_t block = line.find(idBlock);
    if (block != std::string::npos) {
        const size_t id = std::strtoul(line.c_str() + block + sizeof idBlock - 1, nullptr, 10);
        ++m_linesOf.at(id);
    }
}

} // namespace bench
