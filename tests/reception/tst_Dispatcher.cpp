#include "RecordWriter.h"
#include "reception/Dispatcher.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Records what a datagram caused, in order.
class RecordedEffects : public reception::CallEffects
{
public:
    bool callerPopsUp(const QString &number) override
    {
        causes.append(u"asked for "_s + number);
        return popsUp;
    }
    QString GetArea(const QString &) override { return u"London"_s; }
    void setMainWindowNormal() override { causes.append(u"normal"_s); }
    void showMainWindow() override { causes.append(u"window"_s); }
    void ShowCallerID_tarn(const core::CallRecord &record) override
    {
        causes.append(u"row "_s + record.CallerID);
    }
    void showLastCaller(const QString &text) override { lastCaller = text; }
    void ShowPopup(const core::CallRecord &record) override
    {
        causes.append(u"popup "_s + record.CallerID);
        if (fails) {
            throw core::Error(7, u"out of memory"_s);
        }
    }
    void ShowSmallMessage(const QString &text) override { causes.append(u"message "_s + text.trimmed()); }
    bool byebye(const QString &prompt) override
    {
        causes.append(u"byebye "_s + prompt);
        return true;
    }

    bool popsUp = false;
    bool fails = false;
    QStringList causes;
    QString lastCaller;
};

struct Reception
{
    support::TestDesk desk;
    core::Settings settings{desk.paths, desk.log};
    core::CodePage codePage{936};
    RecordedEffects effects;
    reception::Dispatcher dispatcher{settings, desk.log, desk.values, codePage, effects};

    void receive(const QByteArray &bytes, const QString &sender = u"10.1.2.3"_s, quint16 port = 4711)
    {
        dispatcher.Winsock1_DataArrival({bytes, QHostAddress(sender), port});
    }
};

QByteArray call(const QString &line = u"5550101"_s)
{
    sim::CallFields fields;
    fields.line = line;
    fields.number = u"5550199"_s;
    fields.name = u"Ada"_s;
    fields.tailTime = u"2026-11-20 10:42"_s;
    fields.tailExt = u"201"_s;
    fields.tailTel = u"5550106"_s;
    return sim::callRecord(fields, sim::CodePageChoice(936));
}

} // namespace

