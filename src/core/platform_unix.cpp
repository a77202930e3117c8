#include "core/platform.h"

#include "core/Error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace core::platform {

namespace {

[[noreturn]] void fail(int number, const QString &path)
{
    throw Error(number, QString::fromLocal8Bit(std::strerror(number)) + u": "_s + path);
}

// A new file is closed to everybody who may not enter its folder.
mode_t modeIn(const QByteArray &folder)
{
    struct stat status = {};
    return ::stat(folder.constData(), &status) == 0 ? status.st_mode & 0666 : 0600;
}

// Encoding takes as long as opening, and nearly every name is that of the run log.
QByteArray encodedName(const QString &path)
{
    thread_local QString last;
    thread_local QByteArray name;
    if (path != last) {
        name = QFile::encodeName(path);
        last = path;
    }
    return name;
}

// The rights are worked out only when the file has to be made: nearly every entry goes to one that is there
// already.
int openFile(const QString &path, int flags)
{
    constexpr int always = O_CLOEXEC | O_NOFOLLOW;
    const QByteArray name = encodedName(path);
    if ((flags & O_EXCL) == 0) {
        const int there = ::open(name.constData(), (flags & ~O_CREAT) | always);
        if (there >= 0 || errno != ENOENT || (flags & O_CREAT) == 0) {
            return there;
        }
    }
    return ::open(name.constData(), flags | always, modeIn(QFile::encodeName(QFileInfo(path).path())));
}

// An open file; a link is not followed.
class Descriptor
{
public:
    Descriptor(const QString &path, int flags) : m_path(path), m_fd(openFile(path, flags))
    {
        if (m_fd < 0) {
            fail(errno, path);
        }
    }
    ~Descriptor()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }
    Q_DISABLE_COPY_MOVE(Descriptor)

    void write(QByteArrayView bytes) const
    {
        while (!bytes.isEmpty()) {
            const ssize_t written = ::write(m_fd, bytes.data(), static_cast<size_t>(bytes.size()));
            if (written < 0 && errno != EINTR) {
                fail(errno, m_path);
            }
            bytes = bytes.sliced(std::max<ssize_t>(written, 0));
        }
    }
    // Appends all of the bytes or none and returns the new length. A part that was written is cut off again
    // only while it is still the file's end.
    qint64 append(QByteArrayView bytes) const
    {
        const qint64 before = size();
        try {
            write(bytes);
        } catch (const Error &) {
            const qint64 added = size() - before;
            if (added > 0 && added < bytes.size()) {
                [[maybe_unused]] const int cut = ::ftruncate(m_fd, before);
            }
            throw;
        }
        return before + bytes.size();
    }
    qint64 size() const { return std::max<qint64>(::lseek(m_fd, 0, SEEK_END), 0); }
    void sync() const
    {
        if (::fsync(m_fd) != 0) {
            fail(errno, m_path);
        }
    }
    void close()
    {
        if (::close(std::exchange(m_fd, -1)) != 0) {
            fail(errno, m_path);
        }
    }
    int fd() const { return m_fd; }

private:
    QString m_path;
    int m_fd;
};

// The name by which the C library was told the user's language, such as "zh_TW.UTF-8".
QString localeName()
{
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        QString value = qEnvironmentVariable(variable);
        if (!value.isEmpty()) {
            return value;
        }
    }
    return QLocale::system().name();
}

} // namespace

QString dataFolder()
{
    const QString home = qEnvironmentVariable("XDG_DATA_HOME");
    const QString parent = home.startsWith(u'/') ? home : QDir::homePath() + u"/.local/share"_s;
    QDir().mkpath(parent);
    return parent + u"/CallDesk"_s;
}

QString runtimeFolder()
{
    QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!folder.isEmpty() && QFileInfo(folder).isDir()) {
        return folder;
    }
    const QString ours =
        QDir::tempPath() + u"/calldesk-"_s + QString::number(::getuid()); // others share the parent
    ::mkdir(QFile::encodeName(ours).constData(), 0700);
    struct stat status = {};
    const bool isOurs = ::lstat(QFile::encodeName(ours).constData(), &status) == 0 &&
                        S_ISDIR(status.st_mode) && status.st_uid == ::getuid();
    return isOurs ? ours : QDir::homePath();
}

QString developerFolder()
{
    return {};
}

quint16 systemLanguageId()
{
    static const QHash<QString, quint16> territories = {
        {u"zh_TW"_s, 0x0404}, {u"zh_HK"_s, 0x0C04}, {u"zh_SG"_s, 0x1004}, {u"zh_MO"_s, 0x1404}};
    static const QHash<QString, quint16> languages = {
        {u"ar"_s, 0x0401}, {u"bg"_s, 0x0402}, {u"ca"_s, 0x0403}, {u"zh"_s, 0x0804}, {u"cs"_s, 0x0405},
        {u"da"_s, 0x0406}, {u"de"_s, 0x0407}, {u"el"_s, 0x0408}, {u"en"_s, 0x0409}, {u"es"_s, 0x0C0A},
        {u"fi"_s, 0x040B}, {u"fr"_s, 0x040C}, {u"he"_s, 0x040D}, {u"iw"_s, 0x040D}, {u"hu"_s, 0x040E},
        {u"is"_s, 0x040F}, {u"it"_s, 0x0410}, {u"ja"_s, 0x0411}, {u"ko"_s, 0x0412}, {u"nl"_s, 0x0413},
        {u"nb"_s, 0x0414}, {u"nn"_s, 0x0814}, {u"no"_s, 0x0414}, {u"pl"_s, 0x0415}, {u"pt"_s, 0x0416},
        {u"ro"_s, 0x0418}, {u"ru"_s, 0x0419}, {u"hr"_s, 0x041A}, {u"sk"_s, 0x041B}, {u"sq"_s, 0x041C},
        {u"sv"_s, 0x041D}, {u"th"_s, 0x041E}, {u"tr"_s, 0x041F}, {u"id"_s, 0x0421}, {u"uk"_s, 0x0422},
        {u"be"_s, 0x0423}, {u"sl"_s, 0x0424}, {u"et"_s, 0x0425}, {u"lv"_s, 0x0426}, {u"lt"_s, 0x0427},
        {u"fa"_s, 0x0429}, {u"vi"_s, 0x042A}, {u"eu"_s, 0x042D}, {u"af"_s, 0x0436}, {u"fo"_s, 0x0438}};
    constexpr quint16 english = 0x0409;
    const QString name = localeName().section(u'.', 0, 0).section(u'@', 0, 0);
    const auto territory = territories.constFind(name);
    return territory != territories.cend() ? *territory : languages.value(name.section(u'_', 0, 0), english);
}

