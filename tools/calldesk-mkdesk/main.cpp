#include "DeskFiles.h"

#include "conversion/DeskConversion.h"
#include "core/Error.h"
#include "core/QtClock.h"
#include "oldfiles/OldDatabase.h"
#include "store/Database.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDirIterator>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

enum ExitStatus { Done = 0, Failed = 1, WrongUse = 2 };

constexpr QLatin1StringView notes = R"(
Customer.ccsm, SimplePhoneBook.cpbk, Lang.mdb, UserLang.lan, the language files and the help files are made in
FOLDER, which is made too when it is missing. A file that exists is kept as it is. Standard output names the files
that were made, one a line.

Examples:
    calldesk-mkdesk MyDesk --sample
    calldesk-mkdesk MyDesk --convert && calldesk-mkdesk MyDesk

With --convert, the databases of an old installation (Jet 3 and Jet 4 files under the names above) are converted in
one step: all or, where anything fails, none. They are compared cell by cell, and the old files stand in
FOLDER/Old files <date> afterwards. If it is broken off, start it again: it is then completed.

Exit status: 0 done, 1 a file could not be made or is damaged, 2 wrong use.
)"_L1;

void write(std::FILE *stream, const QString &text)
{
    std::fputs((text + u'\n').toUtf8().constData(), stream);
}

void complain(const QString &text)
{
    write(stderr, u"calldesk-mkdesk: "_s + text);
}

void describeOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Makes the database files that CallDesk is delivered with, or converts those of an old installation."_s);
    parser.addPositionalArgument(u"FOLDER"_s, u"Where the files are made: the program's start folder."_s);
    parser.addOption({u"sample"_s, u"With invented customers and phone book entries, to try the program."_s});
    parser.addOption(
        {u"areas"_s,
         u"Also make the area database from this tab-separated file; its first line names the columns "
         "AreaCode, Area and PlaceName."_s,
         u"file"_s});
    parser.addOption(
        {u"data"_s, u"Take the text sources from this folder, not from the program."_s, u"folder"_s});
    parser.addOption(
        {u"check"_s, u"Make nothing; check every database file below FOLDER for damage instead."_s});
    parser.addOption({u"convert"_s, u"Convert the databases of an old installation in FOLDER."_s});
    parser.addOption({{u"h"_s, u"help"_s}, u"This text."_s});
    parser.addOption({{u"v"_s, u"version"_s}, u"The version."_s});
}

ExitStatus makeDesk(const QCommandLineParser &parser)
{
    const QString folder = parser.positionalArguments().constFirst();
    const mkdesk::DeskSources sources(parser.isSet(u"data"_s) ? parser.value(u"data"_s)
                                                              : mkdesk::DeskSources::embedded());
    QList<mkdesk::DeskFile> files = mkdesk::deskFiles(sources, parser.isSet(u"sample"_s));
    if (parser.isSet(u"areas"_s)) {
        files.append(mkdesk::areaFile(sources, parser.value(u"areas"_s)));
    }
    conversion::completeConversion(folder); // its files would else seem to be missing
    for (const mkdesk::DeskFile &file : std::as_const(files)) {
        if (mkdesk::makeDeskFile(file, folder) == mkdesk::Made::New) {
            write(stdout, file.path);
        } else {
            write(stderr, u"kept "_s + file.path + u": it exists"_s);
        }
    }
    return Done;
}

// What is wrong with a file, also where it is no database at all; empty for a sound one.
QString damageOf(const QString &path)
{
    if (oldfiles::isOldDatabase(path)) {
        return u"a database of an old installation; --convert makes it one of CallDesk's"_s;
    }
    try {
        return store::damageOf(path).join(u"; "_s);
    } catch (const core::Error &error) {
        return error.description();
    }
}

ExitStatus checkDesk(const QString &folder)
{
    ExitStatus status = Done;
    const QDir desk(QDir(folder).absolutePath());
    QDirIterator files(desk.path(), mkdesk::databasePatterns(), QDir::Files, QDirIterator::Subdirectories);
    if (!files.hasNext()) {
        throw core::Error(0, u"there is no database file below "_s + folder);
    }
    while (files.hasNext()) {
        const QString path = files.next();
        if (conversion::isAmongOldFiles(desk.relativeFilePath(path))) {
            continue;
        }
        const QString damage = damageOf(path);
        write(stdout, path + u": "_s + (damage.isEmpty() ? u"ok"_s : damage));
        status = damage.isEmpty() ? status : Failed;
    }
    return status;
}

ExitStatus convertDesk(const QString &folder)
{
    if (!QFileInfo(folder).isDir()) {
        throw core::Error(0, u"there is no folder "_s + folder);
    }
    const conversion::Report report = conversion::convertDesk(folder, core::QtClock().now().date());
    if (report.resumed) {
        write(stdout, u"An earlier conversion that was broken off is completed."_s);
    }
    for (const conversion::ConvertedFile &file : report.files) {
        write(stdout, file.path);
        for (const conversion::ConvertedTable &table : file.tables) {
            write(stdout, u"    %1: %2 rows"_s.arg(table.name, QString::number(table.rows)));
        }
    }
    write(stdout, report.files.isEmpty() ? u"There are no old databases in "_s + folder
                                         : u"The old files stand in "_s + folder + u'/' + report.oldFiles);
    return Done;
}

ExitStatus run(QCommandLineParser &parser, const QStringList &arguments)
{
    describeOptions(parser);
    const bool understood = parser.parse(arguments);
    if (understood && parser.isSet(u"help"_s)) {
        write(stdout, parser.helpText() + notes);
        return Done;
    }
    if (understood && parser.isSet(u"version"_s)) {
        write(stdout, u"calldesk-mkdesk "_s + QCoreApplication::applicationVersion());
        return Done;
    }
    if (!understood || parser.positionalArguments().size() != 1) {
        complain((understood ? u"one folder is wanted"_s : parser.errorText()) +
                 u"\nTry calldesk-mkdesk --help"_s);
        return WrongUse;
    }
    if (parser.isSet(u"convert"_s)) {
        return convertDesk(parser.positionalArguments().constFirst());
    }
    return parser.isSet(u"check"_s) ? checkDesk(parser.positionalArguments().constFirst()) : makeDesk(parser);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CALLDESK_VERSION));
    QCommandLineParser parser;
    try {
        return run(parser, QCoreApplication::arguments());
    } catch (const core::Error &error) {
        complain(error.description());
        return Failed;
    }
}
