#pragma once

#include "reception/Endpoint.h"
#include "support/Calls.h"
#include "support/Rows.h"
#include "support/TestDesk.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QUdpSocket>

/// The built program as a process of its own, in a copy of the sample desk, or on the databases of another
/// one. It always takes UDP port 1972, so only the first of several hears calls.
class RunningProgram : support::TestDesk
{
public:
    explicit RunningProgram(const RunningProgram *other = nullptr)
    {
        const QString desk = other != nullptr ? other->paths.StartFolder : paths.StartFolder;
        paths = core::pathsBelow(desk, folder.filePath(u"CallDesk"_s));
        const QDir sample(QStringLiteral(SAMPLE_DESK));
        for (const QString &name : sample.entryList(QDir::Files)) {
            QFile::copy(sample.filePath(name), paths.StartFolder + u'/' + name);
        }
    }
    ~RunningProgram() { kill(); }
    Q_DISABLE_COPY_MOVE(RunningProgram)

    /// Starts and waits until calls can be received, or until they are found to go to another program; false
    /// when that does not come about.
    bool start(const QByteArray &logged = ">  loca port ")
    {
        QFile::remove(paths.RunLogFile);
        startProcess(m_process);
        return QTest::qWaitFor([&] { return log().contains(logged); }, patienceMs) && isRunning();
    }
    /// Only starts, in the same folders: also a second instance beside the first.
    void startProcess(QProcess &process) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_s, folder.path());
        environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(paths.StartFolder);
        process.start(QStringLiteral(PROGRAM), QStringList());
    }
    /// Sends SHUTDOWNALL and waits for the process; its exit status, -1 for one that did not end by itself.
    int shutDown()
    {
        send(sim::commandRecord(u"SHUTDOWNALL", {}, sim::CodePageChoice()));
        send("too late");
        const bool ended = QTest::qWaitFor([this] { return !isRunning(); }, patienceMs);
        return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    /// Starts and, while calls from ever new units arrive, ends the process as no program can hinder. False
    /// when it ended earlier.
    bool killAfter(int milliseconds)
    {
        constexpr int units = 250;
        QFile::remove(paths.RunLogFile);
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
    void sendCall(int unit = 1) { send(support::call(u"6175550101"_s, u"Harbor Lantern Hotel"_s), unit); }
    /// Columns of that customer's row, or why it cannot be read while a program is writing.
    QString firstCustomer(const QString &columns) const
    {
        try {
            return support::rowsOf(
                paths.CustomerFile,
                u"select %1 from customer where CustomerName like 'Harbor*'"_s.arg(columns));
        } catch (const core::Error &error) {
            return error.description();
        }
    }

    QByteArray log() const { return fileBytes(paths.RunLogFile); }
    QByteArray settings() const { return fileBytes(paths.SettingsFile); }
    /// Every file of desk and data folder with its contents.
    QMap<QString, QByteArray> allFiles() const { return support::filesBelow(folder.path()); }

private:
    static constexpr int patienceMs = 60000;

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    QProcess m_process;
    int m_lastUnit = 1;
};
