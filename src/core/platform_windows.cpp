#include "core/platform.h"

#include "core/Error.h"

#include <QDir>

#include <winsock2.h>

#include <qt_windows.h>

using namespace Qt::StringLiterals;

namespace core::platform {

namespace {

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

[[noreturn]] void fail(const QString &path)
{
    const DWORD number = GetLastError();
    throw Error(int(number), qt_error_string(int(number)).trimmed() + u": "_s + path);
}

HANDLE openFile(const QString &path, DWORD access, DWORD disposition)
{
    return CreateFileW(wide(path), access | FILE_READ_ATTRIBUTES,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, disposition,
                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

// An open file; a link is not followed, and refused.
class Handle
{
public:
    Handle(const QString &path, DWORD access, DWORD disposition)
        : m_path(path), m_handle(openFile(path, access, disposition))
    {
        if (m_handle == INVALID_HANDLE_VALUE) {
            fail(path);
        }
        FILE_ATTRIBUTE_TAG_INFO info = {};
        if (GetFileInformationByHandleEx(m_handle, FileAttributeTagInfo, &info, sizeof(info)) &&
            (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
            info.ReparseTag == IO_REPARSE_TAG_SYMLINK) {
            CloseHandle(m_handle);
            SetLastError(ERROR_CANT_ACCESS_FILE);
            fail(path);
        }
    }
    ~Handle() { CloseHandle(m_handle); }
    Q_DISABLE_COPY_MOVE(Handle)

    void write(QByteArrayView bytes) const
    {
        while (!bytes.isEmpty()) {
            DWORD written = 0;
            if (!WriteFile(m_handle, bytes.data(), DWORD(bytes.size()), &written, nullptr)) {
                fail(m_path);
            }
            bytes = bytes.sliced(qsizetype(written));
        }
    }
    void cutAt(qint64 size) const
    {
        FILE_END_OF_FILE_INFO end = {};
        end.EndOfFile.QuadPart = size;
        SetFileInformationByHandle(m_handle, FileEndOfFileInfo, &end, sizeof(end));
    }
    void sync() const
    {
        if (!FlushFileBuffers(m_handle)) {
            fail(m_path);
        }
    }
    qint64 size() const
    {
        LARGE_INTEGER size = {};
        return GetFileSizeEx(m_handle, &size) ? size.QuadPart : 0;
    }

private:
    const QString &m_path;
    HANDLE m_handle;
};

} // namespace

QString dataFolder()
{
    return u"C:\\CallDesk"_s;
}

QString runtimeFolder()
{
    return QDir::tempPath();
}

QString developerFolder()
{
    return u"D:\\Develop\\Corvane"_s;
}

quint16 systemLanguageId()
{
    return GetSystemDefaultLangID();
}

int ansiCodePage(quint16)
{
    return int(GetACP());
}

qint64 appendToFile(const QString &path, QByteArrayView bytes)
{
    const Handle file(path, FILE_APPEND_DATA, OPEN_ALWAYS);
    const qint64 before = file.size();
    try {
        file.write(bytes);
    } catch (const Error &) {
        const qint64 added = file.size() - before;
        if (added > 0 && added < bytes.size()) {
            Handle(path, GENERIC_WRITE, OPEN_EXISTING).cutAt(before); // not the right of who appends
        }
        throw;
    }
    return file.size();
}

bool createFile(const QString &path)
{
    const HANDLE handle = openFile(path, GENERIC_WRITE, CREATE_NEW);
    if (handle == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS) {
        fail(path);
    }
    return handle != INVALID_HANDLE_VALUE && CloseHandle(handle);
}

qint64 freeBytes(const QString &folder)
{
    ULARGE_INTEGER bytes = {};
    return GetDiskFreeSpaceExW(wide(folder), &bytes, nullptr, nullptr) ? qint64(bytes.QuadPart) : -1;
}

// An administrator would have to allow them.
void preferLargePages(void *, size_t) {}

bool closeToOthers(const QString &)
{
    return true;
}

void writeFile(const QString &path, QByteArrayView bytes)
{
    const Handle file(path, GENERIC_WRITE, TRUNCATE_EXISTING);
    file.write(bytes);
}

void syncFile(const QString &path)
{
    const Handle file(path, GENERIC_WRITE, OPEN_EXISTING);
    file.sync();
}

void replaceFile(const QString &from, const QString &to)
{
    if (!MoveFileExW(wide(from), wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        fail(to);
    }
}

ProcessLock takeProcessLock(const QString &path)
{
    QString name = path;
    name.replace(u'\\', u'_').replace(u'/', u'_').replace(u':', u'_');
    const QString mutexName = u"Local\\"_s + name;
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, wide(mutexName)); // it is there or not: nobody owns it
    const bool taken = GetLastError() != ERROR_ALREADY_EXISTS;
    if (mutex == nullptr) {
        fail(path);
    }
    const ProcessLock lock(mutex, CloseHandle);
    return taken ? lock : ProcessLock();
}

QString textEditor()
{
    return u"notepad"_s;
}

bool prefersDark()
{
    DWORD light = 1;
    DWORD size = sizeof(light);
    RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                 L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    return light == 0;
}

int growReceiveBuffer(qintptr socket, int bytes)
{
    const SOCKET handle = SOCKET(socket);
    setsockopt(handle, SOL_SOCKET, SO_RCVBUF, reinterpret_cast<const char *>(&bytes), sizeof(bytes));
    int granted = 0;
    int length = sizeof(granted);
    getsockopt(handle, SOL_SOCKET, SO_RCVBUF, reinterpret_cast<char *>(&granted), &length);
    return granted;
}

void allowOthersToFront()
{
    AllowSetForegroundWindow(ASFW_ANY);
}

} // namespace core::platform
