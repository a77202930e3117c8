#pragma once

#include "Desk.h"
#include "Doors.h"

#include "app/Program.h"
#include "core/QtClock.h"

#include <QWidget>

#include <map>
#include <stdexcept>

namespace bench {

/// The whole program in this process, as main() runs it but for its doors, on a desk.
class RunningProgram
{
public:
    /// `ended` is called when somebody ends the program from outside. Throws std::runtime_error when it does
    /// not start.
    RunningProgram(const core::Paths &paths, quint16 port, std::function<void()> ended = {});

    /// Returns once the numbers of the whole desk are known and calls are shown.
    void waitUntilReceiving();

    /// Sends it a call from a number, whose sender knows nothing else of the caller.
    void call(const QString &number) const;

    QWidget &mainWindow() { return m_program.mainWindow(); }
    core::Navigator &windows() { return m_program.windows(); }
    Doors doors;

private:
    core::Paths m_paths;
    quint16 m_port;
    core::QtClock m_clock;
    app::Program m_program;
};

/// A desk with the program at work in it.
struct Station
{
    explicit Station(int customers);

    Desk desk;
    RunningProgram program;
};

/// The stations that the rows need, by the number of their customers; each is made when a row first asks.
class Stations
{
public:
    Station &of(int customers);

private:
    std::map<int, Station> m_stations;
};

/// A port that nobody listens on.
quint16 freePort();

/// The window of that object name that is shown; throws std::runtime_error where none is.
QWidget &shownWindow(QLatin1StringView name);
/// Closes and deletes it.
void closeWindow(QLatin1StringView name);
void paint(QWidget &window);

/// The customer list, opened and painted.
inline constexpr QLatin1StringView listName("FrmCustomer");
QWidget &openList(Station &station);

template <typename Control>
Control &control(QWidget &window, const char *name)
{
    auto *found = window.findChild<Control *>(QLatin1StringView(name));
    if (found == nullptr) {
        throw std::runtime_error(std::string("no such control: ") + name);
    }
    return *found;
}

} // namespace bench
