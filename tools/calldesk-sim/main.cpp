#include "Answers.h"
#include "Options.h"
#include "Player.h"
#include "Replay.h"
#include "UnitSocket.h"

#include "core/Error.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

enum ExitStatus { Done = 0, Failed = 1, WrongUse = 2 };

void writeTo(std::FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream); // who reads a pipe sees each line when it happens
}

void complain(const QString &text)
{
    writeTo(stderr, u"calldesk-sim: %1\n"_s.arg(text).toUtf8());
}

void tell(const QString &text)
{
    writeTo(stdout, text.toUtf8() + '\n');
}

QString stamp(QStringView format)
{
    return QDateTime::currentDateTime().toString(format);
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw core::Error(file.error(), u"%1: %2"_s.arg(path, file.errorString()));
    }
    return file.readAll();
}

std::vector<sim::SceneStep> readScene(const sim::Options &options)
{
    try {
        return sim::parseScene(QString::fromUtf8(readFile(options.sceneFile)), options.datagram.codePage);
    } catch (const sim::UsageError &error) {
        throw sim::UsageError(options.sceneFile + u", "_s + QString::fromUtf8(error.what()));
    }
}

std::unique_ptr<sim::DatagramSeries> seriesOf(const sim::Options &options)
{
    const sim::Pace pace = {options.rate, options.burst};
    if (!options.sceneFile.isEmpty()) {
        return std::make_unique<sim::SceneSeries>(readScene(options));
    }
    if (!options.replayFile.isEmpty()) {
        const sim::Replay replay = sim::readReplay(readFile(options.replayFile), options.datagram.codePage);
        if (!options.quiet && replay.leftOut + replay.shutDowns > 0) {
            complain(u"left out %1 log lines and %2 SHUTDOWNALL"_s.arg(replay.leftOut).arg(replay.shutDowns));
        }
        return std::make_unique<sim::RecordedSeries>(replay.datagrams, pace);
    }
    const bool sends = options.datagram.kind != sim::DatagramTemplate::Kind::None;
    return std::make_unique<sim::NumberedSeries>(options.datagram, options.say, sends ? options.count : 0,
                                                 options.first, pace);
}

ExitStatus printSeries(const sim::DatagramSeries &series)
{
    for (qint64 i = 0; i < series.count(); ++i) {
        writeTo(stdout, sim::captureLine(series.datagram(i, QDateTime::currentDateTime())));
    }
    return Done;
}

void listen(sim::UnitSocket &unit, const sim::Options &options)
{
    using namespace std::chrono;
    const duration<double> time(options.seconds.value_or(-1));
    unit.wait(duration_cast<nanoseconds>(time));
}

ExitStatus report(const sim::PlayReport &played, qint64 refused, const sim::Options &options)
{
    const QString place = options.host + u" port "_s + QString::number(options.port);
    if (!options.quiet && played.sent > 0) {
        tell(u"sent to %1: %2"_s.arg(place, sim::describe(played)));
    }
    if (refused > 0) {
        complain(u"nobody listens on %1: %2 of %3 datagrams came back"_s.arg(place, QString::number(refused),
                                                                             QString::number(played.sent)));
    }
    return refused > 0 ? Failed : Done;
}

ExitStatus sendSeries(const sim::DatagramSeries &series, const sim::Options &options)
{
    const auto hear = [&](const QString &sender, const QByteArray &bytes) {
        tell(u"<%1>  %2  %3"_s.arg(stamp(u"yyyy-MM-dd HH:mm:ss.zzz"), sender,
                                   sim::describeAnswer(bytes, options.datagram.codePage)));
    };
    sim::UnitSocket unit({options.host, options.port, options.from, options.listenPort}, hear);
    if (options.listenPort && !options.quiet) {
        tell(u"listening on port %1"_s.arg(unit.localPort()));
    }
    const sim::Stage stage = {[&](const QByteArray &datagram) { unit.send(datagram); },
                              [&](std::chrono::nanoseconds time) { unit.wait(time); },
                              [](const QString &line) { tell(stamp(u"<yyyy-MM-dd HH:mm:ss>  ") + line); }};
    const sim::PlayReport played = sim::play(series, stage);
    const ExitStatus status = report(played, unit.refused(), options);
    if (options.listenPort) {
        listen(unit, options);
    }
    return status;
}

ExitStatus run(const QStringList &arguments)
{
    const sim::Options options = sim::parseOptions(arguments);
    if (!options.help.isEmpty()) {
        writeTo(stdout, options.help.toUtf8());
        return Done;
    }
    const std::unique_ptr<sim::DatagramSeries> series = seriesOf(options);
    return options.print ? printSeries(*series) : sendSeries(*series, options);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"calldesk-sim"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(CALLDESK_VERSION));
    try {
        return run(QCoreApplication::arguments());
    } catch (const sim::UsageError &error) {
        complain(QString::fromUtf8(error.what()) + u"\nTry calldesk-sim --help"_s);
        return WrongUse;
    } catch (const core::Error &error) {
        complain(error.description());
        return Failed;
    }
}
