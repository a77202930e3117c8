// The windows of the customer database: opening, jumping, searching, loading, saving, exporting.

#include "Measure.h"
#include "MemoryList.h"
#include "Rows.h"

#include "customers/CustomerQueries.h"
#include "store/RecordsetModel.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <numeric>
#include <random>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr auto listName = "FrmCustomer"_L1;
constexpr auto editorName = "FrmEditCustomer"_L1;
constexpr auto exportName = "frmAddDataToExcel_Tarn20050921"_L1;

void paint(QWidget &window)
{
    QCoreApplication::processEvents();
    window.grab();
}

QWidget &openList(Station &station)
{
    station.program.windows().show(core::Window::CustomerList);
    QWidget &list = shownWindow(listName);
    paint(list);
    return list;
}

QTableView &gridOf(QWidget &list)
{
    return control<QTableView>(list, "DataGrid1");
}

// A list that was shown before may still be read on.
double msOfOpening(Station &station)
{
    const double ms = msOf([&] { openList(station); });
    closeWindow(listName);
    return ms;
}

Sample opening(Station &station, MemoryModel &model)
{
    return {msOfOpening(station), msOf([&] {
                MemoryList list(model);
                list.show();
                paint(list);
            })};
}

double mbOfFile(const QString &path)
{
    return double(QFileInfo(path).size()) / (1 << 20);
}

/// What the open list holds, beside the file that it shows.
Sample memoryOfList(Station &station)
{
    msOfOpening(station); // the fonts and icons of the first one
    const double before = residentMb();
    openList(station);
    const double held = residentMb() - before;
    closeWindow(listName);
    return {held, mbOfFile(station.desk.paths().CustomerFile)};
}

/// Milliseconds of a jump to any place until painted, the mean of many.
double msOfJump(QTableView &grid)
{
    constexpr int jumps = 100;
    std::mt19937 random(7);
    return msOf([&] {
               for (int i = 0; i < jumps; ++i) {
                   grid.scrollTo(grid.model()->index(int(random() % unsigned(grid.model()->rowCount())), 0));
                   grid.grab();
               }
           }) /
           jumps;
}

Sample jumping(Station &station)
{
    QWidget &list = openList(station);
    MemoryModel model(station.desk);
    MemoryList inMemory(model);
    inMemory.takeShape(list, gridOf(list));
    inMemory.show();
    const Sample jump = least(5, [&] { return Sample{msOfJump(gridOf(list)), msOfJump(inMemory.grid())}; });
    closeWindow(listName);
    return jump;
}

QStringList patterns()
{
    QStringList list;
    for (const QString &word : {u"Handels贸易公司zzqx"_s, u"spółkaİbrahim 77"_s, u"张伟محمد99917x"_s,
                                u"лидияanna 0533-9"_s, u"zzqxwvkjqyzxwvkq"_s}) {
        for (const int length : {1, 2, 3, 4, 5, 7, 10, 16}) {
            list.append(word.left(length));
        }
    }
    return list;
}

/// The rows of the customer whose searched columns hold the word, by Qt's own folding of case.
class Reference
{
public:
    explicit Reference(const QString &file)
    {
        forEachRow(openPlain(file).get(),
                   u"select CustomerName,WorkPhones,ContactPersonName,City,Broker,ContactPersonEmail,"
                   "CustomerType,Note from customer"_s,
                   [this](sqlite3_stmt *row) {
                       QString text;
                       for (int column = 0; column < sqlite3_column_count(row); ++column) {
                           text += textOf(row, column).toCaseFolded() + u'\n';
                       }
                       m_texts.append(text);
                   });
    }
    int count(const QString &word) const
    {
        const QString folded = word.toCaseFolded();
        return int(
            std::ranges::count_if(m_texts, [&](const QString &text) { return text.contains(folded); }));
    }

private:
    QStringList m_texts;
};

/// A search as the operator runs it in the open list.
class Search
{
public:
    explicit Search(QWidget &list)
        : m_grid(gridOf(list)), m_typed(control<QLineEdit>(list, "txtSearch")),
          m_button(control<QPushButton>(list, "cmdSearch"))
    {}

    /// Milliseconds until its first rows stand on the screen.
    double msOfFirstRows(const QString &word)
    {
        m_typed.setText(word);
        return msOf([&] {
            m_button.click();
            m_grid.grab();
        });
    }
    /// Milliseconds until all of them are found.
    double msOfAllRows(const QString &word)
    {
        m_typed.setText(word);
        return msOf([&] {
            m_button.click();
            while (static_cast<store::RecordsetModel *>(m_grid.model())->isReading()) {
                QCoreApplication::processEvents();
            }
        });
    }
    int rows() const { return m_grid.model()->rowCount(); }

private:
    QTableView &m_grid;
    QLineEdit &m_typed;
    QPushButton &m_button;
};

