#include "ProgramRows.h"

#include "Child.h"
#include "DeskData.h"
#include "LogLines.h"
#include "Report.h"
#include "Sending.h"

#include "core/Settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QUdpSocket>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int customers = 100'000;
const QString ourselves = u"bench_program"_s;

quint16 freePort()
{
    QUdpSocket socket;
    socket.bind(QHostAddress::AnyIPv4, 0);
    return socket.localPort();
}

/// A start folder with all the delivered files and a data folder, gone at the end.
struct Desk
{
    explicit Desk(int customerCount);

    QTemporaryDir folder;
    QString start = folder.filePath(u"desk"_s);
    QString data = folder.filePath(u"data"_s);
    core::Paths paths = core::pathsBelow(start, data);
};

Desk::Desk(int customerCount)
{
    QDir().mkpath(start);
    QDir().mkpath(data);
    if (customerCount > 0) {
        makePhoneBook(paths.PhoneBookFile, customerCount / 10);
        makeCustomers(paths.CustomerFile, customerCount);
    }
    Child mkdesk(u"calldesk-mkdesk"_s, {start});
    mkdesk.ends(-1);
}

/// One of the roles that listen on a port, from its readiness on.
struct Receiver
{
    Receiver(const QString &role, const Desk &desk)
        : process(ourselves, {role, desk.start, desk.data, QString::number(port)})
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

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

using Measure = std::function<double()>;

/// Medians of a figure and its floor, measured in turns so that a busy moment of the machine hits both.
Result compare(const std::string &name, int repetitions, const Measure &figure, const Measure &floor)
{
    std::vector<double> figures;
    std::vector<double> floors;
    for (int i = 0; i < repetitions; ++i) {
        figures.push_back(figure());
        floors.push_back(floor());
    }
    return {.name = name, .figure = median(figures), .floor = median(floors)};
}

/// Microseconds of CPU time that a receiver takes for each datagram, over one second.
double cpuPerDatagram(const QString &role, const Desk &desk, int rate)
{
    Receiver receiver(role, desk);
    Sender(receiver.port, rate, rate).ends(-1);
    sendShutDown(receiver.port);
    return receiver.process.value("cpu"_L1) * 1e6 / rate;
}

bool measureCpu(const Desk &desk, int rate)
{
    Result result = compare(
        "CPU us a datagram, " + std::to_string(rate) + " a second", 9,
        [&] { return cpuPerDatagram(u"--program"_s, desk, rate); },
        [&] { return cpuPerDatagram(u"--floor"_s, desk, rate); });
    result.maxRatio = 4;
    return print(result);
}

bool measurePaced(const Desk &desk)
{
    constexpr int rate = 20'000;
    constexpr int count = 10 * rate;
    constexpr double mostSeconds = 10.2;
    Receiver receiver(u"--watched"_s, desk);
    LogLines lines(desk.paths.RunLogFile, count);
    Sender sender(receiver.port, count, rate);
    // In its first second the program still faults in pages of its libraries, which are no growth.
    constexpr int warmMs = 2500;
    sender.ends(warmMs);
    const double warmMb = receiver.process.residentMb();
    if (sender.value("sent"_L1) > mostSeconds) {
        throw std::runtime_error("this machine is too busy to send at that pace");
    }
    lines.waitUntilQuiet();
    const double grownMb = receiver.process.residentMb() - warmMb;
    sendShutDown(receiver.port);
    const double waitMs = receiver.process.value("wait"_L1);
    const bool none = print({.name = "20000 a second for 10 s: not logged",
                             .figure = double(lines.incomplete()),
                             .maxFigure = 0});
    const bool prompt =
        print({.name = "20000 a second for 10 s: longest wait in ms", .figure = waitMs, .maxFigure = 50});
    const bool level =
        print({.name = "20000 a second for 10 s: growth in MB", .figure = grownMb, .maxFigure = 2});
    return none && prompt && level;
}

int burstNotLogged(const Desk &desk)
{
    constexpr int count = 10'000;
    Receiver receiver(u"--watched"_s, desk);
    LogLines lines(desk.paths.RunLogFile, count);
    Sender(receiver.port, count, 0).ends(-1);
    lines.waitUntilQuiet();
    sendShutDown(receiver.port);
    receiver.process.value("cpu"_L1);
    return lines.incomplete();
}

bool measureBurst(const Desk &desk)
{
    constexpr int bursts = 5;
    int notLogged = 0;
    for (int i = 0; i < bursts; ++i) {
        notLogged += burstNotLogged(desk);
    }
    return print(
        {.name = "10000 at once, five times: not logged", .figure = double(notLogged), .maxFigure = 0});
}

struct Start
{
    double ms = 0;
    double residentMb = 0;
};

/// From the start of the process until its window is painted, and what it then holds.
Start startOf(const QString &program, const QStringList &arguments)
{
    QElapsedTimer time;
    time.start();
    Child process(program, arguments);
    process.value("painted"_L1);
    const double ms = static_cast<double>(time.nsecsElapsed()) / 1e6;
    QThread::msleep(300); // until it has nothing left to do
    return {ms, process.residentMb()};
}

bool measureStart(const Desk &desk, const std::string &name, double maxRatio, bool memory)
{
    const QString port = QString::number(freePort());
    std::vector<double> residents, leastResidents;
    const auto program = [&] {
        const Start start = startOf(ourselves, {u"--program"_s, desk.start, desk.data, port});
        residents.push_back(start.residentMb);
        return start.ms;
    };
    const auto minimal = [&] {
        const Start start = startOf(u"bench_minimal"_s, {desk.paths.CustomerFile, port});
        leastResidents.push_back(start.residentMb);
        return start.ms;
    };
    program(); // the first start of all upgrades the new database
    Result result = compare("start until painted in ms, " + name, 11, program, minimal);
    result.maxRatio = maxRatio;
    const bool soon = print(result);
    const bool small = !memory || print({.name = "resident memory in MB, " + name,
                                         .figure = median(residents),
                                         .floor = median(leastResidents),
                                         .maxRatio = 2});
    return soon && small;
}

void chooseLanguage(const Desk &desk, const QString &code)
{
    core::SettingsRecord record;
    core::setGridDefaults(record);
    record.LanguageSetting.setText(code);
    QFile file(desk.paths.SettingsFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(record.toBytes()) != core::SettingsRecord::size) {
        throw std::runtime_error("no settings can be written");
    }
}

/// How much longer a start takes in the language that takes longest than in English.
bool measureLanguages(const Desk &desk)
{
    const QString port = QString::number(freePort());
    const auto startIn = [&](const QString &code) {
        chooseLanguage(desk, code);
        return startOf(ourselves, {u"--program"_s, desk.start, desk.data, port}).ms;
    };
    constexpr size_t starts = 11;
    double longest = 0;
    for (const char *code :
         {"CHS", "CHT", "SPN", "ARA", "FRN", "HBR", "TUK", "KOR", "POL", "PTG", "VN", "ID", "USER"}) {
        startIn(QLatin1String(code)); // once, so that the system has the fonts and files of both at hand
        std::vector<double> longer(starts);
        std::ranges::generate(longer, [&] { return startIn(QLatin1String(code)) - startIn(u"ENG"_s); });
        longest = std::max(longest, median(longer));
    }
    return print(
        {.name = "start in any language over English, the most ms", .figure = longest, .maxFigure = 10});
}

} // namespace

bool measureProgramRows(const std::string &word)
{
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    const Desk empty(0);
    const Desk full(customers);
    const std::pair<const char *, std::function<bool()>> rows[] = {
        {"cpu", [&] { return measureCpu(full, 20'000); }},
        {"cpu slow", [&] { return measureCpu(full, 5'000); }},
        {"paced", [&] { return measurePaced(full); }},
        {"burst", [&] { return measureBurst(full); }},
        {"start empty", [&] { return measureStart(empty, "empty database", 3, true); }},
        {"start full", [&] { return measureStart(full, "100000 customers", 6, false); }},
        {"start languages", [&] { return measureLanguages(empty); }}};
    printHeading();
    bool reached = true;
    for (const auto &[name, measure] : rows) {
        if (std::string(name).find(word) != std::string::npos) {
            reached = measure() && reached;
        }
    }
    return reached;
}

} // namespace bench
