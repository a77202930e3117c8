#pragma once

#include <limits>
#include <optional>
#include <string>

namespace bench {

/// One line of the table: a figure of ours and, measured beside it in the same run, what the job costs at the
/// least.
struct Result
{
    std::string name; ///< with the figure's unit
    double figure = 0;
    std::optional<double> floor = {};
    double maxRatio = std::numeric_limits<double>::infinity();
    double maxFigure = std::numeric_limits<double>::infinity();
};

void printHeading();

/// Prints the line; false when the reach was missed.
bool print(const Result &result);

} // namespace bench
