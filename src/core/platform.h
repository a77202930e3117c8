#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>
#include <memory>

/// What differs between systems. Implemented in the files platform_*.cpp, and nowhere else.
namespace core::platform {

/// "C:\CallDesk" on Windows; elsewhere CallDesk below $XDG_DATA_HOME, by default ~/.local/share. Created
/// parents included on Unix, where a fresh account may lack them.
QString dataFolder();

/// The user's folder for the instance lock: $XDG_RUNTIME_DIR, else one of the user's own in the temporary
/// folder.
QString runtimeFolder();

/// The folder whose existence tells a developer's machine; empty where the test is not made.
QString developerFolder();

/// The operating system's default language as a Windows language identifier (0x0409: English, United States).
quint16 systemLanguageId();

/// The ANSI code page for text from the network: the system's on Windows; Unix has none, so there it is the
/// one that Windows has in the system's language.
int ansiCodePage(quint16 systemLanguageId);

/// Turns bytes of one code page into text: null text as soon as one byte is no character of it.
using AnsiDecoder = std::function<QString(QByteArrayView)>;
/// Empty where the system does not know the code page.
AnsiDecoder ansiDecoder(int codePage);
/// Text in the bytes of a code page; characters that it lacks become "?".
QByteArray encodeAnsi(int codePage, QStringView text);

/// Opens, appends with one write call and closes; a missing file is made. What a full disk has cut off is
/// taken back, and a link is not followed. The file's size afterwards. Throws Error.
qint64 appendToFile(const QString &path, QByteArrayView bytes);

/// Makes an empty file; false where something has that name already, be it a link that leads nowhere. Throws
/// Error.
bool createFile(const QString &path);

/// What the user may still write on the disk that holds a folder; -1 where that is not known.
qint64 freeBytes(const QString &folder);

/// Takes from other users every right to a file or folder; a link is left alone. False where that cannot be
/// done. On Windows a folder's access list, which its files inherit, is the administrator's, and stays.
bool closeToOthers(const QString &path);

/// Writes over a file that exists; a link is not followed. Throws Error; the file may then stand half
/// written.
void writeFile(const QString &path, QByteArrayView bytes);

/// Forces a file that was written to the disk. Throws Error.
void syncFile(const QString &path);

/// Renames over an existing file in one step that a crash cannot split. Throws Error.
void replaceFile(const QString &from, const QString &to);

/// Holds a lock file for as long as it is there, at most until the process ends, however it ends.
using ProcessLock = std::shared_ptr<void>;
/// Null when somebody else holds it; throws Error when it cannot be taken for another reason.
ProcessLock takeProcessLock(const QString &path);

/// The system's text editor as a program name; empty where the system knows no such thing and a text file is
/// opened like any other.
QString textEditor();

/// The desktop is set to dark colours.
bool prefersDark();

/// Asks for a larger receive buffer of a socket; the bytes granted.
int growReceiveBuffer(qintptr socket, int bytes);

/// Lets another process of the same user bring its window to the front (Windows asks for the permission).
void allowOthersToFront();

/// Tells the window manager that a window wants no keyboard when it comes up next. Qt tells it only when it
/// shows a window, not when one ceases to be minimised. Does nothing where that is the window system's own
/// business.
void wantNoKeyboard(quintptr window);

} // namespace core::platform
