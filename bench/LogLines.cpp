#include "LogLines.h"

#include "Sending.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace bench {

namespace {

constexpr char endLine[] = "END\n";

} // namespace

// Open for writing, too: the program opens and closes the pipe for each entry, and so it never looks ended
// between two.
LogLines::LogLines(const QString &pipe, int datagrams)
    : m_name(pipe), m_pipe(::open(QFile::encodeName(pipe).constData(), O_RDWR | O_CLOEXEC)),
      m_linesOf(static_cast<size_t>(datagrams))
{
    if (m_pipe < 0) {
        throw std::runtime_error("the run log is no pipe");
    }
    ::fcntl(m_pipe, F_SETPIPE_SZ, 1 << 20); // this thread may be late; the program must not wait for it
    m_thread = std::thread([this] { readAll(); });
}

LogLines::~LogLines()
{
    incomplete();
    ::close(m_pipe);
    QFile::remove(m_name);
}

void LogLines::waitUntilQuiet() const
{
    for (int before = -1; before != m_lines;) {
        before = m_lines;
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
    }
}

int LogLines::incomplete()
{
    if (m_thread.joinable() && ::write(m_pipe, endLine, sizeof endLine - 1) > 0) {
        m_thread.join();
    }
    return static_cast<int>(std::count_if(m_linesOf.begin(), m_linesOf.end(), [](int n) { return n != 2; }));
}

void LogLines::readAll()
{
    std::string line;
    std::vector<char> bytes(1 << 16);
    for (;;) {
        const ssize_t size = ::read(m_pipe, bytes.data(), bytes.size());
        for (ssize_t i = 0; i < size; ++i) {
            line += bytes[static_cast<size_t>(i)];
            if (line.back() != '\n') {
                continue;
            }
            if (line == endLine) {
                return;
            }
            ++m_lines;
            count(line);
            line.clear();
        }
    }
}

void LogLines::count(const std::string &line)
{
    const size_t block = line.find(idBlock);
    if (block != std::string::npos) {
        const size_t id = std::strtoul(line.c_str() + block + sizeof idBlock - 1, nullptr, 10);
        ++m_linesOf.at(id);
    }
}

} // namespace bench