/// The query of a search in SQLite's own words.
QString plainSearch(const QString &columns, const QString &word)
{
    QString sql =
        customers::searchQuery(word).replace(u"select *"_s, u"select "_s + columns, Qt::CaseInsensitive);
    return sql.replace(u"like '*"_s, u"like '%"_s).replace(u"*'"_s, u"%'"_s);
}

/// The greatest ratio among those of many patterns, each at its least.
Sample worstPattern(const std::function<Sample(const QString &)> &measure, int turns)
{
    Sample worst;
    for (const QString &word : patterns()) {
        const Sample sample = least(turns, [&] { return measure(word); });
        if (worst.floor == 0 || sample.figure / sample.floor > worst.figure / worst.floor) {
            worst = sample;
        }
    }
    return worst;
}

Sample searching(Station &station, int turns)
{
    const Connection plain = openPlain(station.desk.paths().CustomerFile);
    Search search(openList(station));
    const Sample worst = worstPattern(
        [&](const QString &word) {
            return Sample{search.msOfAllRows(word),
                          msOf([&] { readThrough(plain.get(), plainSearch(u"rowid"_s, word)); })};
        },
        turns);
    closeWindow(listName);
    return worst;
}

/// The floor reads what then stands in the list: as many keys, and a screen full of rows, painted.
Sample findingFirstRows(Station &station, int turns)
{
    constexpr int screen = 30;
    const Connection plain = openPlain(station.desk.paths().CustomerFile);
    QWidget &list = openList(station);
    MemoryModel model(station.desk);
    MemoryList inMemory(model);
    inMemory.takeShape(list, gridOf(list));
    inMemory.show();
    Search search(list);
    const Sample worst = worstPattern(
        [&](const QString &word) {
            const double ms = search.msOfFirstRows(word);
            const QString limit = u" limit %1"_s.arg(std::max(search.rows(), 1));
            return Sample{ms, msOf([&] {
                              readThrough(plain.get(), plainSearch(u"rowid"_s, word) + limit);
                              readThrough(plain.get(), u"select * from customer limit %1"_s.arg(screen));
                              inMemory.grid().grab();
                          })};
        },
        turns);
    closeWindow(listName);
    return worst;
}

/// Searches that find other rows than the reference, of all.
Sample wrongSearches(Station &station)
{
    const Reference reference(station.desk.paths().CustomerFile);
    Search search(openList(station));
    Sample wrong;
    for (const QString &word : patterns()) {
        search.msOfAllRows(word);
        wrong.figure += search.rows() != reference.count(word) ? 1 : 0;
        wrong.floor += 1;
    }
    closeWindow(listName);
    return wrong;
}

int anyCustomer(const Station &station, std::mt19937 &random)
{
    return 1 + int(random() % unsigned(station.desk.customers()));
}

/// Opening the editor on a customer; the floor is the same window for a new one, and a keyed read.
Sample loading(Station &station)
{
    const QString file = station.desk.paths().CustomerFile;
    std::mt19937 random(11);
    const auto ms = [&](const std::function<void()> &open) {
        const double taken = msOf([&] {
            open();
            paint(shownWindow(editorName));
        });
        closeWindow(editorName);
        return taken;
    };
    return least(9, [&] {
        const int sn = anyCustomer(station, random);
        return Sample{ms([&] { station.program.windows().Show_Editor(u"CUSTOMER"_s, sn); }), ms([&] {
                          readThrough(openPlain(file).get(), u"select * from customer where SN=%1"_s.arg(sn));
                          station.program.windows().addCustomer({}, {});
                      })};
    });
}

/// How many transactions have been written to a database; the header counts them.
quint32 transactionsOf(const QString &path)
{
    constexpr int counterAt = 24;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    file.seek(counterAt);
    const QByteArray counter = file.read(sizeof(quint32));
    return std::accumulate(counter.begin(), counter.end(), quint32(0),
                           [](quint32 sum, char byte) { return sum << 8 | quint8(byte); });
}

