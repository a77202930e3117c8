#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bench {

/// What a job costs us and, measured beside it, what it costs at the least.
struct Sample
{
    double figure = 0;
    double floor = 0;
};

/// How far a figure may lie above its floor: in times, or, where the floor is the machine's own unrest, in
/// the row's unit.
struct Reach
{
    double times = std::numeric_limits<double>::infinity();
    double more = std::numeric_limits<double>::infinity();
};

/// One line of the table.
struct Row
{
    std::string name; ///< with the unit of figure and floor
    Reach reach;
    std::function<Sample()> measure;
};
using Rows = std::vector<Row>;

/// The name of a row that is measured at a size of the desk.
std::string sized(const char *name, int customers);

/// Figure and floor are taken in turns, so that a busy moment of the machine hits both. Whatever else the
/// machine does only adds to work: of work the least counts, of waits the median.
Sample least(int turns, const std::function<Sample()> &measure);
Sample median(int turns, const std::function<Sample()> &measure);
double median(std::vector<double> values);

/// The sample with the greatest ratio among those of many things.
template <typename Things>
Sample worst(const Things &things, const std::function<Sample(const typename Things::value_type &)> &measure)
{
    Sample worst;
    for (const auto &thing : things) {
        const Sample sample = measure(thing);
        if (worst.floor == 0 || sample.figure / sample.floor > worst.figure / worst.floor) {
            worst = sample;
        }
    }
    return worst;
}

/// The median of one of the samples that several runs have told.
template <typename Run>
Sample median(const std::vector<Run> &runs, Sample Run::*sample)
{
    std::vector<double> figures;
    std::vector<double> floors;
    for (const Run &run : runs) {
        figures.push_back((run.*sample).figure);
        floors.push_back((run.*sample).floor);
    }
    return {median(figures), median(floors)};
}

/// Measures the rows that have the word in their name and prints each; false where one misses its reach, or
/// could not be measured.
bool print(const Rows &rows, const std::string &word);

/// Shares what one costly run tells between several rows: it is made when the first of them asks.
template <typename Result>
std::function<const Result &()> once(std::function<Result()> make)
{
    return [make = std::move(make), made = std::make_shared<std::optional<Result>>()]() -> const Result & {
        if (!*made) {
            made->emplace(make());
        }
        return **made;
    };
}

} // namespace bench
