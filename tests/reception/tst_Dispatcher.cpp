#include "reception/Dispatcher.h"
#include "support/Calls.h"
#include "support/TestDesk.h"

/// What each datagram causes, and what stays of it in the run log and the settings.
class tst_Dispatcher : public QObject
{
    Q_OBJECT

    /// Records what a datagram caused, in order, and knows one customer where it knows any.
    struct RecordedEffects : reception::CallEffects, core::Callers
    {
        bool areKnown() const override { return known; }
        bool callerPopsUp(QStringView number, QStringView otherNumber) const override
        {
            asked = number.toString() + u'|' + otherNumber.toString();
            return known;
        }
        void completeFromDesk(core::CallRecord &record) const override
        {
            record.SnText = record.SnText.isEmpty() && known ? u"7"_s : record.SnText;
        }
        void setMainWindowNormal() override { note(u"normal"_s); }
        void showMainWindow() override { note(u"window"_s); }
        void ShowCallerID_tarn(const core::CallRecord &call) override { note(u"row "_s + of(call)); }
        void showEarlierCall(const core::CallRecord &call, int newerCalls) override
        {
            note(u"earlier "_s + QString::number(newerCalls) + u' ' + of(call));
        }
        void showCallAgain(const core::CallRecord &shown, const core::CallRecord &now) override
        {
            note(u"again "_s + of(shown) + u'>' + of(now));
        }
        void showLastCaller() override { ++lastCallers; }
        void ShowPopup(const core::CallRecord &call) override { note(u"popup "_s + of(call)); }
        void ShowSmallMessage(const QString &text) override { note(u"message "_s + text.trimmed()); }
        bool byebye(const QString &prompt) override { return note(u"byebye "_s + prompt); }

        bool fails = false;
        bool known = true;
        QStringList causes;
        int lastCallers = 0;
        mutable QString asked;

        static QString of(const core::CallRecord &call) { return call.CallerID + u'/' + call.SnText; }

    private:
        bool note(const QString &cause)
        {
            causes.append(cause);
            if (fails) {
                throw std::bad_alloc();
            }
            return true;
        }
    };

    struct Reception : support::TestDesk
    {
        core::Settings settings{paths, log};
        core::CodePage codePage{936};
        RecordedEffects effects;
        reception::Dispatcher dispatcher{settings, log, values, codePage, effects, effects};

        void receive(const QByteArray &bytes)
        {
            dispatcher.Winsock1_DataArrival({bytes, QHostAddress(u"10.1.2.3"_s), 4711});
        }
    };

    static QByteArray call(const QString &line = u"5550101"_s)
    {
        return support::call(u"5550199"_s, u"Ada"_s, line, sim::CodePageChoice(936), {});
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
              {" CHANNELSTATUS", u""_s, 2},
              {"REFRESHCUSTOMERLIST", u""_s, 1},
              {"", u""_s, 1},
              {QByteArray(65507, '\x81'), u""_s, 1},
              {"<CRMV1\xE2\x80\xAE\xC3", u"window,row /7,popup /7"_s, 2}}) {
            Reception reception;
            reception.receive(bytes);
            QCOMPARE(reception.effects.causes.join(u','), causes);
            QCOMPARE(reception.fileBytes(reception.paths.RunLogFile).count('\n'), logged);
        }
    }

    void theSettingsDecideWhatACallThatNeedNotPopUpCauses()
    {
        for (const auto &[popAll, listAll, causes] : {std::tuple(0, 0, u""_s),
                                                      {0, -1, u"row 5550199/"_s},
                                                      {1, 0, u"window,row 5550199/,popup 5550199/"_s}}) {
            Reception reception;
            reception.effects.known = false;
            reception.settings.record.PopupAllLines = qint16(popAll);
            reception.settings.record.ListUnpoppedCalls = qint16(listAll);
            reception.receive(call());
            QCOMPARE(reception.effects.causes.join(u','), causes);
            QCOMPARE(RecordedEffects::of(reception.dispatcher.lastCall()), u"5550199/"_s);
            QCOMPARE(reception.effects.lastCallers, 1); // the bar names every caller
        }
    }

    // Behind two double-byte characters the filter's count begins two characters into the number.
    void theFilterIsGivenTheNumberByCharactersAndByColumnsAndADatagramMayFail()
    {
        Reception reception;
        reception.receive(call(u"销售"_s));
        QCOMPARE(reception.effects.asked, u"50199|5550199"_s);
        QCOMPARE(reception.effects.causes.join(u','), u"window,row 5550199/7,popup 5550199/7"_s);
        QCOMPARE(reception.values.LastCallerNumber, u"5550199"_s);
        QVERIFY(reception.dispatcher.describeLast().contains(u"\nLineNo: 销售\n"_s));
        reception.effects.fails = true; // costs this datagram only
        reception.receive(call());
        QCOMPARE(reception.logMessages().constLast(), u"winsock1 DataArrival 0 std::bad_alloc"_s);
    }

    void callsThatCameBeforeAnybodyWasKnownAreLookedAtAgain()
    {
        for (const auto &[listed, before, after] :
             {std::tuple(u"123"_s, u"row 1/,row 2/,row 3/"_s, u"again 2/>2/7,again 3/>3/7"_s),
              {u""_s, u""_s, u"earlier 0 2/7,earlier 0 3/7"_s},
              {u"3"_s, u"row 3/"_s, u"earlier 1 2/7,again 3/>3/7"_s}, // below the newer one
              {u"12"_s, u"row 1/,row 2/"_s, u"again 2/>2/7,earlier 0 3/7"_s}}) {
            Reception reception;
            reception.values.MaxGridRows = 3; // two rows of calls
            reception.effects.known = false;
            for (const QString &number : {u"1"_s, u"2"_s, u"3"_s}) {
                reception.settings.record.ListUnpoppedCalls = listed.contains(number) ? -1 : 0;
                reception.receive(support::call(number, {}, u"5550100"_s, sim::CodePageChoice(936), {}));
            }
            QCOMPARE(reception.effects.causes.join(u','), before);
            reception.effects.causes.clear();
            reception.dispatcher.lookAgain(); // too early
            reception.effects.known = true;
            reception.receive(call()); // comes behind them
            QCOMPARE(reception.effects.causes.join(u','),
                     after + u",window,popup 3/7,window,row 5550199/7,popup 5550199/7"_s);
            reception.dispatcher.lookAgain();
            QCOMPARE(RecordedEffects::of(reception.dispatcher.lastCall()), u"5550199/7"_s);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Dispatcher)
#include "tst_Dispatcher.moc"
