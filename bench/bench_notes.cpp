// The windows of call notes at 100,000 calls with 200,000 entries: any search until its first page is
// painted, and the report of a customer with 10,000 entries, beside the engine's own reading of the same
// rows.

#include "DeskData.h"
#include "EventLoopWatch.h"
#include "NoteDesk.h"
#include "Report.h"

#include "appearance/RecordGrid.h"
#include "notes/NoteReport.h"
#include "notes/NoteStatements.h"
#include "notes/ReportBox.h"
#include "notes/frmNotePad.h"
#include "notes/frmNotePadManager.h"
#include "store/EngineFunctions.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int repetitions = 5;

double median(const std::function<double()> &measure)
{
    std::vector<double> figures(repetitions);
    std::generate(figures.begin(), figures.end(), measure);
    std::sort(figures.begin(), figures.end());
    return figures[figures.size() / 2];
}

double milliseconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// What the operator searches by: a control and the text typed into it, or the place in the list.
struct Search
{
    const char *name;
    const char *control;
    QString text;
};

QList<Search> searches()
{
    return {{"all entries", "", {}},
            {"call, one hit", "txtCallID", u"Call20050000099999"_s},
            {"customer, many hits", "txtCustomerName", u"trading"_s},
            {"customer, none", "txtCustomerName", u"nobody"_s},
            {"consultant, one in forty", "txtConsultant", u"consultant 39"_s},
            {"content, one hit", "txtContent", u"order 99999 "_s},
            {"content, none", "txtContent", u"nowhere"_s},
            {"request, one hit", "txtRequest", u"delivery 199999 "_s},
            {"response, all", "txtResponse", u"FRIDAY"_s},
            {"note, none", "txtNote", u"nowhere"_s},
            {"not resolved", "cmbIfResolved", u"2"_s}};
}

void enter(QWidget &form, const Search &search, bool clear)
{
    auto *control = form.findChild<QWidget *>(QLatin1StringView(search.control));
    if (auto *box = qobject_cast<QLineEdit *>(control)) {
        box->setText(clear ? QString() : search.text);
    } else if (auto *list = qobject_cast<QComboBox *>(control)) {
        list->setCurrentIndex(clear ? 0 : search.text.toInt());
    }
}

/// From the operator's Enter until rows stand on the screen, or until it is known that there are none.
double firstPage(notes::frmNotePadManager &form)
{
    auto *grid = form.findChild<appearance::RecordGrid *>();
    return milliseconds([&] {
        form.ShowResult();
        const auto *result = static_cast<const store::ResultModel *>(grid->model());
        while (result->rowCount() == 0 && !result->isComplete()) {
            QApplication::processEvents();
        }
        grid->viewport()->repaint();
    });
}

bool measureSearches(bench::NoteDesk &desk)
{
    notes::frmNotePadManager form(desk.context(), {});
    form.setAttribute(Qt::WA_DeleteOnClose, false);
    form.show();
    bool reached = true;
    for (const Search &search : searches()) {
        enter(form, search, false);
        const double figure = median([&] { return firstPage(form); });
        enter(form, search, true);
        reached &= bench::print({.name = std::string("first page of a search, ms: ") + search.name,
                                 .figure = figure,
                                 .maxFigure = 150});
    }
    return reached;
}

qint64 readThrough(sqlite3_stmt *statement, const std::function<void()> &visit)
{
    qint64 bytes = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            sqlite3_column_text(statement, column);
            bytes += sqlite3_column_bytes(statement, column);
        }
        visit();
    }
    return bytes;
}

/// The same rows by the engine's own interface: the note query, and the content of each of its calls.
double bareReading(const QString &path)
{
    const bench::Connection connection = bench::openPlain(path);
    store::registerFunctions(connection.get());
    sqlite3_stmt *entries = nullptr;
    sqlite3_stmt *call = nullptr;
    const QByteArray query = notes::noteQuery(bench::NoteDesk::busyCustomer()).toUtf8();
    sqlite3_prepare_v2(connection.get(), query.constData(), -1, &entries, nullptr);
    sqlite3_prepare_v2(connection.get(), "select * from callinfo where callid=?", -1, &call, nullptr);
    const double figure = milliseconds([&] {
        QByteArray last;
        readThrough(entries, [&] {
            const QByteArray id(reinterpret_cast<const char *>(sqlite3_column_text(entries, 0)));
            if (std::exchange(last, id) != id) {
                sqlite3_bind_text(call, 1, id.constData(), -1, SQLITE_TRANSIENT);
                readThrough(call, [] {});
                sqlite3_reset(call);
            }
        });
    });
    sqlite3_finalize(entries);
    sqlite3_finalize(call);
    return figure;
}

double reportText(bench::NoteDesk &desk)
{
    const QString customer = bench::NoteDesk::busyCustomer();
    return milliseconds([&] {
        notes::NoteReport report(desk.log, desk.paths.CustomerFile, notes::noteQuery(customer), customer);
        while (report.GetExportContent()) {
        }
    });
}

/// Until the whole report can be read in the editor.
double shownReport(bench::NoteDesk &desk)
{
    notes::frmNotePad form(desk.context());
    form.setAttribute(Qt::WA_DeleteOnClose, false);
    form.show();
    QApplication::processEvents();
    auto *box = form.findChild<notes::ReportBox *>();
    bool filled = false;
    QObject::connect(box, &notes::ReportBox::filled, box, [&] { filled = true; });
    return milliseconds([&] {
        form.begin(bench::NoteDesk::busyCustomer(), 0);
        while (!filled) {
            QApplication::processEvents();
        }
    });
}

double longestTurn(bench::NoteDesk &desk)
{
    const bench::EventLoopWatch watch;
    shownReport(desk);
    return watch.longestWaitMs();
}

bool measureReport(bench::NoteDesk &desk)
{
    reportText(desk); // the file is in memory from then on, for both
    const double floor = median([&] { return bareReading(desk.paths.CustomerFile); });
    bool reached = bench::print({.name = "report of 10,000 entries, ms",
                                 .figure = median([&] { return reportText(desk); }),
                                 .floor = floor,
                                 .maxRatio = 4});
    reached &= bench::print({.name = "the same until it stands in the editor, ms",
                             .figure = median([&] { return shownReport(desk); }),
                             .maxFigure = 500});
    return bench::print({.name = "longest turn of the event loop meanwhile, ms",
                         .figure = median([&] { return longestTurn(desk); }),
                         .maxFigure = 50}) &&
           reached;
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    bench::NoteDesk desk;
    bench::printHeading();
    const bool searched = measureSearches(desk);
    return measureReport(desk) && searched ? EXIT_SUCCESS : EXIT_FAILURE;
}