int ansiCodePage(quint16 systemLanguageId)
{
    static const QHash<int, int> traditionalChinese = {{0x0404, 950}, {0x0C04, 950}, {0x1404, 950}};
    static const QHash<int, int> codePages = {
        {0x01, 1256}, {0x02, 1251}, {0x04, 936},  {0x05, 1250}, {0x08, 1253}, {0x0D, 1255}, {0x0E, 1250},
        {0x11, 932},  {0x12, 949},  {0x15, 1250}, {0x18, 1250}, {0x19, 1251}, {0x1A, 1250}, {0x1B, 1250},
        {0x1C, 1250}, {0x1E, 874},  {0x1F, 1254}, {0x22, 1251}, {0x23, 1251}, {0x24, 1250}, {0x25, 1257},
        {0x26, 1257}, {0x27, 1257}, {0x29, 1256}, {0x2A, 1258}}; // by the identifier's low byte
    constexpr int westernEuropean = 1252;
    const int byLanguage = codePages.value(systemLanguageId & 0xFF, westernEuropean);
    return traditionalChinese.value(systemLanguageId, byLanguage);
}

qint64 appendToFile(const QString &path, QByteArrayView bytes)
{
    const Descriptor file(path, O_WRONLY | O_APPEND | O_CREAT);
    return file.append(bytes);
}

bool createFile(const QString &path)
{
    const int descriptor = openFile(path, O_WRONLY | O_CREAT | O_EXCL);
    if (descriptor < 0 && errno != EEXIST) {
        fail(errno, path);
    }
    return descriptor >= 0 && ::close(descriptor) == 0;
}

qint64 freeBytes(const QString &folder)
{
    struct statvfs disk = {};
    const bool known = ::statvfs(QFile::encodeName(folder).constData(), &disk) == 0;
    return known ? qint64(disk.f_bavail) * qint64(disk.f_frsize) : -1;
}

void preferLargePages([[maybe_unused]] void *block, [[maybe_unused]] size_t bytes)
{
#ifdef MADV_HUGEPAGE
    constexpr quintptr largePage = 2 << 20;
    const auto address = reinterpret_cast<quintptr>(block);
    const quintptr first = (address + largePage - 1) / largePage * largePage;
    const quintptr end = (address + bytes) / largePage * largePage;
    if (first < end) {
        ::madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
    }
#endif
}

// The owner's own rights stay as they are: a file that he has marked read-only must stay protected from
// overwriting.
bool closeToOthers(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (::lstat(name.constData(), &status) != 0) {
        return false;
    }
    const mode_t open = status.st_mode & (S_IRWXG | S_IRWXO);
    return S_ISLNK(status.st_mode) || open == 0 || ::chmod(name.constData(), status.st_mode & S_IRWXU) == 0;
}

void writeFile(const QString &path, QByteArrayView bytes)
{
    Descriptor file(path, O_WRONLY | O_TRUNC);
    file.write(bytes);
    file.close();
}

void syncFile(const QString &path)
{
    Descriptor file(path, O_WRONLY);
    file.sync();
    file.close();
}

void replaceFile(const QString &from, const QString &to)
{
    if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        fail(errno, to);
    }
}

ProcessLock takeProcessLock(const QString &path)
{
    auto file = std::make_shared<Descriptor>(path, O_RDWR | O_CREAT);
    if (::flock(file->fd(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) {
            return {};
        }
        fail(errno, path);
    }
    return file; // the lock goes when it is closed, which the kernel does for a process that ends
}

QString textEditor()
{
    return {};
}

bool prefersDark()
{
    const QString theme = qEnvironmentVariable("GTK_THEME");
    if (!theme.isEmpty()) {
        return theme.endsWith(":dark"_L1) || theme.endsWith("-dark"_L1);
    }
    const QString config = qEnvironmentVariable("XDG_CONFIG_HOME", QDir::homePath() + u"/.config"_s);
    QFile settings(config + u"/gtk-3.0/settings.ini"_s);
    return settings.open(QIODevice::ReadOnly) &&
           settings.read(1 << 16).replace(" ", "").contains("gtk-application-prefer-dark-theme=1");
}

int growReceiveBuffer(qintptr socket, int bytes)
{
    const int descriptor = int(socket);
    if (::setsockopt(descriptor, SOL_SOCKET, SO_RCVBUFFORCE, &bytes, sizeof(bytes)) !=
        0) { // needs a privilege
        ::setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof(bytes));
    }
    int granted = 0;
    socklen_t length = sizeof(granted);
    ::getsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &granted, &length);
    return granted;
}

void allowOthersToFront() {}

} // namespace core::platform
