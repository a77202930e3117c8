#include "RunProgram.h"

#include "EventLoopWatch.h"
#include "PaintedApplication.h"
#include "Receiving.h"

#include "app/Program.h"
#include "appearance/Theme.h"
#include "appearance/ThemedIcons.h"
#include "core/QtClock.h"
#include "core/QtPrinter.h"
#include "core/QtShell.h"

#include <QFile>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class FailingPrompts : public core::Prompts
{
public:
    void tell(const QString &text, const QString &, QWidget *) override { fail(text); }
    bool askOkCancel(const QString &text, const QString &) override
    {
        fail(text);
        return false;
    }
    Answer askSave(const QString &text, QWidget *, const SaveWords &) override
    {
        fail(text);
        return Answer::Cancel;
    }
    QString saveFileName(const QString &proposed, const QString &) override
    {
        fail(proposed);
        return {};
    }
    bool isOpen() const override { return false; }

private:
    static void fail(const QString &text)
    {
        std::fprintf(stderr, "the program asks: %s\n", qPrintable(text));
        std::exit(EXIT_FAILURE);
    }
};

void makePipeOf(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    std::remove(name.constData());
    if (::mkfifo(name.constData(), 0600) != 0) {
        std::perror(name.constData());
        std::exit(EXIT_FAILURE);
    }
}

/// What is measured from the moment when the start is over.
struct Measured
{
    double cpuBefore = 0;
    std::optional<bench::EventLoopWatch> watch;
};

void start(Measured &measured, const bench::ProgramPlace &place, bool watched)
{
    if (watched) {
        makePipeOf(core::pathsBelow(place.desk, place.data).RunLogFile);
        measured.watch.emplace();
    }
    bench::say("ready");
    measured.cpuBefore = bench::cpuSeconds();
}

void report(const Measured &measured)
{
    std::printf("cpu %.6f\n", bench::cpuSeconds() - measured.cpuBefore);
    if (measured.watch) {
        std::printf("wait %.3f\n", measured.watch->longestWaitMs());
    }
}

} // namespace

int bench::runProgram(const ProgramPlace &place, bool watched)
{
    int argc = 1;
    char name[] = "calldesk";
    char *argv[] = {name, nullptr};
    PaintedApplication application(argc, argv);
    QApplication::setApplicationName(u"calldesk"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(appearance::programIcon());
    appearance::applyTheme(application, false);

    FailingPrompts prompts;
    core::QtShell shell;
    core::QtPrinter printer;
    const core::QtClock clock;
    constexpr quint16 english = 0x0409;
    Measured measured;
    const auto endProcess = [&] {
        report(measured);
        QCoreApplication::exit();
    };
    app::Program program({prompts,
                          shell,
                          printer,
                          clock,
                          place.desk,
                          place.data,
                          place.data,
                          {},
                          english,
                          place.port,
                          endProcess});
    if (!program.subMain()) {
        return EXIT_FAILURE;
    }
    constexpr std::chrono::milliseconds untilQuiet{
        300}; // until what the start leaves to the event loop is done
    QTimer::singleShot(untilQuiet, [&] { start(measured, place, watched); });
    return QApplication::exec();
}