/// What each datagram causes, and what stays of it in the run log and the settings.
class tst_Dispatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCallPopsUpByTheSettingsOrTheFilter_data()
    {
        QTest::addColumn<int>("popupAllLines");
        QTest::addColumn<bool>("popsUp");
        QTest::addColumn<int>("listUnpopped");
        QTest::addColumn<QString>("causes");
        const QString whole = u"window,row 5550199,popup 5550199"_s;
        QTest::newRow("all lines") << 1 << false << 0 << whole;
        QTest::newRow("a customer") << 2 << true << 0 << u"asked for 5550199,"_s + whole;
        QTest::newRow("unknown, listed") << 2 << false << -1 << u"asked for 5550199,row 5550199"_s;
        QTest::newRow("unknown") << 0 << false << 0 << u"asked for 5550199"_s;
    }
    void aCallPopsUpByTheSettingsOrTheFilter()
    {
        QFETCH(int, popupAllLines);
        QFETCH(bool, popsUp);
        QFETCH(int, listUnpopped);
        Reception reception;
        reception.settings.record.PopupAllLines = qint16(popupAllLines);
        reception.settings.record.ListUnpoppedCalls = qint16(listUnpopped);
        reception.effects.popsUp = popsUp;
        reception.receive(call());
        QTEST(reception.effects.causes.join(u','), "causes");
        QCOMPARE(reception.effects.lastCaller,
                 u"   5550199     Ada     London\r\nlast call time:2026-11-20 10:42 "
                 "ext:201      tel:5550106        "_s);
        QCOMPARE(reception.desk.values.LastCallerNumber, u"5550199"_s);
        QCOMPARE(reception.desk.logMessages(), QStringList(2, QString::fromLatin1(call())));
    }

    void eachKindCausesItsOwn_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("causes");
        QTest::addColumn<int>("logged");
        QTest::newRow("short record") << QByteArray("<CID") << u"normal"_s << 1;
        QTest::newRow("detail") << QByteArray("<DETAILDES") << u"normal"_s << 1;
        QTest::newRow("message") << QByteArray("SENDSMALLMESSAGE") << u"message SENDSMALLMESSAGE"_s << 1;
        QTest::newRow("shut down") << QByteArray("SHUTDOWNALL").leftJustified(50) << u"byebye No"_s << 1;
        QTest::newRow("lower case") << QByteArray("shutdownall") << QString() << 1;
        QTest::newRow("status") << QByteArray("CHANNELSTATUS") << QString() << 2;
        QTest::newRow("refresh") << QByteArray("REFRESHCUSTOMERLIST") << QString() << 1;
        QTest::newRow("leading blank") << " " + call() << QString() << 1;
        QTest::newRow("empty") << QByteArray() << QString() << 1;
        QTest::newRow("all NUL") << QByteArray(300, '\0') << QString() << 1;
        QTest::newRow("all 0xFF") << QByteArray(300, '\xFF') << QString() << 1;
        QTest::newRow("largest") << QByteArray(65507, '\x81') << QString() << 1;
        QTest::newRow("escapes, line breaks")
            << QByteArray("\x1B[2J\r\n<2026-11-21 09:30:15>  x") << QString() << 1;
        QTest::newRow("markup") << QByteArray("<CRMV1<img src='/etc/passwd'>") << u"asked for "_s << 2;
        QTest::newRow("bidi, invalid UTF-8") << QByteArray("<CRMV1\xE2\x80\xAE\xC3") << u"asked for "_s << 2;
    }
    void eachKindCausesItsOwn()
    {
        QFETCH(QByteArray, bytes);
        Reception reception;
        reception.receive(bytes);
        QTEST(reception.effects.causes.join(u','), "causes");
        QTEST(int(reception.desk.fileBytes(reception.desk.paths.RunLogFile).count('\n')), "logged");
        reception.effects.causes.clear();
        reception.receive(call());
        QCOMPARE(reception.effects.causes, QStringList(u"asked for 5550199"_s));
    }

    void onlyANewSenderIsSaved()
    {
        Reception reception;
        reception.settings.record.LastSenderIp.setText(u"10.1.2.2"_s);
        reception.receive("x", u"10.1.2.2"_s);
        QVERIFY(!QFile::exists(reception.desk.paths.SettingsFile));
        reception.receive("x");
        core::Settings saved(reception.desk.paths, reception.desk.log);
        saved.Get_misc();
        QCOMPARE(saved.record.LastSenderIp.text(), u"10.1.2.3"_s);
        QCOMPARE(saved.record.LastSenderPort, 4711);
        QVERIFY(QFile::remove(reception.desk.paths.SettingsFile));
        reception.receive("x", u"10.1.2.3"_s, 4712);
        QVERIFY(!QFile::exists(reception.desk.paths.SettingsFile));
        reception.receive("x", u"10.1.2.4"_s, 4713);
        reception.receive("x", u"10.1.2.5"_s, 4714); // a change of senders by the datagram is saved with the last
        QTRY_VERIFY(QFile::exists(reception.desk.paths.SettingsFile));
        saved.Get_misc();
        QCOMPARE(saved.record.LastSenderIp.text(), u"10.1.2.5"_s);
        QCOMPARE(saved.record.LastSenderPort, 4714);
    }

    void aFailureCostsOneDatagramOnly()
    {
        Reception reception;
        reception.settings.record.PopupAllLines = 1;
        reception.effects.fails = true;
        reception.receive(call());
        QCOMPARE(reception.desk.logMessages().constLast(), u"winsock1 DataArrival 7 out of memory"_s);
        reception.effects.fails = false;
        reception.receive(call());
        QCOMPARE(reception.desk.logMessages().size(), 4);
    }

    // The filter counts characters: behind two double-byte ones it begins two characters into the number.
    void theFilterReadsTheNumberByCharacters()
    {
        Reception reception;
        reception.receive(call(u"销售"_s));
        QCOMPARE(reception.effects.causes, QStringList(u"asked for 50199"_s));
        QCOMPARE(reception.desk.values.LastCallerNumber, u"5550199"_s);
        QVERIFY(reception.dispatcher.describeLast().contains(u"\nLineNo: 销售\n"_s));
    }
};

QTEST_GUILESS_MAIN(tst_Dispatcher)
#include "tst_Dispatcher.moc"
