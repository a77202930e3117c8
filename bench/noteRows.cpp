// The windows of call notes at 100,000 calls with 200,000 entries: any search until its first page is
// painted, and the report of a customer with 10,000 entries.

#include "Measure.h"
#include "Rows.h"

#include "store/ResultModel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr auto managerName = "frmNotePadManager"_L1;
constexpr auto editorName = "frmNotePad"_L1;

const QString joined =
    u"select CustomerRequest.CallID,CustomerName,DateAndTime,Consultant,Request,Response,IfResolved,Note,"
    "CallContent from CustomerRequest,CallInfo where CallInfo.CallID = CustomerRequest.CallID"_s;

/// What the operator searches by: a control and the text typed into it, or the place in the list; and the
/// condition of the same search.
struct Search
{
    const char *control;
    QString text;
    QString condition;
};

QList<Search> searches()
{
    return {{"txtCallID", {}, u"1"_s},
            {"txtCallID", u"Call20050000099999"_s, u"CustomerRequest.CallID like '%Call20050000099999%'"_s},
            {"txtCustomerName", u"trading"_s, u"CustomerName like '%trading%'"_s},
            {"txtCustomerName", u"nobody"_s, u"CustomerName like '%nobody%'"_s},
            {"txtConsultant", u"consultant 39"_s, u"Consultant like '%consultant 39%'"_s},
            {"txtContent", u"order 99999 "_s, u"CallContent like '%order 99999 %'"_s},
            {"txtContent", u"nowhere"_s, u"CallContent like '%nowhere%'"_s},
            {"txtRequest", u"delivery 199999 "_s, u"Request like '%delivery 199999 %'"_s},
            {"txtResponse", u"FRIDAY"_s, u"Response like '%FRIDAY%'"_s},
            {"txtNote", u"nowhere"_s, u"Note like '%nowhere%'"_s},
            {"cmbIfResolved", u"2"_s, u"IfResolved = 0"_s}};
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

/// From the operator's click until rows stand on the screen, or until it is known that there are none.
double msOfFirstPage(QWidget &form)
{
    auto &grid = control<QAbstractItemView>(form, "DataGrid1");
    return msOf([&] {
        control<QPushButton>(form, "cmdShowResult").click();
        const auto *result = static_cast<const store::ResultModel *>(grid.model());
        while (result->rowCount() == 0 && !result->isComplete()) {
            QCoreApplication::processEvents();
        }
        grid.viewport()->repaint();
    });
}

/// SQLite's own reading of a page of the same search in the same order, painted as well.
double msOfPlainPage(sqlite3 *plain, const Search &search, QWidget &form)
{
    return msOf([&] {
        readThrough(plain,
                    joined + u" and "_s + search.condition +
                        u" order by CustomerName,CustomerRequest.CallID,DateAndTime,IfResolved limit 30"_s);
        control<QAbstractItemView>(form, "DataGrid1").viewport()->repaint();
    });
}

Sample searching(Station &station)
{
    const Connection plain = openPlain(station.desk.paths().CustomerFile);
    station.program.windows().show(core::Window::CallNotes);
    QWidget &form = shownWindow(managerName);
    const Sample slowest = worst(searches(), [&](const Search &search) {
        enter(form, search, false);
        const Sample sample = least(5, [&] {
            return Sample{msOfFirstPage(form), msOfPlainPage(plain.get(), search, form)};
        });
        enter(form, search, true);
        return sample;
    });
    closeWindow(managerName);
    return slowest;
}

struct Report
{
    Sample ms;
    Sample waitMs;
};

/// A report from the click on "Call notes" until the whole of it can be read in the editor. The floor is
/// SQLite's own reading of the same rows, and a bare box that takes the same text.
Report showReport(Station &station)
{
    Report report;
    QString text;
    {
        const Waits waits;
        report.ms.figure = msOf([&] {
            station.program.windows().ShowNotePad(Desk::busyCustomer());
            auto &box = control<QPlainTextEdit>(shownWindow(editorName), "txtReport");
            QEventLoop loop;
            QObject::connect(&box, SIGNAL(filled()), &loop, SLOT(quit()));
            loop.exec();
            text = box.toPlainText();
        });
        report.waitMs = waits.longestMs();
    }
    closeWindow(editorName);
    const Connection plain = openPlain(station.desk.paths().CustomerFile);
    report.ms.floor = msOf([&] {
        readThrough(plain.get(), joined + u" and CustomerName='"_s + Desk::busyCustomer() + u'\'');
        QPlainTextEdit box;
        box.setLineWrapMode(QPlainTextEdit::NoWrap);
        box.setPlainText(text);
        box.show();
        box.grab();
    });
    return report;
}

} // namespace

Rows noteRows(Stations &stations)
{
    const auto station = [&stations]() -> Station & { return stations.of(usualDesk); };
    return {{"first page of a note search, the worst of 11, ms",
             {.times = 3},
             [=] { return searching(station()); }},
            {"report of 10000 entries until it stands in the editor, ms",
             {.times = 1.5},
             [=] { return least(5, [=] { return showReport(station()).ms; }); }},
            {"longest turn of the event loop in the report, ms", {.more = 50}, [=] {
                 return median(5, [=] { return showReport(station()).waitMs; });
             }}};
}

} // namespace bench
