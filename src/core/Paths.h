#pragma once

#include <QString>

namespace core {

/// The files and folders that are fixed once at start (see iniPath); others have names by language or month.
struct Paths
{
    QString StartFolder; ///< the current directory at start: databases and language files
    QString DataFolder;  ///< settings, run log, short messages
    QString PhoneBookFile;
    QString CustomerFile;
    QString SmsFolder;
    QString SmsFile;
    QString PopUserDataFolder;
    QString LangFile;
    QString RunLogFile;
    QString SettingsFile;
    QString UserLangFile;
    QString SendersFile; ///< who may send datagrams; often missing
    QString CopiesFile;  ///< where the copies of the desk stand; missing: in the start folder
    QString OemMarkFile;
    QString WindowsFile; ///< where the windows stood (see WindowMemory)
};

/// The paths below the two folders. Touches nothing.
Paths pathsBelow(const QString &startFolder, const QString &dataFolder);

/// "Good" when `path` names an existing folder, else "". A drive root such as "C:\" counts as existing.
QString FolderExists(const QString &path);

/// Creates one missing folder, not its parents. Throws Error.
void makeFolder(const QString &path);

/// The same, and takes from other users every right to it and to the files in it. Throws Error.
void makePrivateFolder(const QString &path);

/// Makes `StartFolder` the current directory again; a file dialog may have changed it.
void RecoverCurrentPath(const Paths &paths);

/// The OEM mark: 30 bytes at byte position 69 (from 1) of the mark file, trailing blanks and NULs removed;
/// empty without the file.
QString ReadMdrOemMark(const Paths &paths);

} // namespace core
