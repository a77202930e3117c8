#pragma once

#include <QByteArray>
#include <QIODevice>

#include <memory>

namespace imports {

/// A packed file, read part by part. What a part unpacks to is bounded, whatever it says of itself. Throws
/// core::Error where the file or a part is damaged, encrypted or too large.
class ZipFile
{
public:
    explicit ZipFile(std::unique_ptr<QIODevice> file);
    ~ZipFile();
    Q_DISABLE_COPY_MOVE(ZipFile)

    /// Begins with a part; false where there is none of that name.
    bool open(const QString &part, qint64 mostBytes);
    /// The next piece of it; empty at its end, where it has proved to be as it was packed.
    QByteArray read();
    /// Reads it to its end.
    void finish();
    int perMille() const;

private:
    void close();

    std::unique_ptr<QIODevice> m_file;
    void *m_zip = nullptr;
    bool m_isOpen = false;
    qint64 m_read = 0;
    qint64 m_size = 0;
    qint64 m_most = 0;
};

} // namespace imports
