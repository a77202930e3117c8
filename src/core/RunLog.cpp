#include "core/RunLog.h"

#include "core/platform.h"

#include <QFile>
#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// In numbers of a letter's own size and without branches: the compiler then looks at many letters at once.
constexpr quint16 isLineBreak(quint16 unit)
{
    constexpr quint16 nextLine = 0x0085;
    constexpr quint16 paragraphSeparator = QChar::ParagraphSeparator; // the line separator stands before it
    return (quint16(unit - u'\n') <= u'\r' - u'\n') | (unit == nextLine) |
           (quint16(unit | 1) == paragraphSeparator);
}

bool hasLineBreak(QStringView text)
{
    quint16 found = 0;
    for (const QChar character : text) {
        found |= isLineBreak(character.unicode());
    }
    return found != 0;
}

QChar withoutLineBreak(QChar character)
{
    constexpr char16_t controlPictures = 0x2400;
    constexpr char16_t newLinePicture = 0x2424;
    if (isLineBreak(character.unicode()) == 0) {
        return character;
    }
    return character <= u'\r' ? QChar(controlPictures + character.unicode()) : QChar(newLinePicture);
}

} // namespace

RunLog::RunLog(const Paths &paths, const Clock &clock, const ProcessValues &values)
    : m_paths(paths), m_clock(clock), m_values(values)
{}

QString RunLog::timeStamp()
{
    const qint64 second = m_clock.second();
    if (second != m_stampSecond) {
        m_stampSecond = second;
        m_stamp = m_clock.now().toString(u"yyyy-MM-dd HH:mm:ss");
    }
    return m_stamp;
}

// A line break in a datagram must not look like the end of an entry, or a sender could forge the next one.
const RunLog::Entry &RunLog::entryOf(const QString &message)
{
    const QString stamp = timeStamp();
    if (m_last.second == m_stampSecond && m_last.message == message) {
        return m_last;
    }
    QString safe = message;
    if (hasLineBreak(message)) {
        std::ranges::transform(safe, safe.begin(), withoutLineBreak);
    }
    m_last.message = message;
    m_last.second = m_stampSecond;
    m_last.line = u'<' % stamp % ">  "_L1 % safe % "\r\n"_L1;
    m_last.bytes = m_last.line.toUtf8();
    return m_last;
}

void RunLog::WriteRunLog(const QString &message)
{
    try {
        const Entry &entry = entryOf(message);
        const qint64 size = platform::appendToFile(m_paths.RunLogFile, entry.bytes);
        if (m_values.MainWindowReady) {
            const QString line = entry.line; // erasing writes an entry of its own
            eraseIfTooLong(size);
            show(line);
        }
    } catch (const Error &) {
        // Nothing more can be done: it is the log itself that failed.
    }
}

void RunLog::show(const QString &line)
{
    if (m_box == nullptr) {
        return;
    }
    if (m_box->length() > sizeLimit) {
        m_box->clear();
    }
    m_box->append(line);
}

void RunLog::eraseIfTooLong(qint64 size)
{
    if (size <= sizeLimit) {
        return;
    }
    if (!QFile::remove(m_paths.RunLogFile) && !QFile::resize(m_paths.RunLogFile, 0)) {
        return; // another program holds it: the next entry tries again
    }
    platform::appendToFile(m_paths.RunLogFile, entryOf(u"Run.log is erased automatically!"_s).bytes);
    if (m_box != nullptr) {
        m_box->clear();
    }
}

bool RunLog::erase()
{
    return trap("RunLog::erase"_L1, [&] {
        if (QFile::exists(m_paths.RunLogFile) && !QFile::remove(m_paths.RunLogFile)) {
            throw Error(0, u"the file cannot be deleted: "_s + m_paths.RunLogFile);
        }
        if (m_box != nullptr) {
            m_box->clear();
        }
    });
}

void RunLog::reportError(const QString &prefix, const Error &error)
{
    WriteRunLog(prefix + QString::number(error.number()) + u' ' + error.description());
}

void RunLog::reportCaught(const QString &prefix)
{
    try {
        throw;
    } catch (const Error &error) {
        reportError(prefix, error);
    } catch (const std::exception &failure) {
        reportError(prefix, Error(0, QString::fromLocal8Bit(failure.what())));
    }
}

} // namespace core
