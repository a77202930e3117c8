#include "DeskFiles.h"
#include "RecordWriter.h"
#include "app/Program.h"
#include "store/Database.h"
#include "support/Fakes.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QUdpSocket>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

constexpr int vipSn = 1;     // of the sample desk: pop-up flag set
constexpr int silentSn = 16; // pop-up flag off
const QString vipNumber = QStringLiteral("6175550101");
const QString silentNumber = QStringLiteral("2145550129");

sim::CallFields call(const QString &number, const QString &name, int sn)
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

} // namespace

class tst_Program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFirstStartLeavesSettingsAndLogAsGiven();
    void aVipPopsUpWithRowBarAndTwoLogLines();
    void aCustomerWhosePopUpFlagIsOffStaysQuiet();
    void everyCallPopsUpWhenSetSo();
    void anUnknownCallerIsListedWhenSetSo();
    void theSenderIsRememberedOnce();
    void aHiddenWindowComesUpForACall();
    void callsWaitWhileAMessageBoxIsOpen();
    void exitAsksAndCancelGoesOn();
    void shutDownAllEndsWithTheLastLogLine();
    void aShortMessageIsFiledAndShown();
    void anAreaDatabaseNamesThePlace();
    void aDeskWithoutFilesStartsAndSaysSo();
    void aPortInUseIsToldAndTheProgramLives();
    void aSecondInstanceEndsAtOnceAndCallsTheFirst();
    void hostileDatagramsLeaveTheProgramAlive();
};

void tst_Program::aFirstStartLeavesSettingsAndLogAsGiven()
{
    Desk desk;
    QVERIFY(desk.start());
    const QByteArray settings = desk.file(u"Crm.cfg"_s);
    QCOMPARE(settings.size(), 334);
    QCOMPARE(settings.first(100), QByteArray(100, '\0'));
    QCOMPARE(settings.mid(212, 60),
             QByteArray("Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID").leftJustified(60));
    QCOMPARE(settings.mid(272, 40), QByteArray("500,1800,2500,2700,500,1500,1500").leftJustified(40));
    QCOMPARE(settings.mid(312, 20), QByteArray(",1,1,1,1,1,").leftJustified(20));
    for (const char *line :
         {"IP State 0", "remote port 1971", "RemoteIp 0.0.0.0", "local IP ", "loca port 1972"}) {
        QVERIFY2(desk.log().contains(QByteArray(">  ") + line), line);
    }
    QVERIFY(desk.program->mainWindow().isVisible());
    QVERIFY(!desk.log().contains(">  !"));
}

void tst_Program::aVipPopsUpWithRowBarAndTwoLogLines()
{
    Desk desk;
    QVERIFY(desk.start());
    sim::CallFields fields = call(vipNumber, u"Harbor Lantern Hotel"_s, vipSn);
    fields.tailTime = u"2026-11-20 10:42"_s;
    desk.send(fields);
    QTRY_VERIFY(Desk::card() != nullptr);
    QCOMPARE(Desk::card()->findChild<QLabel *>(u"lblCallerNumber"_s)->text(), vipNumber);
    QCOMPARE(desk.calls().cell(0, u"CallerID"_s), vipNumber);
    QCOMPARE(desk.calls().cell(0, u"ID"_s), u"CUSTOMER1"_s);
    QTRY_VERIFY(desk.lastCaller().startsWith(u"   6175550101     Harbor Lantern Hotel     "_s));
    QVERIFY(desk.lastCaller().contains(u"last call time:2026-11-20 10:42 ext:"_s));
    QCOMPARE(desk.log().count("<CRMV1"), 2);
}

void tst_Program::aCustomerWhosePopUpFlagIsOffStaysQuiet()
{
    Desk desk;
    QVERIFY(desk.start());
    desk.send(call(silentNumber, u"Sunbelt Office Services"_s, silentSn));
    QTRY_COMPARE(desk.log().count("<CRMV1"), 2);
    QTRY_VERIFY(desk.lastCaller().contains(silentNumber)); // the bar names every caller
    QCOMPARE(desk.calls().rowCount(), 0);
    QCOMPARE(Desk::card(), nullptr);
}

void tst_Program::everyCallPopsUpWhenSetSo()
{
    Desk desk;
    QVERIFY(QDir(desk.folder.path()).mkdir(u"data"_s));
    core::SettingsRecord record;
    record.PopupAllLines = 1;
    QFile settings(desk.folder.filePath(u"data/Crm.cfg"_s));
    QVERIFY(settings.open(QIODevice::WriteOnly) && settings.write(record.toBytes()) == 334);
    settings.close();
    QVERIFY(desk.start());
    desk.send(call(silentNumber, u"Sunbelt Office Services"_s, silentSn));
    QTRY_VERIFY(Desk::card() != nullptr);
    QCOMPARE(desk.calls().rowCount(), 1);
}

