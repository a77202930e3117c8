#pragma once

#include "DeskFiles.h"
#include "app/Program.h"
#include "support/Calls.h"
#include "support/TestForms.h"

#include <QUdpSocket>

inline const QString vipNumber = QStringLiteral("6175550101");    // of the sample desk: pop-up flag set
inline const QString silentNumber = QStringLiteral("2145550129"); // pop-up flag off

using support::call, support::find, support::openForm, support::press, support::type;

/// The whole program, with the headers of its windows, in a sample desk of its own, and a caller-ID unit on
/// the loopback.
struct ProgramDesk : support::TestDesk
{
    explicit ProgramDesk(bool withFiles = true)
    {
        const mkdesk::DeskSources sources;
        for (const mkdesk::DeskFile &file : mkdesk::deskFiles(sources, true)) {
            if (withFiles) {
                mkdesk::makeDeskFile(file, paths.StartFolder);
            }
        }
        QUdpSocket probe;
        probe.bind(QHostAddress::LocalHost);
        port = probe.localPort();
        unit.bind(QHostAddress::LocalHost);
    }
    void setLanguage(const QString &code) const
    {
        core::SettingsRecord record;
        record.LanguageSetting.setText(code);
        writeFile(paths.SettingsFile, record.toBytes());
    }
    bool start()
    {
        program = std::make_unique<app::Program>(
            app::Outside{prompts, shell, printer, clock, paths.StartFolder, paths.DataFolder, folder.path(),
                         QString(), systemLanguageId, port, [this] { ended = true; }});
        return program->subMain();
    }
    void send(const QByteArray &bytes) { unit.writeDatagram(bytes, QHostAddress::LocalHost, port); }
    /// Presses a button of the main window.
    void choose(const char *button) const { window().findChild<QAction *>(QLatin1String(button))->trigger(); }
    qsizetype logged(const QByteArray &text) const { return fileBytes(paths.RunLogFile).count(text); }
    mainwindow::FrmMain &window() const { return program->mainWindow(); }
    QString lastCaller() const
    {
        return window().findChild<QPlainTextEdit *>(u"txtLastCallerID"_s)->toPlainText();
    }

    /// What stands on the card of a caller once that is up.
    static QString card() { return find<lookup::frmPopUp, QPlainTextEdit>("txtAbout")->toPlainText(); }
    QString source() const { return window().findChild<QLabel *>(u"lblSource"_s)->text(); }
    void showsACall()
    {
        send(call(vipNumber, u"Harbor Lantern Hotel"_s));
        QTRY_VERIFY(lastCaller().contains(vipNumber));
        QVERIFY(window().isVisible());
    }

    support::FakePrompts prompts;
    support::FakeShell shell;
    support::FakePrinter printer;
    QUdpSocket unit;
    quint16 port = 0;
    quint16 systemLanguageId = 0x0409; // English
    bool ended = false;
    std::unique_ptr<app::Program> program;
};
