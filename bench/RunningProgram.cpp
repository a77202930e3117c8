#include "RunningProgram.h"

#include "Datagrams.h"
#include "Measure.h"

#include <QApplication>
#include <QFile>
#include <QUdpSocket>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr quint16 english = 0x0409;

QWidget *find(QLatin1StringView name)
{
    const QWidgetList all = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(
        all, [&](const QWidget *window) { return window->isVisible() && window->objectName() == name; });
    return found != all.end() ? *found : nullptr;
}

} // namespace

RunningProgram::RunningProgram(const core::Paths &paths, quint16 port, std::function<void()> ended)
    : m_paths(paths), m_port(port), m_program({.prompts = doors,
                                               .shell = doors,
                                               .printer = doors,
                                               .clock = m_clock,
                                               .startFolder = paths.StartFolder,
                                               .dataFolder = paths.DataFolder,
                                               .runtimeFolder = paths.DataFolder,
                                               .developerFolder = {},
                                               .systemLanguageId = english,
                                               .port = port,
                                               .endProcess = std::move(ended)})
{
    if (!m_program.subMain()) {
        throw std::runtime_error("the program does not start");
    }
}

// A call is logged only once the last piece of the numbers is there.
void RunningProgram::waitUntilReceiving()
{
    call(u"1"_s);
    waitUntil([&] {
        QFile log(m_paths.RunLogFile);
        return log.open(QIODevice::ReadOnly) && log.readAll().contains(idBlock);
    });
}

void RunningProgram::call(const QString &number) const
{
    sendCallFrom(m_port, number);
}

Station::Station(int customers) : desk(customers), program(desk.paths(), freePort())
{
    program.waitUntilReceiving();
}

Station &Stations::of(int customers)
{
    return m_stations.try_emplace(customers, customers).first->second;
}

quint16 freePort()
{
    QUdpSocket socket;
    socket.bind(QHostAddress::AnyIPv4, 0);
    return socket.localPort();
}

QWidget &shownWindow(QLatin1StringView name)
{
    QWidget *window = find(name);
    if (window == nullptr) {
        throw std::runtime_error(std::string(name.data(), size_t(name.size())) + " is not shown");
    }
    return *window;
}

void closeWindow(QLatin1StringView name)
{
    shownWindow(name).close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

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

} // namespace bench
