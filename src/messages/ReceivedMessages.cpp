#include "messages/ReceivedMessages.h"

#include "core/TextFiles.h"
#include "messages/SmsRecord.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace messages {

namespace {

// Throws core::Error if nothing can be appended to the file. Writes one byte and takes it back, because
// writing none always succeeds, on a full disk, too.
void tryToAppend(const QString &path)
{
    const QFileInfo before(path);
    const qint64 size = before.exists() ? before.size() : -1;
    core::platform::appendToFile(path, " ");
    if (size < 0) {
        QFile::remove(path);
    } else {
        QFile::resize(path, size);
    }
}

} // namespace

QString filingKey(Filing filing)
{
    switch (filing) {
    case Filing::Fails:
        return u"MessagesNotFiled"_s;
    case Filing::DiskNearlyFull:
        return u"MessagesDiskFull"_s;
    case Filing::Works:
        break;
    }
    return {};
}

ReceivedMessages::ReceivedMessages(const core::Paths &paths, core::RunLog &log, const core::Clock &clock,
                                   FreeBytes freeBytes)
    : m_paths(paths), m_log(log), m_clock(clock), m_freeBytes(std::move(freeBytes))
{
    constexpr std::chrono::seconds pause{5};
    m_again.setInterval(pause);
    QObject::connect(&m_again, &QTimer::timeout, &m_again, [this] { lookAgain(); });
}

std::optional<ReceivedMessages::Message> ReceivedMessages::ShowSmallMessage(const QString &record)
{
    return m_log.trap("ShowSmallMessage"_L1, std::optional<Message>(), [&]() -> std::optional<Message> {
        const std::optional<QString> text = smsText(record);
        if (!text) {
            return std::nullopt;
        }
        const QString entry = u'<' + m_log.timeStamp() + u">  \r\n"_s + *text + u"\r\n"_s;
        setFiling(file(entry));
        return Message{*text, entry, m_filing};
    });
}

QString ReceivedMessages::monthFile() const
{
    return m_paths.SmsFolder + u"/SMS"_s + m_clock.now().toString(u"yyyy-MM") + u".txt"_s;
}

bool ReceivedMessages::hasRoom() const
{
    const qint64 free = m_freeBytes(m_paths.SmsFolder);
    return free < 0 || free >= reserve;
}

Filing ReceivedMessages::file(const QString &entry)
{
    if (!hasRoom()) {
        return Filing::DiskNearlyFull;
    }
    const bool running = core::SaveTextFile(m_log, m_paths.SmsFile, entry);
    const bool month = core::SaveTextFile(m_log, monthFile(), entry);
    return running && month ? Filing::Works : Filing::Fails;
}

// Logs nothing: the run log says why when the next message comes.
void ReceivedMessages::lookAgain()
{
    if (!hasRoom()) {
        return setFiling(Filing::DiskNearlyFull);
    }
    try {
        tryToAppend(m_paths.SmsFile);
        tryToAppend(monthFile());
        setFiling(Filing::Works);
    } catch (const core::Error &) {
        setFiling(Filing::Fails);
    }
}

void ReceivedMessages::setFiling(Filing filing)
{
    if (std::exchange(m_filing, filing) == filing) {
        return;
    }
    if (filing == Filing::Works) {
        m_again.stop();
    } else {
        m_again.start();
    }
    if (m_changed) {
        m_changed(filing);
    }
}

bool ReceivedMessages::erase()
{
    return m_log.trap("ReceivedMessages::erase"_L1, [&] {
        if (QFile::exists(m_paths.SmsFile) && !QFile::remove(m_paths.SmsFile)) {
            throw core::Error(0, u"the file cannot be deleted: "_s + m_paths.SmsFile);
        }
    });
}

} // namespace messages
