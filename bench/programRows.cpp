// The whole program as a process of its own: receiving calls, and starting.

#include "Child.h"
#include "Datagrams.h"
#include "Measure.h"
#include "Rows.h"

#include "core/Settings.h"
#include "language/Languages.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <optional>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const QString ourselves = u"calldesk-bench"_s;

/// One of the roles that listen on a port, from its readiness on.
struct Receiver
{
    Receiver(const QString &role, const Desk &desk)
        : process(ourselves, {role, desk.paths().StartFolder, desk.paths().DataFolder, QString::number(port)})
    {
        process.value("ready"_L1);
    }

    quint16 port = freePort();
    Child process;
};

struct Sender : Child
{
    Sender(quint16 port, int count, int rate)
        : Child(ourselves,
                {u"--send"_s, QString::number(port), QString::number(count), QString::number(rate)})
    {}
};

/// Microseconds of CPU time that a receiver takes for each datagram, over one second.
double cpuPerDatagram(const QString &role, const Desk &desk, int rate)
{
    Receiver receiver(role, desk);
    Sender(receiver.port, rate, rate).ends(-1);
    sendShutDown(receiver.port);
    return receiver.process.value("cpu"_L1) * 1e6 / rate;
}

Sample receiving(const Desk &desk, int rate)
{
    return least(7, [&] {
        return Sample{cpuPerDatagram(u"--program"_s, desk, rate), cpuPerDatagram(u"--floor"_s, desk, rate)};
    });
}

struct Paced
{
    Sample notLogged; ///< of so many sent
    Sample waitMs;
    Sample grownMb; ///< beside what the program holds
};

/// None where the machine was too busy to send at that pace.
std::optional<Paced> receivePaced(const Desk &desk)
{
    constexpr int rate = 20'000;
    constexpr int count = 10 * rate;
    constexpr double mostSeconds = 10.3;
    Receiver receiver(u"--watched"_s, desk);
    LogLines lines(desk.paths().RunLogFile, count);
    Sender sender(receiver.port, count, rate);
    // In its first second the program still faults in pages of its libraries, which are no growth.
    constexpr int warmMs = 2500;
    sender.ends(warmMs);
    const double warmMb = heldMb(receiver.process.id());
    if (sender.value("sent"_L1) > mostSeconds) {
        return {};
    }
    lines.waitUntilQuiet();
    const double grownMb = heldMb(receiver.process.id()) - warmMb;
    sendShutDown(receiver.port);
    const double waitMs = receiver.process.value("wait"_L1);
    return Paced{.notLogged = {double(lines.incomplete()), count},
                 .waitMs = {waitMs, receiver.process.value("emptyWait"_L1)},
                 .grownMb = {grownMb, warmMb}};
}

constexpr int pacedRuns = 3;

std::vector<Paced> receivePaced()
{
    const Desk desk(usualDesk);
    std::vector<Paced> runs;
    for (int left = 2 * pacedRuns; runs.size() < pacedRuns; --left) {
        if (left == 0) {
            throw std::runtime_error("this machine is too busy to send at that pace");
        }
        if (const std::optional<Paced> run = receivePaced(desk)) {
            runs.push_back(*run);
        }
    }
    return runs;
}

/// Of the datagrams of five bursts, those that were not logged.
Sample receiveBursts()
{
    const Desk desk(usualDesk);
    constexpr int count = 10'000;
    Sample notLogged;
    for (int burst = 0; burst < 5; ++burst) {
        Receiver receiver(u"--watched"_s, desk);
        LogLines lines(desk.paths().RunLogFile, count);
        Sender(receiver.port, count, 0).ends(-1);
        lines.waitUntilQuiet();
        sendShutDown(receiver.port);
        receiver.process.value("cpu"_L1);
        notLogged.figure += lines.incomplete();
        notLogged.floor += count;
    }
    return notLogged;
}

/// A program from the start of its process on.
class Start
{
public:
    Start(const QString &program, const QStringList &arguments)
    {
        m_time.start();
        m_process.emplace(program, arguments);
        m_process->value("painted"_L1);
        m_ms = static_cast<double>(m_time.nsecsElapsed()) / 1e6 - queuedMs(m_process->id());
    }

    /// Until its window was painted, but for waiting for a processor.
    double ms() const { return m_ms; }
    /// What it holds once it has nothing left to do.
    double mb() const
    {
        QThread::msleep(300);
        return heldMb(m_process->id());
    }

private:
    QElapsedTimer m_time;
    std::optional<Child> m_process;
    double m_ms = 0;
};

Start startOurs(const Desk &desk)
{
    return {ourselves,
            {u"--program"_s, desk.paths().StartFolder, desk.paths().DataFolder, QString::number(freePort())}};
}

Sample starting(int customers, double (Start::*figure)() const)
{
    const Desk desk(customers);
    startOurs(desk); // upgrades a new database, and has the system read the files of both
    return least(9, [&] {
        const double ours = (startOurs(desk).*figure)();
        const Start minimal(u"bench_minimal"_s, {desk.paths().CustomerFile, QString::number(freePort())});
        return Sample{ours, (minimal.*figure)()};
    });
}

void chooseLanguage(const Desk &desk, const QString &code)
{
    core::SettingsRecord record;
    core::setGridDefaults(record);
    record.LanguageSetting.setText(code);
    QFile file(desk.paths().SettingsFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(record.toBytes()) != core::SettingsRecord::size) {
        throw std::runtime_error("no settings can be written");
    }
}

/// A start in the language that takes longest, to one in English.
Sample startingInLanguages()
{
    const Desk desk(0);
    const auto startIn = [&](const QString &code) {
        chooseLanguage(desk, code);
        return startOurs(desk).ms();
    };
    return worst(language::languages(), [&](const language::Language &language) {
        return least(5, [&] { return Sample{startIn(language.code), startIn(u"ENG"_s)}; });
    });
}

} // namespace

Rows receptionRows()
{
    const auto runs = once<std::vector<Paced>>([] { return receivePaced(); });
    const auto paced = [=](Sample Paced::*sample) { return [=] { return median(runs(), sample); }; };
    const auto cpu = [](int rate) { return [=] { return receiving(Desk(usualDesk), rate); }; };
    return {
        {"CPU of a datagram, 20000 a second, us", {.times = 2.7}, cpu(20'000)},
        {"CPU of a datagram, 5000 a second, us", {.times = 3.8}, cpu(5'000)},
        {"20000 a second for 10 s: datagrams not logged, of all", {.times = 0}, paced(&Paced::notLogged)},
        {"20000 a second for 10 s: longest turn of the event loop, ms", {.more = 50}, paced(&Paced::waitMs)},
        {"20000 a second for 10 s: growth, MB, to all that is held", {.times = 0.05}, paced(&Paced::grownMb)},
        {"10000 at once, five times: datagrams not logged, of all", {.times = 0}, receiveBursts},
    };
}

Rows startRows(int customers)
{
    Rows rows{{sized("start until painted, ms", customers), {.times = 3.5}, [=] {
                   return starting(customers, &Start::ms);
               }}};
    if (customers == 0) {
        rows.push_back(
            {"resident memory, MB, 0 customers", {.times = 2}, [] { return starting(0, &Start::mb); }});
        rows.push_back(
            {"start in any of the languages, to English, ms", {.times = 1.3}, startingInLanguages});
    }
    return rows;
}

} // namespace bench
