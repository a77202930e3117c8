#include "Table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>

namespace bench {

namespace {

constexpr int nameWidth = 64;

std::string number(const char *format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string told(const Reach &reach)
{
    return std::isfinite(reach.times) ? number("%.4g times", reach.times) : number("%.4g more", reach.more);
}

bool print(const Row &row)
{
    try {
        const Sample sample = row.measure();
        const double ratio = sample.figure / sample.floor;
        const bool reached = ratio <= row.reach.times && sample.figure - sample.floor <= row.reach.more;
        std::printf("%-*s %10.2f %10.2f %7.2f   at most %-10s %s\n", nameWidth, row.name.c_str(),
                    sample.figure, sample.floor, ratio, told(row.reach).c_str(), reached ? "ok" : "MISSED");
        std::fflush(stdout);
        return reached;
    } catch (const std::exception &error) {
        std::printf("%-*s NOT MEASURED: %s\n", nameWidth, row.name.c_str(), error.what());
        std::fflush(stdout);
        return false;
    }
}

Sample taken(int turns, const std::function<Sample()> &measure, double (*choose)(std::vector<double>))
{
    std::vector<double> figures;
    std::vector<double> floors;
    for (int turn = 0; turn < turns; ++turn) {
        const Sample sample = measure();
        figures.push_back(sample.figure);
        floors.push_back(sample.floor);
    }
    return {choose(figures), choose(floors)};
}

} // namespace

std::string sized(const char *name, int customers)
{
    return std::string(name) + ", " + std::to_string(customers) + " customers";
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

Sample median(int turns, const std::function<Sample()> &measure)
{
    return taken(turns, measure, [](std::vector<double> values) { return median(std::move(values)); });
}

Sample least(int turns, const std::function<Sample()> &measure)
{
    return taken(turns, measure,
                 [](std::vector<double> values) { return *std::min_element(values.begin(), values.end()); });
}

bool print(const Rows &rows, const std::string &word)
{
    std::printf("%-*s %10s %10s %7s   %s\n", nameWidth, "row", "figure", "floor", "ratio", "reach");
    bool reached = true;
    for (const Row &row : rows) {
        if (row.name.find(word) != std::string::npos) {
            reached = print(row) && reached;
        }
    }
    return reached;
}

} // namespace bench
