// The windows of the customer database: opening, jumping, searching, loading, saving, exporting.

#include "Measure.h"
#include "MemoryList.h"
#include "Rows.h"

#include "customers/CustomerQueries.h"
#include "store/ResultModel.h"

#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr auto editorName = "FrmEditCustomer"_L1;

QTableView &gridOf(QWidget &list)
{
    return control<QTableView>(list, "DataGrid1");
}

double msOfOpening(Station &station)
{
    const double ms = msOf([&] { openList(station); });
    closeWindow(listName);
    return ms;
}

Sample opening(Station &station)
{
    MemoryModel model(station.desk);
    return least(9, [&] {
        return Sample{msOfOpening(station), msOf([&] {
                          MemoryList list(model);
                          list.show();
                          paint(list);
                      })};
    });
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

/// The list with all of its rows found, and beside it the same ones in memory.
struct FullList
{
    explicit FullList(Station &station)
        : list(openList(station)), rowsInMemory(station.desk), inMemory(rowsInMemory)
    {
        const auto *rows = static_cast<const store::ResultModel *>(gridOf(list).model());
        waitUntil([rows] { return rows->isComplete(); });
        inMemory.takeShape(list, gridOf(list));
        inMemory.show();
    }
    ~FullList() { closeWindow(listName); }
    Q_DISABLE_COPY_MOVE(FullList)

    QWidget &list;
    MemoryModel rowsInMemory;
    MemoryList inMemory;
};

Sample jumping(Station &station)
{
    FullList full(station);
    return least(5, [&] { return Sample{msOfJump(gridOf(full.list)), msOfJump(full.inMemory.grid())}; });
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
            while (static_cast<store::ResultModel *>(m_grid.model())->isReading()) {
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

Sample searching(Station &station, int turns)
{
    const Connection plain = openPlain(station.desk.paths().CustomerFile);
    Search search(openList(station));
    const Sample slowest = worst(patterns(), [&](const QString &word) {
        return least(turns, [&] {
            return Sample{search.msOfAllRows(word),
                          msOf([&] { readThrough(plain.get(), plainSearch(u"rowid"_s, word)); })};
        });
    });
    closeWindow(listName);
    return slowest;
}

/// The floor reads what then stands in the list: as many keys, and a screen full of rows, painted.
Sample findingFirstRows(Station &station, int turns)
{
    const Connection plain = openPlain(station.desk.paths().CustomerFile);
    FullList full(station);
    Search search(full.list);
    const auto msOfFloor = [&](const QString &word) {
        const QString limit = u" limit %1"_s.arg(std::max(search.rows(), 1));
        return msOf([&] {
            readThrough(plain.get(), plainSearch(u"rowid"_s, word) + limit);
            readThrough(plain.get(), u"select * from customer limit 30"_s);
            full.inMemory.grid().grab();
        });
    };
    return worst(patterns(), [&](const QString &word) {
        return least(turns, [&] {
            const double ms = search.msOfFirstRows(word);
            return Sample{ms, msOfFloor(word)};
        });
    });
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
        return Sample{ms([&] {
                          station.program.windows().Show_Editor({core::RowKey::Table::Customer, sn});
                      }),
                      ms([&] {
                          readThrough(openPlain(file).get(), u"select * from customer where SN=%1"_s.arg(sn));
                          station.program.windows().addCustomer({}, {}, {});
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

/// A new number of a customer, typed into his editor and saved, the list standing open.
double msOfSave(Station &station, int sn, const QString &number)
{
    station.program.windows().Show_Editor({core::RowKey::Table::Customer, sn});
    paint(shownWindow(editorName));
    QWidget &editor = shownWindow(editorName);
    control<QLineEdit>(editor, "txtCompanyCall").setText(number);
    auto &message = control<QLabel>(editor, "lblMessage");
    message.clear();
    QCoreApplication::processEvents();
    const double ms = msOf([&] { control<QPushButton>(editor, "Command2").click(); });
    if (message.text().isEmpty()) {
        throw std::runtime_error("nothing was saved");
    }
    QCoreApplication::processEvents();
    closeWindow(editorName);
    return ms;
}

/// One save with all that follows, and as many bare transactions as it wrote.
Sample oneSave(Station &station, std::mt19937 &random)
{
    const QString file = station.desk.paths().CustomerFile;
    const int sn = anyCustomer(station, random);
    const quint32 before = transactionsOf(file);
    const double ours = msOfSave(station, sn, QString::number(random()));
    const quint32 written = transactionsOf(file) - before;
    const Connection plain = openPlain(file);
    const double bare = msOf([&] {
        for (quint32 i = 0; i < written; ++i) {
            readThrough(plain.get(),
                        u"update customer set WorkPhones='%1' where SN=%2"_s.arg(random()).arg(sn));
        }
    });
    return {ours, bare};
}

Sample saving(Station &station)
{
    constexpr int saves = 25;
    std::mt19937 random(11);
    openList(station);
    const Sample save = median(saves, [&] { return oneSave(station, random); });
    closeWindow(listName);
    return save;
}

/// How long the event loop lets an event wait at the longest while the operator opens the list, searches and
/// saves.
Sample waiting(Station &station)
{
    std::mt19937 random(13);
    return median(3, [&] {
        const Waits waits;
        Search(openList(station)).msOfAllRows(u"Handels贸易"_s);
        QCoreApplication::processEvents();
        msOfSave(station, anyCustomer(station, random), QString::number(random()));
        QCoreApplication::processEvents();
        closeWindow(listName);
        return waits.longestMs();
    });
}

/// The longest wait while another desk's save is followed: until a call from the number that it gave a
/// customer shows his name.
Sample following(Station &station)
{
    std::mt19937 random(std::random_device{}()); // the desk knows the numbers of earlier runs
    const Connection other = openPlain(station.desk.paths().CustomerFile);
    auto &lastCaller = control<QPlainTextEdit>(station.program.mainWindow(), "txtLastCallerID");
    return median(3, [&] {
        const QString customer = u" where SN=%1"_s.arg(anyCustomer(station, random));
        const QString number = QString::number(random());
        QString name;
        forEachRow(other.get(), u"select CustomerName from customer"_s + customer,
                   [&](sqlite3_stmt *row) { name = textOf(row, 0); });
        QTimer calling;
        QObject::connect(&calling, &QTimer::timeout, &calling, [&] { station.program.call(number); });
        calling.start(100);
        const Waits waits;
        readThrough(other.get(), u"update customer set WorkPhones='%1'"_s.arg(number) + customer);
        waitUntil([&] { return lastCaller.toPlainText().contains(name); });
        return waits.longestMs();
    });
}

} // namespace

Rows customerRows(Stations &stations, int customers)
{
    const bool largest = customers == largestDesk;
    const int turns = largest ? 1 : 5;
    const auto row = [&stations, customers](const char *name, Reach reach,
                                            const std::function<Sample(Station &)> &measure) {
        return Row{sized(name, customers), reach, [=, &stations] { return measure(stations.of(customers)); }};
    };
    return {
        row("opening the customer list until painted, ms", {.times = 3}, opening),
        row("memory of the open list, MB, to that of the file", {.times = 0.2}, memoryOfList),
        row("jump to any place of the sorted list, ms", {.times = 3}, jumping),
        row("all rows of a search, the worst of 40, ms", {.times = largest ? 1.3 : 1.5},
            [=](Station &station) { return searching(station, turns); }),
        row("first rows of a search, the worst of 40, ms", {.times = 3},
            [=](Station &station) { return findingFirstRows(station, turns); }),
        row("searches that find other rows than a reference", {.times = 0}, wrongSearches),
        row("opening the editor on a customer, ms", {.times = 1.5}, loading),
        row("saving a customer with all that follows, ms", {.times = 4}, saving),
        row("longest turn of the event loop in re-reading after another desk's save, ms", {.more = 50},
            following),
    };
}

Rows growthRows(Stations &stations)
{
    const auto row = [&stations](const char *name, const std::function<double(Station &)> &ms) {
        return Row{name, {.times = 1.5}, [=, &stations] {
                       return Sample{ms(stations.of(largestDesk)), ms(stations.of(smallDesk))};
                   }};
    };
    const auto opened = [](Station &station) {
        return least(5, [&] { return Sample{msOfOpening(station), 0}; }).figure;
    };
    const auto saved = [](Station &station) { return saving(station).figure; };
    return {
        row("opening the customer list, 1000000 to 10000 customers, ms", opened),
        row("saving a customer, 1000000 to 10000 customers, ms", saved),
        {sized("longest turn of the event loop in list, search and save, ms", largestDesk),
         {.more = 50},
         [&stations] { return waiting(stations.of(largestDesk)); }},
    };
}

} // namespace bench
