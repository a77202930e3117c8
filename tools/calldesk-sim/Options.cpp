#include "Options.h"

#include "OptionTable.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QHash>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace sim {

namespace {

QCommandLineOption textOption(const char *name, const char *description, const char *valueName)
{
    return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(description),
                              QString::fromLatin1(valueName));
}

QCommandLineOption optionOf(const PlainOption &option)
{
    return textOption(option.name, option.description, option.valueName);
}

void addDatagramOptions(QCommandLineParser &parser)
{
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    for (const FieldOption &option : fieldOptions) {
        parser.addOption(textOption(option.name, option.description, option.valueName));
    }
    for (const PlainOption &option : datagramOptions) {
        parser.addOption(optionOf(option));
    }
}

// Three options may stand without their value, which the parser does not know: it gets the default spelled
// out.
QStringList withDefaultValues(const QStringList &arguments)
{
    static const QHash<QString, QString> defaults = {
        {u"--vip"_s, u"Y"_s}, {u"--black-list"_s, u"Y"_s}, {u"--listen"_s, u"1971"_s}};
    QStringList complete;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        complete.append(arguments.at(i));
        const bool valueFollows = i + 1 < arguments.size() && !arguments.at(i + 1).startsWith(u'-');
        if (defaults.contains(arguments.at(i)) && !valueFollows) {
            complete.append(defaults.value(arguments.at(i)));
        }
    }
    return complete;
}

void parseOrThrow(QCommandLineParser &parser, const QStringList &arguments)
{
    if (!parser.parse(withDefaultValues(arguments))) {
        throw UsageError(parser.errorText());
    }
    if (!parser.positionalArguments().isEmpty()) {
        throw UsageError(u"\"%1\" is no option"_s.arg(parser.positionalArguments().constFirst()));
    }
}

// The number given for an option, or `fallback` where it is not given.
double number(const QCommandLineParser &parser, QLatin1StringView name, double fallback, double least,
              double most)
{
    if (!parser.isSet(name)) {
        return fallback;
    }
    bool isNumber = false;
    const double value = parser.value(name).toDouble(&isNumber);
    if (!isNumber || !(value >= least && value <= most)) {
        throw UsageError(u"--%1 takes a number from %2 to %3, not \"%4\""_s.arg(
            name, QString::number(least, 'f', 0), QString::number(most, 'f', 0), parser.value(name)));
    }
    return value;
}

qint64 wholeNumber(const QCommandLineParser &parser, QLatin1StringView name, qint64 fallback, qint64 least,
                   qint64 most)
{
    const double value = number(parser, name, static_cast<double>(fallback), static_cast<double>(least),
                                static_cast<double>(most));
    const qint64 whole = static_cast<qint64>(value);
    if (static_cast<double>(whole) != value) {
        throw UsageError(u"--%1 takes a whole number, not \"%2\""_s.arg(name, parser.value(name)));
    }
    return whole;
}

quint16 portNumber(const QCommandLineParser &parser, QLatin1StringView name, quint16 fallback, quint16 least)
{
    return static_cast<quint16>(wholeNumber(parser, name, fallback, least, 65535));
}

CodePageChoice codePageOf(const QCommandLineParser &parser, const CodePageChoice &fallback)
{
    const std::optional<CodePageChoice> codePage = CodePageChoice::named(parser.value("code-page"_L1));
    if (parser.isSet("code-page"_L1) && !codePage) {
        throw UsageError(u"--code-page takes utf-8 or a Windows code page number, not \"%1\""_s.arg(
            parser.value("code-page"_L1)));
    }
    return codePage.value_or(fallback);
}

std::optional<QString> valueIfSet(const QCommandLineParser &parser, QLatin1StringView name)
{
    return parser.isSet(name) ? std::optional(parser.value(name)) : std::nullopt;
}

CallFields callFieldsOf(const QCommandLineParser &parser)
{
    CallFields fields;
    fields.channel = u"001"_s;
    fields.line = u"5550100"_s;
    fields.ip = u"127.0.0.1"_s;
    for (const FieldOption &option : fieldOptions) {
        const QString name = QString::fromLatin1(option.name);
        if (parser.isSet(name)) {
            fields.*option.field = parser.value(name);
        }
    }
    fields.rawCid = valueIfSet(parser, "raw-cid"_L1);
    fields.detail = valueIfSet(parser, "detail"_L1);
    return fields;
}

DatagramTemplate::Kind recordKind(const QCommandLineParser &parser)
{
    using Kind = DatagramTemplate::Kind;
    static const QHash<QString, Kind> kinds = {
        {QString(), Kind::Call}, {u"call"_s, Kind::Call}, {u"cid"_s, Kind::Cid}, {u"detail"_s, Kind::Detail}};
    const QString name = parser.value("kind"_L1);
    if (!kinds.contains(name)) {
        throw UsageError(u"--kind takes call, cid or detail, not \"%1\""_s.arg(name));
    }
    return kinds.value(name);
}

bool asksForRecord(const QCommandLineParser &parser)
{
    const bool hasField =
        std::any_of(std::begin(fieldOptions), std::end(fieldOptions), [&](const FieldOption &option) {
            return parser.isSet(QString::fromLatin1(option.name));
        });
    return hasField || parser.isSet("raw-cid"_L1) || parser.isSet("detail"_L1) || parser.isSet("kind"_L1);
}

