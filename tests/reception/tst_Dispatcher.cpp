#include "RecordWriter.h"
#include "reception/Dispatcher.h"
#include "support/Table.h"
#include "support/TestDesk.h"

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

struct Reception : support::TestDesk
{
    core::Settings settings{paths, log};
    core::CodePage codePage{936};
    RecordedEffects effects;
    reception::Dispatcher dispatcher{settings, log, values, codePage, effects};

    void receive(const QByteArray &bytes, const QString &sender = u"10.1.2.3"_s, quint16 port = 4711)
    {
        dispatcher.Winsock1_DataArrival({bytes, QHostAddress(sender), port});
    }
    QString savedSender()
    {
        core::Settings saved(paths, log);
        saved.Get_misc();
        QFile::remove(paths.SettingsFile);
        return saved.record.LastSenderIp.text() + u' ' + QString::number(saved.record.LastSenderPort);
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
        const support::Table<int, bool, int, QString> row("popupAllLines", "popsUp", "listUnpopped",
                                                          "causes");
        const QString whole = u"window,row 5550199,popup 5550199"_s;
        row("all lines", 1, false, 0, whole);
        row("a customer", 2, true, 0, u"asked for 5550199,"_s + whole);
        row("unknown, listed", 2, false, -1, u"asked for 5550199,row 5550199"_s);
        row("unknown", 0, false, 0, u"asked for 5550199"_s);
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
        QCOMPARE(reception.values.LastCallerNumber, u"5550199"_s);
        QCOMPARE(reception.logMessages(), QStringList(2, QString::fromLatin1(call())));
    }

    void eachKindCausesItsOwn_data()
    {
        const support::Table<QByteArray, QString, int> row("bytes", "causes", "logged");
        row("short record", "<CID", u"normal"_s, 1);
        row("detail", "<DETAILDES            1", u"normal"_s, 1);
        row("detail that says more", "<DETAILDES 1", u""_s, 1);
        row("message", "SENDSMALLMESSAGE", u"message SENDSMALLMESSAGE"_s, 1);
        row("shut down", QByteArray("SHUTDOWNALL").leftJustified(50) + 'x', u"byebye No"_s, 1);
        row("shut down, a column short", QByteArray("SHUTDOWNALL").leftJustified(49) + 'x', u""_s, 1);
        row("lower case", "shutdownall", u""_s, 1);
        row("status", " CHANNELSTATUS", u""_s, 2);
        row("refresh", "REFRESHCUSTOMERLIST", u""_s, 1);
        row("leading blank", ' ' + call(), u""_s, 1);
        row("other magic", "<crmv1", u""_s, 1);
        row("one character", "<", u""_s, 1);
        row("empty", "", u""_s, 1);
        row("all NUL", QByteArray(300, '\0'), u""_s, 1);
        row("largest", QByteArray(65507, '\x81'), u""_s, 1);
        row("escapes, line breaks", "\x1B[2J\r\n<2026-11-21 09:30:15>  x", u""_s, 1);
        row("markup", "<CRMV1<img src='/etc/passwd'>", u"asked for "_s, 2);
        row("bidi, invalid UTF-8", "<CRMV1\xE2\x80\xAE\xC3", u"asked for "_s, 2);
    }
    void eachKindCausesItsOwn()
    {
        QFETCH(QByteArray, bytes);
        Reception reception;
        reception.receive(bytes);
        QTEST(reception.effects.causes.join(u','), "causes");
        QTEST(int(reception.fileBytes(reception.paths.RunLogFile).count('\n')), "logged");
    }

    void onlyANewSenderIsSaved()
    {
        Reception reception;
        reception.settings.record.LastSenderIp.setText(u"10.1.2.2"_s);
        reception.receive("x", u"10.1.2.2"_s);
        QVERIFY(!QFile::exists(reception.paths.SettingsFile));
        reception.receive("x");
        QCOMPARE(reception.savedSender(), u"10.1.2.3 4711"_s);
        reception.receive("x", u"10.1.2.3"_s, 4712);
        QVERIFY(!QFile::exists(reception.paths.SettingsFile));
        reception.receive("x", u"10.1.2.4"_s, 4713);
        reception.receive("x", u"10.1.2.5"_s,
                          4714); // senders that change by the datagram are saved with the last
        QTRY_VERIFY(QFile::exists(reception.paths.SettingsFile));
        QCOMPARE(reception.savedSender(), u"10.1.2.5 4714"_s);
    }

    void aFailureCostsOneDatagramOnly()
    {
        Reception reception;
        reception.settings.record.PopupAllLines = 1;
        reception.effects.fails = true;
        reception.receive(call());
        QCOMPARE(reception.logMessages().constLast(), u"winsock1 DataArrival 7 out of memory"_s);
        reception.effects.fails = false;
        reception.receive(call());
        QCOMPARE(reception.logMessages().size(), 4);
    }

    // The filter counts characters: behind two double-byte ones it begins two characters into the number.
    void theFilterReadsTheNumberByCharacters()
    {
        Reception reception;
        reception.receive(call(u"销售"_s));
        QCOMPARE(reception.effects.causes, QStringList(u"asked for 50199"_s));
        QCOMPARE(reception.values.LastCallerNumber, u"5550199"_s);
        QVERIFY(reception.dispatcher.describeLast().contains(u"\nLineNo: 销售\n"_s));
    }
};

QTEST_GUILESS_MAIN(tst_Dispatcher)
#include "tst_Dispatcher.moc"
