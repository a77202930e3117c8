#include "reception/Senders.h"

#include "core/AtomicFile.h"
#include "core/TextUtilities.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace reception {

Senders::Senders(const core::Paths &paths, core::RunLog &log, const core::Clock &clock)
    : m_paths(paths), m_log(log), m_clock(clock)
{
    constexpr std::chrono::seconds often{1}; // the minutes of different addresses end at different times
    m_look.setInterval(often);
    QObject::connect(&m_look, &QTimer::timeout, &m_look, [this] { logDue(); });
}

bool Senders::admit(const QHostAddress &sender)
{
    follow();
    const bool admitted = !m_list || m_list->contains(sender);
    if (!admitted) {
        refuse(sender);
    }
    return admitted;
}

QHostAddress Senders::receiver(const QString &lastSenderIp)
{
    const QHostAddress host(lastSenderIp.isEmpty() ? u"0.0.0.0"_s : lastSenderIp);
    if (host.isNull()) { // the socket would send it to this machine
        throw core::Error(0, u"no address: "_s + lastSenderIp);
    }
    follow();
    if (m_list && host != QHostAddress::AnyIPv4 && !m_list->contains(host)) {
        throw core::Error(0, u"not in Senders.txt: "_s + lastSenderIp);
    }
    return host;
}

QString Senders::trouble(const core::TextLookup &texts)
{
    follow();
    return m_list ? sendersTrouble(*m_list, texts) : QString();
}

void Senders::follow()
{
    const qint64 second = m_clock.second();
    if (std::exchange(m_lookedAt, second) != second) {
        read();
    }
}

// A list that cannot be read just now, while an editor writes it, leaves the one before in force.
void Senders::read()
{
    const QFileInfo file(m_paths.SendersFile);
    const Stamp stamp = file.exists() ? Stamp{file.lastModified().toMSecsSinceEpoch(), file.size()} : Stamp();
    if (stamp == m_read) {
        return;
    }
    if (stamp == Stamp()) {
        m_list.reset();
        m_read = stamp;
        m_log.WriteRunLog(u"Senders.txt is gone: everybody is let in"_s);
        return;
    }
    try {
        m_list = AddressList::fromText(contents());
        m_read = stamp;
        m_log.WriteRunLog(u"Senders.txt: "_s + QString::number(m_list->size()) +
                          u" addresses or networks are let in"_s);
        for (const QString &line : m_list->unreadable()) {
            m_log.WriteRunLog(u"Senders.txt, cannot be read: line "_s + core::shownText(line));
        }
    } catch (const core::Error &error) {
        m_list = m_list.value_or(AddressList());
        if (std::exchange(m_unreadable, stamp) != stamp) {
            m_log.reportError(u"!Senders "_s, error);
        }
    }
}

QString Senders::contents() const
{
    constexpr qint64 mostBytes = 1 << 20;
    const QByteArray bytes = core::readBytes(m_paths.SendersFile, 0, mostBytes + 1);
    if (bytes.size() > mostBytes) {
        throw core::Error(0, u"the file is too large: "_s + m_paths.SendersFile);
    }
    return QString::fromUtf8(bytes).remove(u'\r');
}

std::optional<QString> Senders::text() const
{
    return m_log.trap("Senders"_L1, std::optional<QString>(), [this] {
        return std::optional(QFileInfo::exists(m_paths.SendersFile) ? contents() : QString());
    });
}

bool Senders::save(const QString &text)
{
    m_lookedAt = -1; // the next datagram meets the new list
    return m_log.trap("Senders"_L1, [&] {
        if (!text.trimmed().isEmpty()) {
            core::saveAtomically(m_paths.SendersFile, QString(text).replace("\n"_L1, "\r\n"_L1).toUtf8());
        } else if (QFileInfo::exists(m_paths.SendersFile) && !QFile::remove(m_paths.SendersFile)) {
            throw core::Error(0, u"the file cannot be deleted: "_s + m_paths.SendersFile);
        }
    });
}

// Of a flood from ever new addresses not each one is remembered.
void Senders::refuse(const QHostAddress &sender)
{
    constexpr qsizetype mostAddresses = 64;
    const bool apart = m_refused.contains(sender) || m_refused.size() < mostAddresses;
    const QHostAddress address = apart ? sender : QHostAddress();
    const bool first = !m_refused.contains(address);
    Refused &refused = m_refused[address];
    ++refused.count;
    if (first) {
        logRefused(address, refused);
    }
    if (!m_look.isActive()) {
        m_look.start();
    }
}

void Senders::logRefused(const QHostAddress &sender, Refused &refused) const
{
    const QString name = sender.isNull() ? u"other addresses"_s : sender.toString();
    m_log.WriteRunLog(u"datagrams refused from "_s + name + u": "_s + QString::number(refused.count));
    refused = {m_clock.second(), 0};
}

// Whoever was silent for a whole minute is forgotten: his next datagram is told at once again.
void Senders::logDue()
{
    m_refused.removeIf([this](auto entry) {
        const bool over = isMinuteOver(entry.value());
        const bool silent = entry.value().count == 0;
        if (over && !silent) {
            logRefused(entry.key(), entry.value());
        }
        return over && silent;
    });
    if (m_refused.isEmpty()) {
        m_look.stop();
    }
}

void Senders::logCounted()
{
    for (auto [sender, refused] : m_refused.asKeyValueRange()) {
        if (refused.count > 0) {
            logRefused(sender, refused);
        }
    }
}

// The clock may have been set.
bool Senders::isMinuteOver(const Refused &refused) const
{
    constexpr qint64 minute = 60;
    return std::abs(m_clock.second() - refused.loggedAt) >= minute;
}

namespace {

// The unreadable lines below a sentence about them.
QString withLines(const QString &sentence, const AddressList &list)
{
    constexpr qsizetype mostLines = 5;
    QStringList told{sentence};
    for (const QString &line : list.unreadable().first(std::min(mostLines, list.unreadable().size()))) {
        told.append(core::shownText(line));
    }
    return told.join(u'\n');
}

} // namespace

QString sendersTrouble(const AddressList &list, const core::TextLookup &texts)
{
    QStringList told;
    if (!list.unreadable().isEmpty()) {
        told.append(withLines(texts.Lms(u"SendersUnreadable"_s), list));
    }
    if (list.size() == 0) {
        told.append(texts.Lms(u"SendersNobody"_s));
    }
    return told.join(u'\n');
}

QString sendersRefusal(const QString &text, const core::TextLookup &texts)
{
    const AddressList list = AddressList::fromText(text);
    if (!list.unreadable().isEmpty()) {
        return withLines(texts.Lms(u"SendersRefused"_s), list);
    }
    const bool everybody = text.trimmed().isEmpty();
    return everybody || list.size() > 0 ? QString() : texts.Lms(u"SendersWithoutAddress"_s);
}

} // namespace reception
