#include "Replay.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sim {

namespace {

constexpr qsizetype stampWidth = 23; // "<YYYY-MM-DD HH:MM:SS>  "

bool isLogLine(const QByteArray &line)
{
    static const QRegularExpression stamp(u"^<\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d>  $"_s);
    return line.size() >= stampWidth && stamp.match(QString::fromLatin1(line.first(stampWidth))).hasMatch();
}

QByteArray withLineBreaks(QByteArray line)
{
    return line.replace("\u240D", "\r").replace("\u240A", "\n");
}

QList<QByteArray> linesOf(const QByteArray &file)
{
    QList<QByteArray> lines = file.split('\n');
    for (QByteArray &line : lines) {
        if (line.endsWith('\r')) {
            line.chop(1);
        }
    }
    return lines;
}

enum class Entry { NoDatagram, LoggedOnce, LoggedTwice, ShutDown };

// The program logs calls and channel reports a second time when it has handled them.
Entry kindOf(QStringView message)
{
    const QStringView command = message.first(std::min<qsizetype>(message.size(), 50)).trimmed();
    const QStringView marks = message.size() > 1 ? message.sliced(1) : QStringView();
    if (marks.startsWith(u"CID") || marks.startsWith(u"DETAILDES") || command == u"SENDSMALLMESSAGE") {
        return Entry::LoggedOnce;
    }
    if (message.startsWith(u"<CRMV1") || command == u"CHANNELSTATUS") {
        return Entry::LoggedTwice;
    }
    return command == u"SHUTDOWNALL" ? Entry::ShutDown : Entry::NoDatagram;
}

// Picks the datagrams out of the entries of a run log, in order.
class LogReader
{
public:
    explicit LogReader(const CodePageChoice &codePage) : m_codePage(codePage) {}

    void read(const QByteArray &message)
    {
        const Entry entry = kindOf(QString::fromUtf8(message));
        const bool isSecondEntry = entry == Entry::LoggedTwice && message == m_awaited;
        if (entry == Entry::NoDatagram || isSecondEntry) {
            m_awaited = isSecondEntry ? QByteArray() : m_awaited;
            ++m_replay.leftOut;
        } else if (entry == Entry::ShutDown) {
            ++m_replay.shutDowns;
        } else {
            m_awaited = entry == Entry::LoggedTwice ? message : QByteArray();
            m_replay.datagrams.append(m_codePage.encode(QString::fromUtf8(withLineBreaks(message))));
        }
    }
    void skip() { ++m_replay.leftOut; }
    Replay replay() const { return m_replay; }

private:
    const CodePageChoice &m_codePage;
    QByteArray m_awaited; // the call whose second entry has not come yet
    Replay m_replay;
};

Replay readRunLog(const QList<QByteArray> &lines, const CodePageChoice &codePage)
{
    LogReader reader(codePage);
    for (const QByteArray &line : lines) {
        if (isLogLine(line)) {
            reader.read(line.sliced(stampWidth));
        } else if (!line.isEmpty()) {
            reader.skip();
        }
    }
    return reader.replay();
}

} // namespace

Replay readReplay(const QByteArray &file, const CodePageChoice &codePage)
{
    const QList<QByteArray> lines = linesOf(file);
    if (std::any_of(lines.begin(), lines.end(), isLogLine)) {
        return readRunLog(lines, codePage);
    }
    Replay replay;
    for (const QByteArray &line : lines) {
        if (!line.isEmpty()) {
            replay.datagrams.append(withLineBreaks(line));
        }
    }
    return replay;
}

QByteArray captureLine(const QByteArray &datagram)
{
    QByteArray line = datagram;
    return line.replace("\r", "\u240D").replace("\n", "\u240A") + '\n';
}

} // namespace sim
