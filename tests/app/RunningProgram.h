#pragma once

#include "RecordWriter.h"
#include "reception/Endpoint.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUdpSocket>

/// The built program as a process of its own, in a copy of the sample desk. It always listens on UDP port
/// 1972, so no two of them run at a time.
class RunningProgram
{
public:
    RunningProgram()
    {
        const QDir root(m_folder.path());
        for (const char *folder : {"desk", "share", "runtime"}) {
            root.mkdir(QLatin1String(folder));
        }
        QFile::setPermissions(m_runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QDir sample(QStringLiteral(SAMPLE_DESK));
        for (const QString &name : sample.entryList(QDir::Files)) {
            QFile::copy(sample.filePath(name), m_desk + u'/' + name);
        }
    }
    ~RunningProgram() { kill(); }
    Q_DISABLE_COPY_MOVE(RunningProgram)

    /// Starts and waits until calls can be received; false when that does not come about.
    bool start()
    {
        QFile::remove(m_data + QStringLiteral("Runlog.txt"));
        startProcess(m_process);
        return QTest::qWaitFor([this] { return log().contains(">  loca port "); }, patienceMs) && isRunning();
    }
    /// Only starts, in the same folders: also a second instance beside the first.
    void startProcess(QProcess &process) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_share);
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_desk);
        process.start(QStringLiteral(PROGRAM), QStringList());
    }
    /// Sends SHUTDOWNALL and waits for the process; its exit status, -1 for one that did not end by itself.
    int shutDown()
    {
        send(sim::commandRecord(QStringLiteral("SHUTDOWNALL"), QString(), sim::CodePageChoice()));
        const bool ended = QTest::qWaitFor([this] { return !isRunning(); }, patienceMs);
        return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    /// Starts and, while calls from ever new units arrive, ends the process as no program can hinder. False
    /// when it ended earlier.
    bool killAfter(int milliseconds)
    {
        constexpr int units = 250;
        QFile::remove(m_data + QStringLiteral("Runlog.txt"));
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
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }

    /// From 127.0.0.`unit`: each is another sender.
    void send(const QByteArray &datagram, int unit = 1)
    {
        QUdpSocket socket;
        socket.bind(QHostAddress(QStringLiteral("127.0.0.%1").arg(unit)));
        socket.writeDatagram(datagram, QHostAddress::LocalHost, reception::Endpoint::standardPort);
    }
    /// A call of the sample desk's first customer, who pops up.
    void sendCall(int unit = 1)
    {
        sim::CallFields call;
        call.number = QStringLiteral("6175550101");
        call.name = QStringLiteral("Harbor Lantern Hotel");
        call.match = QStringLiteral("1");
        call.vip = QStringLiteral("Y");
        send(sim::callRecord(call, sim::CodePageChoice()), unit);
    }

    QByteArray log() const { return bytesOf(m_data + QStringLiteral("Runlog.txt")); }
    QByteArray settings() const { return bytesOf(m_data + QStringLiteral("Crm.cfg")); }
    /// Every file of desk and data folder with its contents.
    QMap<QString, QByteArray> allFiles() const
    {
        QMap<QString, QByteArray> files;
        for (const QString &folder : {m_desk, m_share}) {
            for (QDirIterator found(folder, QDir::Files, QDirIterator::Subdirectories); found.hasNext();) {
                const QString path = found.next();
                files.insert(path, bytesOf(path));
            }
        }
        return files;
    }

private:
    static constexpr int patienceMs = 20000;

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    static QByteArray bytesOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
    const QString m_desk = m_folder.filePath(QStringLiteral("desk"));
    const QString m_share = m_folder.filePath(QStringLiteral("share"));
    const QString m_runtime = m_folder.filePath(QStringLiteral("runtime"));
    const QString m_data = m_share + QStringLiteral("/CallDesk/");
    QProcess m_process;
    int m_lastUnit = 1;
};
