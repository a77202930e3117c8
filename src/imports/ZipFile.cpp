#include "imports/ZipFile.h"

#include "core/Error.h"

#include <algorithm>
#include <minizip/unzip.h>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr int pieceBytes = 64 * 1024;

QIODevice &deviceOf(voidpf opaque)
{
    return *static_cast<QIODevice *>(opaque);
}

// The library reads through the toolkit's file, whose names are right on every system.
voidpf openDevice(voidpf opaque, const void *, int)
{
    return opaque;
}
uLong readDevice(voidpf opaque, voidpf, void *to, uLong bytes)
{
    const qint64 read = deviceOf(opaque).read(static_cast<char *>(to), static_cast<qint64>(bytes));
    return static_cast<uLong>(std::max<qint64>(read, 0));
}
uLong writeDevice(voidpf, voidpf, const void *, uLong)
{
    return 0;
}
ZPOS64_T tellDevice(voidpf opaque, voidpf)
{
    return static_cast<ZPOS64_T>(deviceOf(opaque).pos());
}
long seekDevice(voidpf opaque, voidpf, ZPOS64_T offset, int origin)
{
    QIODevice &device = deviceOf(opaque);
    const qint64 from = origin == ZLIB_FILEFUNC_SEEK_CUR   ? device.pos()
                        : origin == ZLIB_FILEFUNC_SEEK_END ? device.size()
                                                           : 0;
    const qint64 to = from + static_cast<qint64>(offset);
    return to >= 0 && to <= device.size() && device.seek(to) ? 0 : -1;
}
int closeDevice(voidpf, voidpf)
{
    return 0;
}
int deviceError(voidpf, voidpf)
{
    return 0;
}

core::Error damaged()
{
    return {0, u"the packed file is damaged, encrypted or too large"_s};
}

} // namespace

ZipFile::ZipFile(std::unique_ptr<QIODevice> file) : m_file(std::move(file))
{
    zlib_filefunc64_def functions{.zopen64_file = openDevice,
                                  .zread_file = readDevice,
                                  .zwrite_file = writeDevice,
                                  .ztell64_file = tellDevice,
                                  .zseek64_file = seekDevice,
                                  .zclose_file = closeDevice,
                                  .zerror_file = deviceError,
                                  .opaque = m_file.get()};
    m_zip = unzOpen2_64("", &functions);
    if (m_zip == nullptr) {
        throw damaged();
    }
}

ZipFile::~ZipFile()
{
    close();
    unzClose(m_zip);
}

bool ZipFile::open(const QString &part, qint64 mostBytes)
{
    constexpr int ignoringCase = 2;
    close();
    if (unzLocateFile(m_zip, part.toUtf8().constData(), ignoringCase) != UNZ_OK) {
        return false;
    }
    unz_file_info64 info{};
    if (unzGetCurrentFileInfo64(m_zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK ||
        (info.flag & 1) != 0 || unzOpenCurrentFile(m_zip) != UNZ_OK) {
        throw damaged();
    }
    m_isOpen = true;
    m_read = 0;
    m_size = static_cast<qint64>(info.uncompressed_size);
    m_most = mostBytes;
    return true;
}

QByteArray ZipFile::read()
{
    QByteArray piece(pieceBytes, '\0');
    const int read = m_isOpen ? unzReadCurrentFile(m_zip, piece.data(), pieceBytes) : 0;
    m_read += read;
    if (read < 0 || m_read > m_most) {
        throw damaged();
    }
    if (read == 0 && std::exchange(m_isOpen, false) && unzCloseCurrentFile(m_zip) != UNZ_OK) {
        throw damaged(); // its check sum is another one
    }
    piece.truncate(read);
    return piece;
}

void ZipFile::finish()
{
    while (!read().isEmpty()) {
    }
}

int ZipFile::perMille() const
{
    return m_size > 0 ? int(std::clamp<qint64>(m_read * 1000 / m_size, 0, 1000)) : 1000;
}

void ZipFile::close()
{
    if (std::exchange(m_isOpen, false)) {
        unzCloseCurrentFile(m_zip);
    }
}

} // namespace imports
