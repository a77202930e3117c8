#include "Ratios.h"

#include "Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <malloc.h>
#include <map>

namespace {

/// Keeps the figure of each run by the benchmark's name.
class Collector : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &context) override
    {
        PrintBasicContext(&GetErrorStream(), context);
        return true;
    }
    void ReportRuns(const std::vector<Run> &reports) override
    {
        for (const Run &run : reports) {
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(),
                             run.error_message.c_str());
                m_failed = true;
            } else if (run.run_type == Run::RT_Iteration) {
                m_figures[run.run_name.function_name].push_back(figureOf(run));
            }
        }
    }

    bool failed() const { return m_failed; }

    /// The median of the repetitions; not a number when the benchmark did not run.
    double median(const std::string &name)
    {
        std::vector<double> &figures = m_figures[name];
        std::sort(figures.begin(), figures.end());
        return figures.empty() ? std::nan("") : figures[figures.size() / 2];
    }

private:
    static double figureOf(const Run &run)
    {
        const auto counter = run.counters.find("figure");
        const double perSecond = benchmark::GetTimeUnitMultiplier(run.time_unit);
        return counter != run.counters.end() ? counter->second.value
                                             : run.GetAdjustedCPUTime() / perSecond * 1e9;
    }

    std::map<std::string, std::vector<double>> m_figures;
    bool m_failed = false;
};

/// True when the row's reach is kept, and when a filter has left the row out.
bool report(const bench::Row &row, Collector &collector)
{
    const double figure = collector.median(row.name + "/figure");
    const double floor = collector.median(row.name + "/floor");
    return std::isnan(figure) || std::isnan(floor) ||
           bench::print({row.name, figure, floor, row.maxRatio, row.maxFigure});
}

} // namespace

double bench::heapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

int main(int argc, char **argv)
{
    // Figure and floor take turns, so that a busy moment of the machine hits both.
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    std::string repetitions = "--benchmark_repetitions=5";
    std::vector<char *> arguments{*argv, interleave.data(), repetitions.data()};
    std::copy(argv + 1, argv + argc, std::back_inserter(arguments));
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    const std::vector<bench::Row> rows = bench::rows();
    for (const bench::Row &row : rows) {
        benchmark::RegisterBenchmark((row.name + "/figure").c_str(), row.figure);
        benchmark::RegisterBenchmark((row.name + "/floor").c_str(), row.floor);
    }
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);

    bench::printHeading();
    const auto missed =
        std::count_if(rows.begin(), rows.end(), [&](const auto &row) { return !report(row, collector); });
    return missed == 0 && !collector.failed() ? 0 : 1;
}
