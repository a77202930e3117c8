#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bench {

using Work = std::function<void(benchmark::State &)>;

/// One row of the result: a figure of ours and, measured beside it in the same run, what the job costs at the
/// least. Both are CPU nanoseconds an iteration, unless the work sets the counter "figure".
struct Row
{
    std::string name;
    Work figure;
    Work floor;
    double maxRatio = std::numeric_limits<double>::infinity();
    double maxFigure = std::numeric_limits<double>::infinity();
};

/// What several works share, made from its size when the first of them asks: a row that is not run costs
/// nothing.
template <typename Thing>
class Lazy
{
public:
    explicit Lazy(int size) : m_size(size) {}
    Thing &get()
    {
        if (!m_thing) {
            m_thing = std::make_unique<Thing>(m_size);
        }
        return *m_thing;
    }

private:
    int m_size;
    std::unique_ptr<Thing> m_thing;
};

/// The rows of a program; each benchmark program defines it.
std::vector<Row> rows();

/// Bytes that the process holds on the heap.
double heapInUse();

} // namespace bench