void tst_Program::anUnknownCallerIsListedWhenSetSo()
{
    Desk desk;
    QVERIFY(QDir(desk.folder.path()).mkdir(u"data"_s));
    core::SettingsRecord record;
    record.ListUnpoppedCalls = 1;
    QFile settings(desk.folder.filePath(u"data/Crm.cfg"_s));
    QVERIFY(settings.open(QIODevice::WriteOnly) && settings.write(record.toBytes()) == 334);
    settings.close();
    QVERIFY(desk.start());
    sim::CallFields fields = call(u"2125550188"_s, QString(), 0);
    fields.line = u"总机（前台）"_s;
    desk.send(fields);
    QTRY_COMPARE(desk.calls().rowCount(), 1);
    QCOMPARE(desk.calls().cell(0, u"LineNo"_s), u"总机（前台）"_s);
    QCOMPARE(desk.calls().cell(0, u"CallerID"_s), u"2125550188"_s);
    QCOMPARE(Desk::card(), nullptr);
}

void tst_Program::theSenderIsRememberedOnce()
{
    Desk desk;
    QVERIFY(desk.start());
    desk.send("hello");
    QTRY_VERIFY(desk.log().contains(">  hello"));
    const QByteArray settings = desk.file(u"Crm.cfg"_s);
    QCOMPARE(settings.mid(100, 50), QByteArray("127.0.0.1").leftJustified(50));
    QCOMPARE(qFromLittleEndian<qint32>(settings.constData() + 150), qint32(desk.unit.localPort()));
    QVERIFY(QFile::remove(desk.folder.filePath(u"data/Crm.cfg"_s)));
    desk.send("again");
    QTRY_VERIFY(desk.log().contains(">  again"));
    QVERIFY(!QFile::exists(desk.folder.filePath(u"data/Crm.cfg"_s)));
}

void tst_Program::aHiddenWindowComesUpForACall()
{
    Desk desk;
    QVERIFY(desk.start());
    desk.program->mainWindow().hide();
    desk.send(call(u"2125550188"_s, QString(), 0));
    QTRY_COMPARE(desk.log().count("<CRMV1"), 2);
    QVERIFY(!desk.program->mainWindow().isVisible());
    desk.send(call(vipNumber, u"Harbor Lantern Hotel"_s, vipSn));
    QTRY_VERIFY(desk.program->mainWindow().isVisible());
}

void tst_Program::callsWaitWhileAMessageBoxIsOpen()
{
    Desk desk;
    QVERIFY(desk.start());
    desk.prompts.expect(false, [&] {
        for (int number = 1; number <= 20; ++number) {
            desk.send(call(vipNumber, u"Call %1"_s.arg(number), vipSn));
        }
        for (int turn = 0; turn < 10;
             ++turn) { // an open box turns the event loop, and nothing may come through
            QCoreApplication::processEvents();
        }
        QCOMPARE(desk.log().count("<CRMV1"), 0);
    });
    desk.program->mainWindow().findChild<QAction *>(u"Command2"_s)->trigger();
    QTRY_COMPARE(desk.calls().rowCount(), 20);
    QCOMPARE(desk.calls().cell(19, u"SimpleDes"_s), u"Call 1"_s);
    QCOMPARE(desk.calls().cell(0, u"SimpleDes"_s), u"Call 20"_s);
}

void tst_Program::exitAsksAndCancelGoesOn()
{
    Desk desk;
    QVERIFY(desk.start());
    auto *exit = desk.program->mainWindow().findChild<QAction *>(u"Command2"_s);
    desk.prompts.expect(false);
    exit->trigger();
    QVERIFY(!desk.ended);
    desk.prompts.expect(true);
    exit->trigger();
    QVERIFY(desk.ended);
    QCOMPARE(desk.prompts.asked.size(), 2);
}

void tst_Program::shutDownAllEndsWithTheLastLogLine()
{
    Desk desk;
    QVERIFY(desk.start());
    desk.send("shutdownall");
    desk.send(sim::commandRecord(u"SHUTDOWNALL", u"", sim::CodePageChoice()));
    desk.send("too late");
    QTRY_VERIFY(desk.ended);
    QCoreApplication::processEvents();
    desk.program.reset();
    QVERIFY(desk.log().trimmed().endsWith("The program has ended"));
    QVERIFY(!desk.log().contains("too late"));
}

