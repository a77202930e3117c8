#include "copies/Retention.h"

#include <QMap>
#include <QSet>

#include <algorithm>
#include <functional>
#include <numeric>

namespace copies {

namespace {

constexpr int keptDays = 7;
constexpr int keptWeeks = 4;
constexpr int keptMonths = 12;

using Places = QList<qsizetype>;
using ByDay = QMap<QDate, Places>; // of each day the first one in front

// The last days of so many periods, of which `periodOf` tells one from another.
QList<QDate> lastDays(const ByDay &days, int periods, const std::function<int(const QDate &)> &periodOf)
{
    QList<QDate> last;
    const QList<QDate> dates = days.keys();
    for (auto day = dates.crbegin(); day != dates.crend() && last.size() < periods; ++day) {
        if (last.isEmpty() || periodOf(last.last()) != periodOf(*day)) {
            last.append(*day);
        }
    }
    return last;
}

int weekOf(const QDate &day)
{
    constexpr int moreThanWeeks = 100;
    int year = 0;
    const int week = day.weekNumber(&year);
    return year * moreThanWeeks + week;
}

int monthOf(const QDate &day)
{
    constexpr int months = 12;
    return day.year() * months + day.month();
}

void keep(const ByDay &days, QSet<qsizetype> &kept)
{
    for (const QDate &day : lastDays(days, keptDays, [](const QDate &d) { return int(d.toJulianDay()); })) {
        for (const qsizetype place : days[day]) {
            kept.insert(place);
        }
    }
    for (const QDate &day : lastDays(days, keptWeeks, weekOf) + lastDays(days, keptMonths, monthOf)) {
        kept.insert(days[day].first());
    }
}

} // namespace

QList<qsizetype> superfluous(const QList<Dated> &copies, const QDate &today)
{
    Places byTime(copies.size());
    std::iota(byTime.begin(), byTime.end(), 0);
    std::ranges::stable_sort(byTime, {}, [&](qsizetype place) { return copies[place].made; });
    ByDay past;
    ByDay future;
    QSet<qsizetype> kept;
    qsizetype undo = -1;
    for (const qsizetype place : byTime) {
        const QDate day = copies[place].made.date();
        (day > today ? future : past)[day].append(place);
        undo = copies[place].beforeImport ? place : undo;
    }
    kept.insert(undo);
    keep(past, kept);
    keep(future, kept);
    byTime.removeIf([&](qsizetype place) { return kept.contains(place); });
    return byTime;
}

} // namespace copies
