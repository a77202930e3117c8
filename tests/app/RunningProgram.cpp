#include "RunningProgram.h"

#include "RecordWriter.h"
#include "reception/Endpoint.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMs = 20000;
constexpr quint16 port = reception::Endpoint::standardPort;

} // namespace

RunningProgram::RunningProgram()
{
    const QDir root(m_folder.path());
    for (const QString &folder : {u"desk"_s, u"share"_s, u"runtime"_s}) {
        root.mkdir(folder);
    }
    QFile::setPermissions(root.filePath(u"runtime"_s),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QDir sample(QStringLiteral(SAMPLE_DESK));
    for (const QString &name : sample.entryList(QDir::Files)) {
        QFile::copy(sample.filePath(name), root.filePath(u"desk/"_s + name));
    }
}

RunningProgram::~RunningProgram()
{
    kill();
}

void RunningProgram::startProcess(QProcess &process) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_DATA_HOME"_s, m_folder.filePath(u"share"_s));
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder.filePath(u"runtime"_s));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder.filePath(u"desk"_s));
    process.start(QStringLiteral(PROGRAM), QStringList());
}

bool RunningProgram::start()
{
    removeLog();
    startProcess(m_process);
    return QTest::qWaitFor([this] { return log().contains(">  loca port "); }, patienceMs) && isRunning();
}

int RunningProgram::shutDown()
{
    send(sim::commandRecord(u"SHUTDOWNALL", u"", sim::CodePageChoice()));
    const bool ended = QTest::qWaitFor([this] { return !isRunning(); }, patienceMs);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

bool RunningProgram::killAfter(int milliseconds)
{
    constexpr int units = 250;
    removeLog();
    startProcess(m_process);
    QDeadlineTimer moment(milliseconds);
    do {
        m_lastUnit = m_lastUnit % units + 1;
        sendCall(m_lastUnit);
    } while (!m_process.waitForFinished(1) && !moment.hasExpired());
    const bool lived = isRunning();
    kill();
    return lived;
}

void RunningProgram::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

void RunningProgram::send(const QByteArray &datagram, int unit)
{
    QUdpSocket *&socket = m_units[unit];
    if (socket == nullptr) {
        socket = new QUdpSocket(&m_owner);
        socket->bind(QHostAddress(u"127.0.0.%1"_s.arg(unit)));
    }
    socket->writeDatagram(datagram, QHostAddress::LocalHost, port);
}

void RunningProgram::sendCall(int unit)
{
    sim::CallFields call;
    call.time = u"2026-11-21 09:30:15"_s;
    call.number = u"6175550101"_s;
    call.name = u"Harbor Lantern Hotel"_s;
    call.match = u"1"_s;
    call.vip = u"Y"_s;
    send(sim::callRecord(call, sim::CodePageChoice()), unit);
}

QByteArray RunningProgram::file(const QString &name) const
{
    QFile file(dataFolder() + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void RunningProgram::removeLog() const
{
    QFile::remove(dataFolder() + u"Runlog.txt"_s);
}

QMap<QString, QByteArray> RunningProgram::allFiles() const
{
    QMap<QString, QByteArray> files;
    for (const QString &folder : {u"desk"_s, u"share"_s}) {
        QDirIterator found(m_folder.filePath(folder), QDir::Files, QDirIterator::Subdirectories);
        while (found.hasNext()) {
            QFile file(found.next());
            files.insert(file.fileName(), file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
        }
    }
    return files;
}

QString RunningProgram::portTrouble()
{
    QUdpSocket probe;
    return probe.bind(QHostAddress::AnyIPv4, port, QAbstractSocket::DontShareAddress)
               ? QString()
               : u"another program holds UDP port 1972: end it, then run this test again"_s;
}
