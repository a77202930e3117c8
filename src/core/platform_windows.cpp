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

class Handle
{
public:
    Handle(const QString &path, DWORD access, DWORD disposition)
        : m_path(path),
          m_handle(CreateFileW(wide(path), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        if (m_handle == INVALID_HANDLE_VALUE) {
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
    const Handle file(path, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES, OPEN_ALWAYS);
    file.write(bytes);
    return file.size();
}

void writeAndSync(const QString &path, QByteArrayView bytes)
{
    const Handle file(path, GENERIC_WRITE, CREATE_ALWAYS);
    file.write(bytes);
    file.sync();
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

bool takeProcessLock(const QString &path)
{
    QString name = path;
    name.replace(u'\\', u'_').replace(u'/', u'_').replace(u':', u'_');
    const QString mutexName = u"Local\\"_s + name;
    if (CreateMutexW(nullptr, TRUE, wide(mutexName)) == nullptr) {
        fail(path);
    }
    return GetLastError() != ERROR_ALREADY_EXISTS;
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
