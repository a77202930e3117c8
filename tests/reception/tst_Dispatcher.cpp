#include "reception/Dispatcher.h"
#include "support/Calls.h"
#include "support/TestDesk.h"

/// What each datagram causes, and what stays of it in the run log and the settings.
class tst_Dispatcher : public QObject
{
    Q_OBJECT

    /// Records what a datagram caused, in order.
    struct RecordedEffects : reception::CallEffects
    {
        bool callerPopsUp(const QString &number) override { return note(u"asked for "_s + number); }
        QString GetArea(const QString &) override { return u"London"_s; }
        void setMainWindowNormal() override { note(u"normal"_s); }
        void showMainWindow() override { note(u"window"_s); }
        void ShowCallerID_tarn(const core::CallRecord &call) override { note(u"row "_s + call.CallerID); }
        void showLastCaller(const core::CallRecord &, const QString &) override {}
        void ShowPopup(const core::CallRecord &call) override { note(u"popup "_s + call.CallerID); }
        void ShowSmallMessage(const QString &text) override { note(u"message "_s + text.trimmed()); }
        bool byebye(const QString &prompt) override { return note(u"byebye "_s + prompt); }

        bool fails = false;
        QStringList causes;

    private:
        bool note(const QString &cause)
        {
            causes.append(cause);
            if (fails) {
                throw core::Error(7, u"out of memory"_s);
            }
            return true;
        }
    };

    struct Reception : support::TestDesk
    {
        core::Settings settings{paths, log};
        core::CodePage codePage{936};
        RecordedEffects effects;
        reception::Dispatcher dispatcher{settings, log, values, codePage, effects};

        void receive(const QByteArray &bytes)
        {
            dispatcher.Winsock1_DataArrival({bytes, QHostAddress(u"10.1.2.3"_s), 4711});
        }
    };

    static QByteArray call(const QString &line = u"5550101"_s)
    {
        return support::call(u"5550199"_s, u"Ada"_s, line, sim::CodePageChoice(936));
    }

private Q_SLOTS:
    void eachKindCausesItsOwn()
    {
        const QByteArray shutDown = QByteArray("SHUTDOWNALL").leftJustified(50);
        for (const auto &[bytes, causes, logged] :
             {std::tuple(QByteArray("<CID"), u"normal"_s, 1),
              {"<DETAILDES            1", u"normal"_s, 1},
              {"<DETAILDES 1", u""_s, 1},
              {"SENDSMALLMESSAGE", u"message SENDSMALLMESSAGE"_s, 1},
              {shutDown + 'x', u"byebye No"_s, 1},
              {shutDown.chopped(1) + 'x', u""_s, 1},
              {"shutdownall", u""_s, 1},
              {" CHANNELSTATUS", u""_s, 2},
              {"REFRESHCUSTOMERLIST", u""_s, 1},
              {' ' + call(), u""_s, 1},
              {"", u""_s, 1},
              {QByteArray(65507, '\x81'), u""_s, 1},
              {"\x1B[2J\r\n<2026-11-21 09:30:15>  x", u""_s, 1},
              {"<CRMV1\xE2\x80\xAE\xC3", u"asked for ,window,row ,popup "_s, 2}}) {
            Reception reception;
            reception.receive(bytes);
            QCOMPARE(reception.effects.causes.join(u','), causes);
            QCOMPARE(reception.fileBytes(reception.paths.RunLogFile).count('\n'), logged);
        }
    }

    // The filter counts characters: behind two double-byte ones it begins two characters into the number.
    void theFilterReadsTheNumberByCharactersAndMayFail()
    {
        Reception reception;
        reception.receive(call(u"销售"_s));
        QCOMPARE(reception.effects.causes.join(u','), u"asked for 50199,window,row 5550199,popup 5550199"_s);
        QCOMPARE(reception.values.LastCallerNumber, u"5550199"_s);
        QVERIFY(reception.dispatcher.describeLast().contains(u"\nLineNo: 销售\n"_s));
        reception.effects.fails = true; // costs this datagram only
        reception.receive(call());
        QCOMPARE(reception.logMessages().constLast(), u"winsock1 DataArrival 7 out of memory"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Dispatcher)
#include "tst_Dispatcher.moc"
