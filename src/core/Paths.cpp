#include "core/Paths.h"

#include "core/AtomicFile.h"
#include "core/Error.h"
#include "core/platform.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

using namespace Qt::StringLiterals;

namespace core {

Paths pathsBelow(const QString &startFolder, const QString &dataFolder)
{
    const QString start = QDir::toNativeSeparators(startFolder);
    const QString data = QDir::toNativeSeparators(dataFolder);
    const QChar slash = QDir::separator();
    const auto below = [slash](const QString &folder, QLatin1StringView name) {
        return QString(folder + slash + name);
    };
    Paths paths;
    paths.StartFolder = start;
    paths.DataFolder = data;
    paths.PhoneBookFile = below(start, "SimplePhoneBook.cpbk"_L1);
    paths.CustomerFile = below(start, "Customer.ccsm"_L1);
    paths.SmsFolder = below(data, "SMS"_L1);
    paths.SmsFile = below(paths.SmsFolder, "SMS.txt"_L1);
    paths.PopUserDataFolder = below(start, "PopUserData"_L1);
    paths.LangFile = below(start, "Lang.mdb"_L1);
    paths.RunLogFile = below(data, "Runlog.txt"_L1);
    paths.SettingsFile = below(data, "Crm.cfg"_L1);
    paths.SendersFile = below(data, "Senders.txt"_L1);
    paths.CopiesFile = below(data, "Copies.txt"_L1);
    paths.UserLangFile = below(start, "UserLang.lan"_L1);
    paths.OemMarkFile = below(start, "mdr.cfg"_L1);
    paths.WindowsFile = below(data, "Windows.json"_L1);
    return paths;
}

namespace {

bool isDriveRoot(const QString &path)
{
    return path.size() <= 3 && path.mid(1, 1) == u':' && (path.size() < 3 || path.back() == u'\\');
}

// A network share may be there although it cannot be listed as a folder.
bool isNetworkVolume(const QString &path)
{
    return path.startsWith("\\\\"_L1) && QStorageInfo(path).isReady();
}

} // namespace

QString FolderExists(const QString &path)
{
    const bool exists = QFileInfo(path).isDir() || isDriveRoot(path) || isNetworkVolume(path);
    return exists ? u"Good"_s : QString();
}

void makeFolder(const QString &path)
{
    const bool exists = !FolderExists(path).isEmpty() || QDir().mkdir(path);
    if (!exists && FolderExists(path).isEmpty()) { // another program may have been a moment earlier
        throw Error(0, u"cannot create the folder "_s + path);
    }
}

// Where a link stands for the folder, the folder that it leads to is made private.
void makePrivateFolder(const QString &path)
{
    makeFolder(path);
    QStringList open = {QFileInfo(path).canonicalFilePath()};
    const QDir folder(path);
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        open.append(folder.filePath(name));
    }
    open.removeIf(platform::closeToOthers);
    if (!open.isEmpty()) {
        throw Error(0, u"open to other users: "_s + open.join(u", "_s));
    }
}

void RecoverCurrentPath(const Paths &paths)
{
    QDir::setCurrent(paths.StartFolder);
}

QString ReadMdrOemMark(const Paths &paths)
{
    constexpr qint64 markOffset = 68;
    constexpr qint64 markWidth = 30;
    if (!QFileInfo(paths.OemMarkFile).isFile()) {
        return {};
    }
    QByteArray mark = readBytes(paths.OemMarkFile, markOffset, markWidth);
    while (mark.endsWith(' ') || mark.endsWith('\0')) {
        mark.chop(1);
    }
    return QString::fromLatin1(mark);
}

} // namespace core