void tst_Program::aShortMessageIsFiledAndShown()
{
    Desk desk;
    QVERIFY(desk.start());
    desk.send(sim::messageRecord(u"ALL", u"Lunch is here", sim::CodePageChoice()));
    QTRY_VERIFY(desk.file(u"SMS/SMS.txt"_s) == "<2026-11-21 09:30:15>  \r\nLunch is here\r\n\r\n");
    QCOMPARE(desk.file(u"SMS/SMS2026-11.txt"_s), desk.file(u"SMS/SMS.txt"_s));
    desk.program->mainWindow().findChild<QTabWidget *>(u"SSTab1"_s)->setCurrentIndex(2);
    const auto *box = desk.program->mainWindow().findChild<QPlainTextEdit *>(u"txtSMS"_s);
    QTRY_VERIFY(box->toPlainText().contains(u"Lunch is here"_s));
    for (const int size : {200, 203}) { // too short to be a message, and to hold its delimiters
        desk.send(QByteArray("SENDSMALLMESSAGE").leftJustified(size, ' '));
    }
    QTRY_VERIFY(desk.log().contains("!ShowSmallMessage "));
    QCOMPARE(desk.file(u"SMS/SMS.txt"_s).count('<'), 1);
}

void tst_Program::anAreaDatabaseNamesThePlace()
{
    Desk desk;
    store::createDatabase(desk.folder.filePath(u"start/AreaCode.mdb"_s),
                          u"create table placename (AreaCode text(20), Area text(50), PlaceName text(50));"_s,
                          [](store::Database &areas) {
                              areas.Execute(u"insert into placename values('617','North','Harbour')"_s);
                          });
    QVERIFY(desk.start());
    desk.send(call(vipNumber, u"Hotel"_s, vipSn));
    QTRY_VERIFY(desk.lastCaller().contains(u"     North(Harbour)\n"_s));
}

void tst_Program::aDeskWithoutFilesStartsAndSaysSo()
{
    Desk desk(false);
    desk.prompts.expect();
    QVERIFY(desk.start());
    QVERIFY(desk.prompts.asked.first().startsWith(u"No Lang.mdb file found! path = "_s));
    QVERIFY(desk.log().contains(">  !FixCustomerData "));
    desk.send(call(vipNumber, u"Hotel"_s, vipSn));
    QTRY_VERIFY(desk.lastCaller().contains(vipNumber));
    QVERIFY(desk.program->mainWindow().isVisible());
}

void tst_Program::aPortInUseIsToldAndTheProgramLives()
{
    Desk desk;
    QUdpSocket other;
    QVERIFY(other.bind(QHostAddress::AnyIPv4, desk.port));
    desk.prompts.expect();
    QVERIFY(desk.start());
    QCOMPARE(desk.prompts.asked.size(), 1);
    QVERIFY(desk.log().contains(">  !iniUDP 10048 "));
    QVERIFY(desk.program->mainWindow().isVisible());
}

void tst_Program::aSecondInstanceEndsAtOnceAndCallsTheFirst()
{
    Desk desk;
    QVERIFY(desk.start());
    desk.program->mainWindow().hide();
    const QByteArray log = desk.log();
    support::FakePrompts prompts;
    prompts.expect();
    app::Program second({prompts, desk.clock, desk.folder.filePath(u"start"_s),
                         desk.folder.filePath(u"data"_s), desk.folder.path(), QString(), 0x0409, desk.port,
                         [] {}});
    QVERIFY(!second.subMain());
    QCOMPARE(prompts.asked, QStringList{u"App is runing!"_s});
    QCOMPARE(desk.log(), log);
    QTRY_VERIFY(desk.program->mainWindow().isVisible());
}

void tst_Program::hostileDatagramsLeaveTheProgramAlive()
{
    Desk desk;
    QVERIFY(desk.start());
    const QByteArray record =
        sim::callRecord(call(vipNumber, u"中文名称 <img src=x>"_s, vipSn), sim::CodePageChoice());
    for (qsizetype length = 0; length <= record.size(); ++length) {
        desk.send(record.first(length));
    }
    for (const char filler : {'\0', '\xff', 'x', '\n'}) {
        desk.send(QByteArray(65507, filler));
    }
    desk.send("<CRMV1\x1b[2J" + QByteArray(200, '\xe2'));
    desk.send("SENDSMALLMESSAGE" + QByteArray(60000, '\x81'));
    desk.send("the end");
    QTRY_VERIFY_WITH_TIMEOUT(desk.log().contains("the end"), 20000);
    QVERIFY(desk.program->mainWindow().isVisible());
}

QTEST_MAIN(tst_Program)
#include "tst_Program.moc"
