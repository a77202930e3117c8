// The least that a program with a window, a database and a socket costs: start and memory of the real one are
// measured against it. Usage: bench_minimal DATABASE PORT; it says "painted" and "ready", and stays until it
// is killed.

#include "PaintedApplication.h"

#include <QMainWindow>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUdpSocket>

int main(int argc, char *argv[])
{
    const bench::PaintedApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(arguments.at(1));
    QUdpSocket socket;
    if (!database.open() || !QSqlQuery(database).exec(QStringLiteral("select count(*) from sqlite_master")) ||
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