/// One save with all that follows, the list standing open, and as many bare transactions as it wrote. What
/// the save reads belongs to the floor as long as it looks through the whole table.
Sample oneSave(Station &station, std::mt19937 &random, bool readsTable)
{
    const QString file = station.desk.paths().CustomerFile;
    const int sn = anyCustomer(station, random);
    station.program.windows().Show_Editor(u"CUSTOMER"_s, sn);
    QWidget &editor = shownWindow(editorName);
    control<QLineEdit>(editor, "txtCompanyCall").setText(QString::number(random()));
    control<QLabel>(editor, "lblMessage").clear();
    const quint32 before = transactionsOf(file);
    const double ours = msOf([&] { control<QPushButton>(editor, "Command2").click(); });
    const quint32 written = transactionsOf(file) - before;
    if (written == 0 || control<QLabel>(editor, "lblMessage").text().isEmpty()) {
        throw std::runtime_error("nothing was saved");
    }
    closeWindow(editorName);
    const Connection plain = openPlain(file);
    const double bare = msOf([&] {
        for (quint32 i = 0; i < written; ++i) {
            readThrough(plain.get(),
                        u"update customer set WorkPhones='%1' where SN=%2"_s.arg(random()).arg(sn));
        }
        if (readsTable) {
            readThrough(plain.get(), u"select SN,CustomerID from customer"_s);
            readThrough(plain.get(), u"select rowid from customer"_s);
        }
    });
    return {ours, bare};
}

Sample saving(Station &station, bool readsTable)
{
    constexpr int saves = 25;
    std::mt19937 random(11);
    openList(station);
    const Sample save = median(saves, [&] { return oneSave(station, random, readsTable); });
    closeWindow(listName);
    return save;
}

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
    QTimer looking; // rarely: what it asks for takes its time
    QObject::connect(&looking, &QTimer::timeout, &looking, [&] { held = std::max(held, residentMb()); });
    looking.start(1000);
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

std::vector<Exported> exports(Station &station, int turns)
{
    std::vector<Exported> all;
    std::generate_n(std::back_inserter(all), turns, [&] { return exportAll(station); });
    return all;
}

/// One of the samples of several exports, a turn at a time.
std::function<Sample()> inTurns(const std::vector<Exported> &all, Sample Exported::*sample)
{
    return [&all, sample, turn = size_t(0)]() mutable { return all.at(turn++).*sample; };
}

} // namespace

Rows customerRows(Stations &stations, int customers)
{
    const bool largest = customers == largestDesk;
    const int exportTurns = largest ? 1 : 3;
    const int searchTurns = largest ? 1 : 5;
    const auto station = [&stations, customers]() -> Station & { return stations.of(customers); };
    const auto exported = once<std::vector<Exported>>([=] { return exports(station(), exportTurns); });
    const std::string size = ", " + std::to_string(customers) + " customers";
    return {
        {"opening the customer list until painted, ms" + size,
         {.times = 3},
         [=] {
             MemoryModel model(station().desk);
             return least(9, [&] { return opening(station(), model); });
         }},
        {"memory of the open list, MB, to that of the file" + size,
         {.times = 0.2},
         [=] { return memoryOfList(station()); }},
        {"jump to any place of the sorted list, ms" + size, {.times = 3}, [=] { return jumping(station()); }},
        {"all rows of a search, the worst of 40, ms" + size,
         {.times = largest ? 1.3 : 2},
         [=] { return searching(station(), searchTurns); }},
        {"first rows of a search, the worst of 40, ms" + size,
         {.times = 3},
         [=] { return findingFirstRows(station(), searchTurns); }},
        {"searches that find other rows than a reference" + size,
         {.times = 0},
         [=] { return wrongSearches(station()); }},
        {"opening the editor on a customer, ms" + size, {.times = 1.5}, [=] { return loading(station()); }},
        {"saving a customer with all that follows, ms" + size,
         {.times = 4},
         [=] { return saving(station(), !largest); }},
        {"export of 27 columns, ms" + size,
         {.times = 1.4},
         [=] { return least(exportTurns, inTurns(exported(), &Exported::ms)); }},
        {"longest turn of the event loop meanwhile, ms" + size,
         {.more = 50},
         [=] { return median(exportTurns, inTurns(exported(), &Exported::waitMs)); }},
        {"memory of the export, MB, to that of the file" + size, {.times = 0.2}, [=] {
             return median(exportTurns, inTurns(exported(), &Exported::memoryMb));
         }}};
}

Rows growthRows(Stations &stations)
{
    const auto both = [&stations](const std::function<double(Station &)> &ms) {
        return Sample{ms(stations.of(largestDesk)), ms(stations.of(smallDesk))};
    };
    return {{"opening the customer list, 1000000 to 10000 customers, ms",
             {.times = 1.5},
             [=] { return least(5, [=] { return both(msOfOpening); }); }},
            {"saving a customer, 1000000 to 10000 customers, ms", {.times = 1.5}, [=] {
                 return both([](Station &station) { return saving(station, false).figure; });
             }}};
}

} // namespace bench
