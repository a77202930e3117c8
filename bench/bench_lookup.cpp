// Finding a caller among many customers, and building the index of their numbers.

#include "IndexLoad.h"

#include "lookup/NumberEntries.h"

#include <QString>

#include <memory>
#include <random>
#include <string>
#include <unordered_map>

namespace {

/// Customers with 2.75 numbers each, in both ways of keeping them.
struct Numbers
{
    explicit Numbers(int customers);

    std::vector<std::string> asked; ///< numbers to look up: two in three are on file
    QString askedText;              ///< the same as one text, eleven characters each
    qsizetype entries = 0;
    lookup::NumberEntries ours;
    std::unordered_map<std::string, qint32> floor;
    double oursBytes = 0;
    double floorBytes = 0;
};

constexpr qsizetype width = 11;
constexpr size_t askedCount = 1 << 18; // so many that the caches cannot learn them

std::string randomNumber(std::mt19937_64 &random)
{
    return std::to_string(13000000000 + random() % 7000000000);
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
    entries = static_cast<qsizetype>(onFile.size());
    double before = bench::heapInUse();
    for (size_t i = 0; i < onFile.size(); ++i) {
        ours.append(QString::fromStdString(onFile[i]), snOf(i));
    }
    while (!ours.finishSome()) {
    }
    oursBytes = bench::heapInUse() - before;
    before = bench::heapInUse();
    for (size_t i = 0; i < onFile.size(); ++i) {
        floor.try_emplace(onFile[i], snOf(i));
    }
    floorBytes = bench::heapInUse() - before;
    for (size_t i = 0; i < askedCount; ++i) {
        asked.push_back(i % 3 == 0 ? randomNumber(random) : onFile[random() % onFile.size()]);
        askedText += QString::fromStdString(asked.back());
    }
}

void lookUpOurs(benchmark::State &state, const Numbers &numbers)
{
    const QStringView text(numbers.askedText);
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(numbers.ours.find(text.sliced(static_cast<qsizetype>(i) * width, width)));
        i = (i + 1) % askedCount;
    }
}

void lookUpFloor(benchmark::State &state, const Numbers &numbers)
{
    size_t i = 0;
    for (auto _ : state) {
        const auto found = numbers.floor.find(numbers.asked[i]);
        benchmark::DoNotOptimize(found == numbers.floor.end() ? -1 : found->second);
        i = (i + 1) % askedCount;
    }
}

void reportBytes(benchmark::State &state, double bytes, const Numbers &numbers)
{
    for (auto _ : state) {
    }
    state.counters["figure"] = bytes / static_cast<double>(numbers.entries);
}

void addLookupRows(std::vector<bench::Row> &rows, int customers)
{
    const auto numbers = std::make_shared<bench::Lazy<Numbers>>(customers);
    const std::string size = std::to_string(customers) + " customers";
    rows.push_back({.name = "lookup in ns, " + size,
                    .figure = [=](benchmark::State &state) { lookUpOurs(state, numbers->get()); },
                    .floor = [=](benchmark::State &state) { lookUpFloor(state, numbers->get()); },
                    .maxRatio = 2});
    rows.push_back(
        {.name = "bytes an entry, " + size,
         .figure =
             [=](benchmark::State &state) { reportBytes(state, numbers->get().oursBytes, numbers->get()); },
         .floor =
             [=](benchmark::State &state) { reportBytes(state, numbers->get().floorBytes, numbers->get()); },
         .maxFigure = 80});
}

} // namespace

std::vector<bench::Row> bench::rows()
{
    std::vector<Row> rows;
    for (const int customers : {10'000, 100'000, 1'000'000}) {
        addLookupRows(rows, customers);
    }
    for (const int customers : {100'000, 1'000'000}) {
        addIndexLoadRow(rows, customers);
    }
    return rows;
}
