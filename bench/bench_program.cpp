// The whole program, from the datagram to the painted window, each time as a process of its own.
// bench_program [WORD] measures only the rows that have the word in their name.

#include "ProgramRows.h"
#include "Receiving.h"
#include "Report.h"
#include "RunProgram.h"
#include "Sending.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <exception>

using namespace Qt::StringLiterals;

namespace {

int send(const QStringList &arguments)
{
    const double seconds =
        bench::sendCalls(arguments.at(0).toUShort(), arguments.at(1).toInt(), arguments.at(2).toInt());
    std::printf("sent %.3f\n", seconds);
    return EXIT_SUCCESS;
}

/// The parts that the rows start as processes of their own; anything else is a word.
int run(const QStringList &arguments)
{
    const QString role = arguments.value(1);
    const QStringList rest = arguments.mid(2);
    if (role == "--send"_L1) {
        return send(rest);
    }
    if (role == "--floor"_L1) {
        bench::receivePlainly(rest.at(2).toUShort(), rest.at(1) + u"/floor.txt"_s);
        return EXIT_SUCCESS;
    }
    if (role == "--program"_L1 || role == "--watched"_L1) {
        return bench::runProgram({rest.at(0), rest.at(1), rest.at(2).toUShort()}, role == "--watched"_L1);
    }
    return bench::measureProgramRows(role.toStdString()) ? EXIT_SUCCESS : EXIT_FAILURE;
}

QStringList argumentList(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

} // namespace

int main(int argc, char *argv[])
{
    try {
        return run(argumentList(argc, argv));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "bench_program: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
