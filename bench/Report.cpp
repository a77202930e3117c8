#include "Report.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr int nameWidth = 56;

std::string number(const char *format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

void bench::printHeading()
{
    std::printf("%-*s %14s %14s %7s   %s\n", nameWidth, "row", "figure", "floor", "ratio", "reach");
}

bool bench::print(const Result &result)
{
    const double ratio = result.floor ? result.figure / *result.floor : 0;
    const bool reached = result.figure <= result.maxFigure && ratio <= result.maxRatio;
    const std::string reach = std::isfinite(result.maxRatio) ? number("%.4g times", result.maxRatio)
                                                             : number("%.4g", result.maxFigure);
    std::printf("%-*s %14s %14s %7s   at most %-11s %s\n", nameWidth, result.name.c_str(),
                number("%.1f", result.figure).c_str(),
                result.floor ? number("%.1f", *result.floor).c_str() : "-",
                result.floor ? number("%.2f", ratio).c_str() : "-", reach.c_str(), reached ? "ok" : "MISSED");
    std::fflush(stdout);
    return reached;
}
