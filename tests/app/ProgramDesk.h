#pragma once

#include "DeskFiles.h"
#include "RecordWriter.h"
#include "app/Program.h"
#include "support/Fakes.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QUdpSocket>

#include <memory>

using namespace Qt::StringLiterals;

constexpr int vipSn = 1;     // of the sample desk: pop-up flag set
constexpr int silentSn = 16; // pop-up flag off
inline const QString vipNumber = QStringLiteral("6175550101");
inline const QString silentNumber = QStringLiteral("2145550129");

inline sim::CallFields call(const QString &number, const QString &name, int sn)
{
    sim::CallFields fields;
    fields.time = u"2026-11-21 09:30:15"_s;
    fields.channel = u"007"_s;
    fields.line = u"5550100"_s;
    fields.number = number;
    fields.name = name;
    fields.match = QString::number(sn);
    fields.ip = u"10.1.2.3"_s;
    fields.vip = u"Y"_s;
    return fields;
}

/// The whole program in a sample desk of its own, and a caller-ID unit on the loopback.
class Desk
{
public:
    explicit Desk(bool withFiles = true)
    {
        QDir(folder.path()).mkdir(u"start"_s);
        if (withFiles) {
            const mkdesk::DeskSources sources;
            for (const mkdesk::DeskFile &file : mkdesk::deskFiles(sources, true)) {
                mkdesk::makeDeskFile(file, folder.filePath(u"start"_s));
            }
        }
        QUdpSocket probe;
        probe.bind(QHostAddress::LocalHost);
        port = probe.localPort();
        probe.close();
        unit.bind(QHostAddress::LocalHost);
    }
    void writeFile(const QString &name, const QByteArray &bytes) const
    {
        QFile write(folder.filePath(name));
        QVERIFY2(QFileInfo(write).dir().mkpath(u"."_s) && write.open(QIODevice::WriteOnly) &&
                     write.write(bytes) == bytes.size(),
                 qPrintable(name));
    }
    bool start()
    {
        program = std::make_unique<app::Program>(
            app::Outside{prompts, clock, folder.filePath(u"start"_s), folder.filePath(u"data"_s),
                         folder.path(), QString(), 0x0409, port, [this] { ended = true; }});
        return program->subMain();
    }
    void send(const sim::CallFields &fields) { send(sim::callRecord(fields, sim::CodePageChoice())); }
    void send(const QByteArray &bytes) { unit.writeDatagram(bytes, QHostAddress::LocalHost, port); }

    QByteArray file(const QString &name) const
    {
        QFile read(folder.filePath(u"data/"_s + name));
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
    }
    QByteArray log() const { return file(u"Runlog.txt"_s); }
    mainwindow::CallGridModel &calls() { return program->mainWindow().calls(); }
    QString lastCaller()
    {
        return program->mainWindow().findChild<QPlainTextEdit *>(u"txtLastCallerID"_s)->toPlainText();
    }
    static lookup::frmPopUp *card()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (auto *form = qobject_cast<lookup::frmPopUp *>(window); form != nullptr && form->isVisible()) {
                return form;
            }
        }
        return nullptr;
    }

    QTemporaryDir folder;
    support::FakePrompts prompts;
    support::FakeClock clock;
    QUdpSocket unit;
    quint16 port = 0;
    bool ended = false;
    std::unique_ptr<app::Program> program;
};