// Every kind of datagram that the options ask for; more than one is a contradiction.
QList<DatagramTemplate::Kind> kindsAskedFor(const QCommandLineParser &parser)
{
    using Kind = DatagramTemplate::Kind;
    static constexpr std::pair<QLatin1StringView, Kind> commands[] = {
        {"message"_L1, Kind::Message},
        {"shutdown"_L1, Kind::ShutDown},
        {"channel-status"_L1, Kind::ChannelStatus},
        {"text"_L1, Kind::Text}};
    QList<Kind> kinds;
    for (const auto &[name, kind] : commands) {
        if (parser.isSet(name)) {
            kinds.append(kind);
        }
    }
    if (asksForRecord(parser)) {
        kinds.append(recordKind(parser));
    }
    return kinds;
}

DatagramTemplate datagramOf(const QCommandLineParser &parser, const CodePageChoice &codePage)
{
    const QList<DatagramTemplate::Kind> kinds = kindsAskedFor(parser);
    if (kinds.size() > 1) {
        throw UsageError(u"one datagram cannot be several: a record, --message, --shutdown, --channel-status "
                         "or --text"_s);
    }
    DatagramTemplate wanted;
    wanted.kind = kinds.value(0, DatagramTemplate::Kind::None);
    wanted.fields = callFieldsOf(parser);
    wanted.timeIsNow = !parser.isSet("time"_L1);
    wanted.text = parser.value("message"_L1) + parser.value("channel-status"_L1) + parser.value("text"_L1);
    wanted.sendTo = parser.isSet("to"_L1) ? parser.value("to"_L1) : u"ALL"_s;
    wanted.codePage = codePageOf(parser, codePage);
    return wanted;
}

void readPacing(const QCommandLineParser &parser, Options &options)
{
    constexpr qint64 most = 1'000'000'000;
    options.burst = wholeNumber(parser, "burst"_L1, 1, 1, most);
    options.count = wholeNumber(parser, "count"_L1, options.burst, 1, most);
    options.first = wholeNumber(parser, "first"_L1, 1, 0, most);
    options.rate = number(parser, "rate"_L1, options.replayFile.isEmpty() ? 0 : 10, 0, 10'000'000);
}

void readNetwork(const QCommandLineParser &parser, Options &options)
{
    options.host = parser.isSet("host"_L1) ? parser.value("host"_L1) : u"127.0.0.1"_s;
    options.port = portNumber(parser, "port"_L1, 1972, 1);
    if (parser.isSet("from"_L1) && !options.from.setAddress(parser.value("from"_L1))) {
        throw UsageError(
            u"--from takes an address of this machine, not \"%1\""_s.arg(parser.value("from"_L1)));
    }
    if (parser.isSet("listen"_L1)) {
        options.listenPort = portNumber(parser, "listen"_L1, 1971, 0);
    }
    if (parser.isSet("seconds"_L1)) {
        options.seconds = number(parser, "seconds"_L1, 0, 0, 1'000'000);
    }
}

void checkSomethingIsAsked(const Options &options)
{
    const int sources = int(options.datagram.kind != DatagramTemplate::Kind::None) +
                        int(!options.replayFile.isEmpty()) + int(!options.sceneFile.isEmpty());
    if (sources > 1) {
        throw UsageError(u"--replay, --scene and a single datagram exclude one another"_s);
    }
    if (sources == 0 && !options.listenPort) {
        throw UsageError(u"nothing to send and nothing to listen to"_s);
    }
}

QString helpAsked(const QCommandLineParser &parser)
{
    if (parser.isSet("version"_L1)) {
        return u"calldesk-sim "_s + QCoreApplication::applicationVersion() + u'\n';
    }
    return parser.isSet("help"_L1) ? parser.helpText() + QString::fromUtf8(helpNotes) : QString();
}

} // namespace

Options parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Plays a caller-ID unit: sends calls and commands to CallDesk over UDP."_s);
    parser.addOption({{u"h"_s, u"help"_s}, u"This text."_s});
    parser.addOption({{u"v"_s, u"version"_s}, u"The version."_s});
    addDatagramOptions(parser);
    for (const PlainOption &option : runOptions) {
        parser.addOption(optionOf(option));
    }
    parseOrThrow(parser, arguments);
    Options options;
    options.help = helpAsked(parser);
    if (!options.help.isEmpty()) {
        return options;
    }
    options.datagram = datagramOf(parser, CodePageChoice());
    options.say = parser.value("say"_L1);
    options.replayFile = parser.value("replay"_L1);
    options.sceneFile = parser.value("scene"_L1);
    options.print = parser.isSet("print"_L1);
    options.quiet = parser.isSet("quiet"_L1);
    readPacing(parser, options);
    readNetwork(parser, options);
    checkSomethingIsAsked(options);
    return options;
}

Options parseStep(const QStringList &arguments, const CodePageChoice &codePage)
{
    QCommandLineParser parser;
    addDatagramOptions(parser);
    parseOrThrow(parser, QStringList(QString()) + arguments);
    Options options;
    options.datagram = datagramOf(parser, codePage);
    options.say = parser.value("say"_L1);
    if (options.datagram.kind == DatagramTemplate::Kind::None) {
        throw UsageError(u"this step sends nothing"_s);
    }
    return options;
}

} // namespace sim
