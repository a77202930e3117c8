#include "Sending.h"

#include "DeskData.h"
#include "RecordWriter.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

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
    fields.number = mobileNumber(sn);
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

void waitUntil(qint64 due)
{
    const timespec time = {due / nanosecondsASecond, due % nanosecondsASecond};
    ::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr);
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
        waitUntil(start + i * step);
        sender.send(call.bytes);
    }
    return static_cast<double>(now() - start) / nanosecondsASecond;
}

void sendShutDown(quint16 port)
{
    LoopbackSender(port).send(sim::commandRecord(u"SHUTDOWNALL", {}, sim::CodePageChoice()));
}

} // namespace bench
