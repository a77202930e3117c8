// The least that a program with a window, a database and a socket costs: start and memory of the real one are
// measured against it. Usage: bench_minimal DATABASE PORT; it says "painted" and "ready", and stays until it
// is killed.

#include "PaintedApplication.h"

#include <QMainWindow>
#include <QUdpSocket>

#include <sqlite3.h>

int main(int argc, char *argv[])
{
    const bench::PaintedApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    sqlite3 *database = nullptr; // stays open until the program is killed
    QUdpSocket socket;
    if (sqlite3_open(arguments.at(1).toUtf8().constData(), &database) != SQLITE_OK ||
        sqlite3_exec(database, "select count(*) from sqlite_schema", nullptr, nullptr, nullptr) !=
            SQLITE_OK ||
        !socket.bind(QHostAddress::AnyIPv4, arguments.at(2).toUShort())) {
        return 1;
    }
    QMainWindow window;
    window.resize(960, 600);
    window.show();
    QMetaObject::invokeMethod(
        &window, [] { bench::say("ready"); }, Qt::QueuedConnection);
    return QApplication::exec();
}
