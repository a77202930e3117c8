#include "core/RunLog.h"

#include "core/platform.h"

#include <QFile>
#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr char16_t firstLineBreakBeyondAscii = 0x0085;

QChar withoutLineBreak(QChar character)
{
    if (character >= u' ' && character.unicode() < firstLineBreakBeyondAscii) {
        return character;
    }
    switch (character.unicode()) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
        return QChar(0x2400 + character.unicode()); // its visible symbol
    case firstLineBreakBeyondAscii:
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
        return QChar(0x2424);
    default:
        return character;
    }
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
QString RunLog::line(const QString &message)
{
    const QString start = u'<' % timeStamp() % ">  "_L1;
    QString entry = start % message % "\r\n"_L1;
    const auto first = entry.begin() + start.size();
    std::transform(first, first + message.size(), first, withoutLineBreak);
    return entry;
}

void RunLog::WriteRunLog(const QString &message)
{
    try {
        const QString entry = line(message);
        const qint64 size = platform::appendToFile(m_paths.RunLogFile, entry.toUtf8());
        if (m_values.MainWindowReady) {
            eraseIfTooLong(size);
            show(entry);
        }
    } catch (const Error &) {
        // Nothing more can be done: it is the log itself that failed.
    }
}

void RunLog::show(const QString &entry)
{
    if (m_box == nullptr) {
        return;
    }
    if (m_box->length() > sizeLimit) {
        m_box->clear();
    }
    m_box->append(entry);
}

void RunLog::eraseIfTooLong(qint64 size)
{
    if (size <= sizeLimit) {
        return;
    }
    if (!QFile::remove(m_paths.RunLogFile) && !QFile::resize(m_paths.RunLogFile, 0)) {
        return; // another program holds it: the next entry tries again
    }
    platform::appendToFile(m_paths.RunLogFile, line(u"Run.log is erased automatically!"_s).toUtf8());
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
