// Finding a caller among many customers, and building the index of their numbers.

#include "Measure.h"
#include "Rows.h"

#include "core/RunLog.h"
#include "lookup/NumberEntries.h"
#include "lookup/NumberIndex.h"

#include <malloc.h>
#include <random>
#include <unordered_map>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// Customers with 2.75 numbers each, in both ways of keeping them.
struct Numbers
{
    explicit Numbers(int customers);

    std::vector<std::string> asked; ///< numbers to look up: two in three are on file
    QString askedText;              ///< the same as one text, eleven characters each
    lookup::NumberEntries ours;
    std::unordered_map<std::string, qint32> floor;
    Sample bytes; ///< of an entry
};

constexpr qsizetype width = 11;
constexpr size_t askedCount = 1 << 18; // so many that the caches cannot learn them

std::string randomNumber(std::mt19937_64 &random)
{
    return std::to_string(13000000000 + random() % 7000000000);
}

double heapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

Numbers::Numbers(int customers)
{
    std::mt19937_64 random(20261121);
    std::vector<std::string> onFile;
    for (int sn = 1; sn <= customers; ++sn) {
        for (int i = sn % 4 == 0 ? 1 : 0; i < 3; ++i) {
            onFile.push_back(randomNumber(random));
        }
    }
    const auto snOf = [](size_t i) { return static_cast<qint32>(i * 4 / 11); };
    const double atFirst = heapInUse();
    for (size_t i = 0; i < onFile.size(); ++i) {
        ours.append(QString::fromStdString(onFile[i]), snOf(i));
    }
    while (!ours.finishSome()) {
    }
    const double withOurs = heapInUse();
    for (size_t i = 0; i < onFile.size(); ++i) {
        floor.try_emplace(onFile[i], snOf(i));
    }
    const auto entries = static_cast<double>(onFile.size());
    bytes = {(withOurs - atFirst) / entries, (heapInUse() - withOurs) / entries};
    for (size_t i = 0; i < askedCount; ++i) {
        asked.push_back(i % 3 == 0 ? randomNumber(random) : onFile[random() % onFile.size()]);
        askedText += QString::fromStdString(asked.back());
    }
}

/// Nanoseconds a lookup.
Sample lookUp(const Numbers &numbers)
{
    qint64 found = 0;
    const double ours = cpuMsOf([&] {
        for (size_t i = 0; i < askedCount; ++i) {
            const QStringView number = QStringView(numbers.askedText).sliced(qsizetype(i) * width, width);
            found += numbers.ours.find(number) >= 0 ? 1 : 0;
        }
    });
    const double floor = cpuMsOf([&] {
        for (const std::string &number : numbers.asked) {
            found -= numbers.floor.contains(number) ? 1 : 0;
        }
    });
    if (found != 0) {
        throw std::runtime_error("both ways do not find the same");
    }
    return {ours * 1e6 / askedCount, floor * 1e6 / askedCount};
}

void buildIndexes(const Desk &desk)
{
    const core::QtClock clock;
    const core::ProcessValues values;
    core::RunLog log(desk.paths(), clock, values);
    const core::CodePage codePage(936);
    lookup::NumberIndex index(desk.paths(), log, codePage);
    index.LoadPhoneNumberSNArray();
    index.LoadCustomerPhoneNumberSnArray();
    while (index.isLoading()) {
        index.continueLoading();
    }
    if (index.FindCustomerSnOfCaller(Desk::mobileNumber(1)) != 1) {
        throw std::runtime_error("the index was not built");
    }
}

void readNumbers(const Desk &desk)
{
    readThrough(openPlain(desk.paths().PhoneBookFile).get(), u"select SN, Telno from phonebook"_s);
    readThrough(
        openPlain(desk.paths().CustomerFile).get(),
        u"select SN, WorkPhones, ContactPersonMobile, Fax, ContactPersonHomePhones, CustomerName, note, "
        "IfVIP, ifinblacklist, T3 from customer"_s);
}

Sample building(int customers)
{
    const Desk desk(customers);
    return least(5, [&] {
        return Sample{cpuMsOf([&] { buildIndexes(desk); }), cpuMsOf([&] { readNumbers(desk); })};
    });
}

} // namespace

Rows lookupRows(int customers)
{
    const auto numbers = once<Numbers>([=] { return Numbers(customers); });
    const auto row = [=](const char *name, Reach reach, const std::function<Sample()> &measure) {
        return Row{sized(name, customers), reach, measure};
    };
    return {row("lookup of a number, ns", {.times = 2},
                [=] { return least(5, [=] { return lookUp(numbers()); }); }),
            row("bytes an entry of the number index", {.times = 0.8}, [=] { return numbers().bytes; }),
            row("building both indexes, ms of CPU", {.times = customers == largestDesk ? 1.8 : 2.5},
                [=] { return building(customers); })};
}

} // namespace bench
