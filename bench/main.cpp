// The table of benchmarks: calldesk-bench [--large] [WORD] measures the rows that have the word in their
// name, with --large those at a million customers.
//
// The program starts itself in several roles: as the program that is measured, as what is measured against
// it, and as the sender of calls.

#include "Datagrams.h"
#include "Measure.h"
#include "PaintedApplication.h"
#include "Rows.h"

#include "appearance/theme/Theme.h"
#include "appearance/theme/ThemedIcons.h"

#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// As main() of the program sets it up.
void setUp(QApplication &application)
{
    QApplication::setApplicationName(u"calldesk"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(appearance::programIcon());
    appearance::applyTheme(application, false);
}

int send(const QStringList &arguments)
{
    const double seconds =
        bench::sendCalls(arguments.at(0).toUShort(), arguments.at(1).toInt(), arguments.at(2).toInt());
    std::printf("sent %.3f\n", seconds);
    return EXIT_SUCCESS;
}

/// What is measured from the moment when the start is over.
struct Measured
{
    double cpuBefore = 0;
    std::optional<bench::Waits> waits;
};

void report(const Measured &measured)
{
    std::printf("cpu %.6f\n", bench::cpuSeconds() - measured.cpuBefore);
    if (measured.waits) {
        const bench::Sample waits = measured.waits->longestMs();
        std::printf("wait %.3f\nemptyWait %.3f\n", waits.figure, waits.floor);
    }
    std::fflush(stdout);
}

/// Calls when the program has had nothing to do for a moment: on a busy machine, too, all that the start
/// leaves to the event loop is done by then.
void whenQuiet(QTimer &timer, const std::function<void()> &then)
{
    constexpr std::chrono::milliseconds moment(300);
    constexpr double nothing = 0.01; // seconds
    QObject::connect(&timer, &QTimer::timeout, [&timer, then, before = 0.0]() mutable {
        const double now = bench::cpuSeconds();
        if (now - std::exchange(before, now) < nothing) {
            timer.stop();
            then();
        }
    });
    timer.start(moment);
}

/// Says "painted" when the main window stands, "ready" when the start is over, and at "SHUTDOWNALL" what it
/// has taken since: CPU seconds and, where it is watched, how long the event loop let an event wait.
int runProgram(const core::Paths &paths, quint16 port, bool watched)
{
    Measured measured;
    const auto end = [&] {
        report(measured);
        QCoreApplication::exit();
    };
    const bench::RunningProgram program(paths, port, end);
    QTimer quiet;
    whenQuiet(quiet, [&] {
        if (watched) {
            bench::makePipe(paths.RunLogFile);
            measured.waits.emplace();
        }
        bench::say("ready");
        measured.cpuBefore = bench::cpuSeconds();
    });
    return QApplication::exec();
}

int measure(const QStringList &arguments)
{
    const bool large = arguments.contains("--large"_L1);
    const QString word =
        arguments.size() > 1 && !arguments.last().startsWith("--"_L1) ? arguments.last() : QString();
    bench::Stations stations;
    bench::Rows rows;
    const auto add = [&rows](const bench::Rows &more) { rows.insert(rows.end(), more.begin(), more.end()); };
    if (large) {
        add(bench::lookupRows(bench::largestDesk));
        add(bench::customerRows(stations, bench::largestDesk));
        add(bench::exportRows(stations, bench::largestDesk));
        add(bench::growthRows(stations));
        add(bench::startRows(bench::largestDesk));
    } else {
        add(bench::lookupRows(bench::smallDesk));
        add(bench::lookupRows(bench::usualDesk));
        add(bench::customerRows(stations, bench::usualDesk));
        add(bench::exportRows(stations, bench::usualDesk));
        add(bench::noteRows(stations));
        add(bench::languageRows(stations));
        add(bench::receptionRows());
        add(bench::startRows(0));
        add(bench::startRows(bench::usualDesk));
    }
    return bench::print(rows, word.toStdString()) ? EXIT_SUCCESS : EXIT_FAILURE;
}

QStringList argumentList(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

int run(int argc, char *argv[])
{
    const QStringList arguments = argumentList(argc, argv);
    const QString role = arguments.value(1);
    if (role == "--send"_L1) {
        return send(arguments.mid(2));
    }
    if (role == "--floor"_L1) {
        bench::receivePlainly(arguments.at(4).toUShort(), arguments.at(3) + u"/floor.txt"_s);
        return EXIT_SUCCESS;
    }
    if (role == "--program"_L1 || role == "--watched"_L1) {
        bench::PaintedApplication application(argc, argv);
        setUp(application);
        return runProgram(core::pathsBelow(arguments.at(2), arguments.at(3)), arguments.at(4).toUShort(),
                          role == "--watched"_L1);
    }
    QApplication application(argc, argv);
    setUp(application);
    return measure(arguments);
}

} // namespace

int main(int argc, char *argv[])
{
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "calldesk-bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
