#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QUdpSocket>

/// The built program as a process of its own, in a copy of the sample desk. It always listens on UDP port
/// 1972, so no two of them run at a time.
class RunningProgram
{
public:
    RunningProgram();
    ~RunningProgram();

    /// Starts and waits until calls can be received; false when that does not come about.
    bool start();
    /// Only starts, in the same folders: also a second instance beside the first.
    void startProcess(QProcess &process) const;
    /// Sends SHUTDOWNALL and waits for the process; its exit status, -1 for one that did not end by itself.
    int shutDown();
    /// Starts and, while calls from ever new units arrive, ends the process as no program can hinder. False
    /// when it ended earlier.
    bool killAfter(int milliseconds);
    void kill();
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }

    /// From 127.0.0.`unit`: each is another sender.
    void send(const QByteArray &datagram, int unit = 1);
    /// A call of the sample desk's first customer, who pops up.
    void sendCall(int unit = 1);

    QByteArray log() const { return file(QStringLiteral("Runlog.txt")); }
    QByteArray settings() const { return file(QStringLiteral("Crm.cfg")); }
    /// Of the data folder; empty when missing.
    QByteArray file(const QString &name) const;
    void removeLog() const;
    /// Every file of desk and data folder with its contents.
    QMap<QString, QByteArray> allFiles() const;

    /// Empty when the port can be had, else what to tell.
    static QString portTrouble();

private:
    QString dataFolder() const { return m_folder.filePath(QStringLiteral("share/CallDesk/")); }

    QTemporaryDir m_folder;
    QProcess m_process;
    QMap<int, QUdpSocket *> m_units;
    int m_lastUnit = 1;
    QObject m_owner; // of the sockets
};
