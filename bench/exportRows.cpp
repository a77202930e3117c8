// The export of all customers into a spreadsheet.

#include "Measure.h"
#include "Rows.h"

#include "core/platform.h"
#include "customers/CustomerQueries.h"

#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <numeric>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr auto exportName = "frmAddDataToExcel_Tarn20050921"_L1;

void exportPlainly(const QString &file, const QString &target)
{
    QList<int> fields(customers::exportFieldCount);
    std::iota(fields.begin(), fields.end(), 0);
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    lxw_workbook *book = workbook_new_opt(target.toUtf8().constData(), &options);
    lxw_worksheet *sheet = workbook_add_worksheet(book, nullptr);
    lxw_row_t line = 1;
    forEachRow(openPlain(file).get(), customers::exportQuery(fields), [&](sqlite3_stmt *row) {
        for (int column = 0; column < sqlite3_column_count(row); ++column) {
            const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(row, column));
            if (text != nullptr) {
                worksheet_write_string(sheet, line, static_cast<lxw_col_t>(column), text, nullptr);
            }
        }
        ++line;
    });
    workbook_close(book);
    core::platform::syncFile(target);
}

struct Exported
{
    Sample ms;
    Sample waitMs;
    Sample memoryMb;
};

/// The export as the operator starts it, in its own window.
Exported exportAll(Station &station)
{
    Doors &doors = station.program.doors;
    const core::Paths &paths = station.desk.paths();
    doors.expected = u"Success!"_s;
    doors.namedFile = paths.DataFolder + u"/ours.xlsx"_s;
    doors.opened.clear();
    control<QPushButton>(openList(station), "cmdExport").click();
    auto &begin = control<QPushButton>(shownWindow(exportName), "cmdAddToExcel");
    const double before = residentMb();
    double held = 0;
    QTimer looking; // in the loop that is measured, so that it must not take any time
    QObject::connect(&looking, &QTimer::timeout, &looking, [&] { held = std::max(held, heldMb()); });
    looking.start(100);
    const Waits waits;
    Exported exported;
    exported.ms.figure = msOf([&] {
        begin.click();
        waitUntil([&] { return !doors.opened.isEmpty(); });
    });
    exported.waitMs = waits.longestMs();
    exported.memoryMb = {std::max(held, residentMb()) - before, mbOfFile(paths.CustomerFile)};
    closeWindow(exportName);
    closeWindow(listName);
    exported.ms.floor = msOf([&] { exportPlainly(paths.CustomerFile, paths.DataFolder + u"/floor.xlsx"_s); });
    return exported;
}

} // namespace

Rows exportRows(Stations &stations, int customers)
{
    constexpr size_t turns = 3;
    const auto runs = once<std::vector<Exported>>([=, &stations] {
        std::vector<Exported> all;
        std::generate_n(std::back_inserter(all), turns, [&] { return exportAll(stations.of(customers)); });
        return all;
    });
    const auto row = [=](const char *name, Reach reach, Sample Exported::*sample) {
        return Row{sized(name, customers), reach, [=] { return median(runs(), sample); }};
    };
    return {row("export of 27 columns, ms", {.times = 1.4}, &Exported::ms),
            row("longest turn of the event loop in the export, ms", {.more = 50}, &Exported::waitMs),
            row("memory of the export, MB, to that of the file", {.times = 0.2}, &Exported::memoryMb)};
}

} // namespace bench
