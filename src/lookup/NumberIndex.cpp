#include "lookup/NumberIndex.h"

#include "store/Database.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

// What an empty table gives.
bool isBlank(const NumberEntries &entries)
{
    return entries.size() == 1 && entries.at(0).SN == 0 && entries.at(0).PhoneNumber.isEmpty();
}

} // namespace

CallerTable NumberIndex::phoneBookTable() const
{
    return {.file = m_paths.PhoneBookFile, .name = u"phonebook"_s, .numberColumns = {u"Telno"_s}};
}

CallerTable NumberIndex::customerTable() const
{
    return {.file = m_paths.CustomerFile,
            .name = u"Customer"_s,
            .numberColumns = customerNumberColumns(),
            .isCustomers = true};
}

bool NumberIndex::LoadPhoneNumberSNArray()
{
    return load(m_phoneBook, phoneBookTable());
}

bool NumberIndex::LoadCustomerPhoneNumberSnArray()
{
    m_savedMeanwhile.clear(); // the reading that begins sees them
    return load(m_customers, customerTable());
}

bool NumberIndex::updateCustomer(qint32 sn, const std::optional<CustomerFacts> &onFile)
{
    if (m_customers.reading) {
        m_savedMeanwhile.emplace_back(sn, onFile);
        if (!knowsCustomers()) {
            return true;
        }
    }
    return replaceCustomer(sn, onFile) || m_customers.reading || LoadCustomerPhoneNumberSnArray();
}

void NumberIndex::entrySaved(qint32 sn, const QString &numbers)
{
    m_savedEntries.replace(sn, pieces(numbers));
}

std::vector<qint32> NumberIndex::entriesWith(QStringView phoneNumber) const
{
    std::vector<qint32> entries = PhoneNumberSNArray.findAll(phoneNumber);
    std::ranges::copy(m_savedEntries.findAll(phoneNumber), std::back_inserter(entries));
    return entries;
}

// False where only a rebuild will do.
bool NumberIndex::replaceCustomer(qint32 sn, const std::optional<CustomerFacts> &onFile)
{
    NumberEntries &entries = m_customers.entries;
    if (entries.isEmpty() || isBlank(entries)) {
        return false;
    }
    if (!onFile) {
        m_known.remove(sn);
        return entries.replace(sn, {});
    }
    return m_known.replace(sn, *onFile) && entries.replace(sn, pieces(onFile->numbers));
}

PhoneNumberPieces NumberIndex::pieces(QStringView numbers) const
{
    return phoneNumberPieces(m_log, m_codePage, numbers);
}

bool NumberIndex::continueLoading()
{
    return m_phoneBook.reading ? readOn(m_phoneBook) : !m_customers.reading || readOn(m_customers);
}

std::optional<qint32> NumberIndex::GetSnByPhoneNumber(QStringView phoneNumber)
{
    return find("GetSnByPhoneNumber"_L1, m_phoneBook, phoneNumber);
}

std::optional<qint32> NumberIndex::GetCustomerSnByPhoneNumber(QStringView phoneNumber)
{
    return find("GetCustomerSnByPhoneNumber"_L1, m_customers, phoneNumber);
}

std::optional<qint32> NumberIndex::FindCustomerSnOfCaller(QStringView callerNumber) const
{
    return m_customers.entries.find(callerNumber);
}

// A failure is logged under the index's procedure and remembered.
bool NumberIndex::attempt(Index &index, const std::function<void()> &work)
{
    return m_log.trap(index.procedure, [&] {
        try {
            work();
        } catch (const core::Error &error) {
            index.failure = error;
            throw;
        }
    });
}

// At first nothing else is to be done. Later the operator works, and a lock is waited for in between.
bool NumberIndex::load(Index &index, const CallerTable &table)
{
    using Start = NumberReading::Start;
    const Start start = index.entries.isEmpty() ? Start::AtOnce : Start::InBetween;
    index.reading.reset();
    index.failure.reset();
    return attempt(index, [&] { index.reading.emplace(m_log, m_codePage, table, start); }) && readOn(index);
}

// Read aside, so that a reading that breaks off leaves the old index whole.
bool NumberIndex::readOn(Index &index)
{
    NumberReading::Progress progress = NumberReading::Progress::Ended;
    const bool done = attempt(index, [&] {
        progress = index.reading->readOn();
        if (progress == NumberReading::Progress::Ended) {
            exchange(index);
        }
    });
    if (!done || progress == NumberReading::Progress::Ended) {
        index.reading.reset();
        if (&index == &m_customers) {
            for (const auto &[sn, onFile] : std::exchange(m_savedMeanwhile, {})) {
                updateCustomer(sn, onFile);
            }
        }
    }
    return done && progress != NumberReading::Progress::Locked;
}

// What is left of a damaged table tells less than the whole that was read before.
void NumberIndex::exchange(Index &index)
{
    const std::optional<core::Error> damage = index.reading->damage();
    if (!damage || !index.isWhole) {
        index.entries = index.reading->takeNumbers();
        index.isWhole = !damage;
        if (&index == &m_customers) {
            m_known = index.reading->takeCustomers();
            m_hasUnflagged = index.reading->hasUnflagged();
        }
    }
    if (damage) {
        throw *damage;
    }
}

const NumberEntries &NumberIndex::whole(Index &index)
{
    while (index.reading && index.entries.isEmpty() && readOn(index)) {
    }
    return index.entries;
}

std::optional<qint32> NumberIndex::find(QLatin1StringView procedure, Index &index, QStringView number)
{
    return m_log.trap(procedure, std::optional<qint32>(), [&] {
        if (whole(index).isEmpty()) {
            throw core::Error(0, u"the number index was never loaded"_s);
        }
        return index.entries.find(number);
    });
}

} // namespace lookup
