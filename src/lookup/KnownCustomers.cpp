#include "lookup/KnownCustomers.h"

#include "core/Error.h"
#include "core/Memory.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr qsizetype shownCharacters = 256; // the card is to be read at a glance

// The first characters of a text, none of them cut.
QByteArrayView beginning(QByteArrayView utf8)
{
    if (utf8.size() <= shownCharacters) {
        return utf8;
    }
    qsizetype characters = 0;
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const bool begins = (static_cast<uchar>(utf8.at(i)) & 0xC0U) != 0x80U;
        characters += begins ? 1 : 0;
        if (characters > shownCharacters || i == 4 * shownCharacters) {
            return utf8.first(i);
        }
    }
    return utf8;
}

// A comparison with a text is a call, and there are several for each of a million rows.
bool isOnly(QByteArrayView text, char character)
{
    return text.size() == 1 && text.front() == character;
}

} // namespace

bool KnownCustomers::isFull() const
{
    return m_texts.size() > std::numeric_limits<quint32>::max();
}

KnownCustomers::Entry KnownCustomers::entryOf(const Row &row)
{
    if (isFull()) {
        throw core::Error(0, u"more customers than can be kept in memory"_s);
    }
    const qsizetype offset = m_texts.size();
    const QByteArrayView name = beginning(row.name);
    const QByteArrayView noteBegins = beginning(row.note);
    const QByteArray note = noteBegins.size() < row.note.size()
                                ? noteBegins.toByteArray() + QStringLiteral("\u2026").toUtf8()
                                : QByteArray::fromRawData(noteBegins.data(), noteBegins.size());
    m_texts.resize(offset + name.size() + note.size());
    std::ranges::copy(note, std::ranges::copy(name, m_texts.data() + offset).out);
    Entry entry;
    entry.sn = row.sn;
    entry.offset = static_cast<quint32>(offset);
    entry.nameSize = static_cast<quint16>(name.size());
    entry.noteSize = static_cast<quint16>(note.size() & 0x1FFF);
    entry.vip = isOnly(row.vip, 'Y') || isOnly(row.vip, 'y') ? 1 : 0; // as the editor reads it
    entry.blackListed = row.blackListed ? 1 : 0;
    entry.popsUp = isOnly(row.popUpFlag.trimmed(), '0') ? 0 : 1;
    return entry;
}

void KnownCustomers::append(const Row &row)
{
    m_entries.append(entryOf(row));
}

void KnownCustomers::expect(double times)
{
    core::reserveTimes(m_entries, times);
    core::reserveTimes(m_texts, times);
}

void KnownCustomers::finish()
{
    if (!std::ranges::is_sorted(m_entries, {}, &Entry::sn)) {
        std::ranges::stable_sort(m_entries, {}, &Entry::sn);
    }
    core::dropSpare(m_entries);
    core::dropSpare(m_texts);
}

std::optional<KnownCustomer> KnownCustomers::find(qint32 sn) const
{
    const auto found = std::ranges::lower_bound(m_entries, sn, {}, &Entry::sn);
    if (found == m_entries.end() || found->sn != sn) {
        return {};
    }
    const char *text = m_texts.constData() + found->offset;
    return KnownCustomer{.name = QUtf8StringView(text, found->nameSize),
                         .note = QUtf8StringView(text + found->nameSize, found->noteSize),
                         .vip = found->vip != 0,
                         .blackListed = found->blackListed != 0,
                         .popsUp = found->popsUp != 0};
}

// The text of the old row stays behind until all customers are read anew.
bool KnownCustomers::replace(qint32 sn, const CustomerFacts &facts)
{
    if (isFull()) {
        return false;
    }
    const QByteArray name = facts.name.toUtf8();
    const QByteArray note = facts.note.toUtf8();
    const Entry entry = entryOf({.sn = sn,
                                 .name = name,
                                 .note = note,
                                 .vip = facts.vip.toUtf8(),
                                 .blackListed = facts.blackListed,
                                 .popUpFlag = facts.popUpFlag.toUtf8()});
    const auto place = std::ranges::lower_bound(m_entries, sn, {}, &Entry::sn);
    if (place != m_entries.end() && place->sn == sn) {
        *place = entry; // a second one with that SN is found by nobody
    } else {
        m_entries.insert(place, entry);
    }
    return true;
}

void KnownCustomers::remove(qint32 sn)
{
    m_entries.erase(std::ranges::lower_bound(m_entries, sn, {}, &Entry::sn),
                    std::ranges::upper_bound(m_entries, sn, {}, &Entry::sn));
}

} // namespace lookup
