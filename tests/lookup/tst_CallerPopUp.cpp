#include "lookup/CallerPopUp.h"
#include "support/TestForms.h"

class tst_CallerPopUp : public QObject
{
    Q_OBJECT

    static lookup::frmPopUp *card() { return support::openForm<lookup::frmPopUp>(); }

    template <typename Control>
    static Control *find(const char *name)
    {
        return support::find<lookup::frmPopUp, Control>(name);
    }

    static core::CallRecord caller(const QString &number, const QString &vip = {},
                                   const QString &blackList = {})
    {
        core::CallRecord record;
        record.CallerID = number;
        record.SimpleDes = u"Jane <b>Miller\u202E</b>"_s;
        record.DetailDes = QString(60000, u'w');
        record.SnText = u"70007"_s;
        record.Source = u"CUSTOMER"_s;
        record.IfVIP = vip;
        record.IfInBlackList = blackList;
        return record;
    }

    struct Desk : support::TestForms
    {
        QWidget mainWindow;
        lookup::CallerPopUp popUp{{log, settings, texts, clock, navigator, services(),
                                   [this]() -> const QWidget & { return mainWindow; }}};

        Desk() { settings.record.PopupDetail = 1; }
        void pop(const core::CallRecord &record)
        {
            popUp.ShowPopup(record);
            QTRY_VERIFY(card() != nullptr);
        }
    };

private Q_SLOTS:
    void theMarksDecideColorsAndWords()
    {
        const QColor green(0, 255, 0), red(255, 0, 0), blue(0, 0, 255), black(0, 0, 0), white(255, 255, 255);
        for (const auto &[vip, blackList, alwaysShows, ground, text, notice] :
             {std::tuple(u"YES"_s, u"y"_s, false, green, blue, u""_s),
              {u"Y"_s, u"N"_s, true, red, blue, u"[VIPattention]"_s},
              {u""_s, u"Y"_s, true, black, white, u"[ListInBlackAttention]"_s},
              {u"Y"_s, u"Y"_s, true, black, white, u"[ListInBlackAttention]"_s}}) {
            Desk desk;
            const core::CallRecord record = caller(u"5550144"_s, vip, blackList);
            const auto decided = lookup::decidePopUp(lookup::popupInfoOf(record), false, desk.texts);
            QCOMPARE(decided.has_value(), alwaysShows);
            desk.pop(record);
            QCOMPARE(find<QLineEdit>("txtAbout")->text(), u"5550144     Jane <b>Miller </b>"_s);
            QCOMPARE(find<QPlainTextEdit>("txtContent")->toPlainText(), QString(256, u'w'));
            for (const char *box : {"txtAbout", "txtContent"}) {
                QCOMPARE(find<QWidget>(box)->palette().color(QPalette::Base), ground);
                QCOMPARE(find<QWidget>(box)->palette().color(QPalette::Text), text);
            }
            QCOMPARE(find<QLabel>("lblBlackListNotice")->text(), notice);
            QCOMPARE(find<QLabel>("lblBlackListNotice")->isVisible(), !notice.isEmpty());
            QCOMPARE(find<QLabel>("lblCallerNumber")->textFormat(), Qt::PlainText);
            for (QString core::CallRecord::*field :
                 {&core::CallRecord::SnText, &core::CallRecord::SimpleDes}) {
                core::CallRecord nobody = record; // unknown, or without a name
                (nobody.*field).clear();
                QVERIFY(!lookup::decidePopUp(lookup::popupInfoOf(nobody), true, desk.texts));
            }
        }
    }

    void theNewestCallsCardStandsInTheCornerAndLeavesTheKeyboardAlone()
    {
        Desk desk;
        desk.popUp.ShowPopup(caller(u"5550144"_s));
        desk.popUp.ShowPopup(caller(u"5550177"_s));
        desk.pop(core::CallRecord()); // pops nobody up and leaves the card to the others
        QCOMPARE(find<QLabel>("lblCallerNumber")->text(), u"5550177"_s);
        QVERIFY(card()->testAttribute(Qt::WA_ShowWithoutActivating));
        const QRect free = desk.mainWindow.screen()->availableGeometry();
        QVERIFY(free.contains(card()->geometry()));
        const QPoint gap = free.bottomRight() - card()->geometry().bottomRight();
        QVERIFY(gap.x() < 32 && gap.y() < 64);
        const auto *standing = card();
        const QPoint moved = card()->pos() - QPoint(100, 100);
        card()->move(moved);
        desk.pop(caller(u"5550177"_s, u"Y"_s));
        QTRY_VERIFY(find<QLabel>("lblBlackListNotice")->isVisible());
        QCOMPARE(card(), standing);
        QCOMPARE(card()->pos(), moved);
    }

    void aCardIsOfAnEarlierCallOnceAnotherOneShowsNone()
    {
        for (const auto &[time, vip, blackList, notice] :
             {std::tuple(u"2026-11-21 14:02:59"_s, u"Y"_s, u"Y"_s, u"[EarlierCall] ([IfInBlackList])"_s),
              {u"2026-11-21 14:02:59"_s, u"Y"_s, u""_s, u"[EarlierCall] ([IFVIP])"_s},
              {u"garbled"_s, u""_s, u""_s, u"[EarlierCall]"_s}}) {
            Desk desk;
            core::CallRecord record = caller(u"5550144"_s, vip, blackList);
            record.IncomingTime = time;
            desk.popUp.nextCall();
            desk.pop(record);
            const QColor ground = find<QWidget>("txtAbout")->palette().color(QPalette::Base);
            desk.popUp.nextCall();
            desk.popUp.ShowPopup(core::CallRecord()); // of nobody
            QTRY_COMPARE(find<QLabel>("lblBlackListNotice")->text(), notice);
            QVERIFY(find<QLabel>("lblBlackListNotice")->isVisible());
            QVERIFY(find<QWidget>("txtAbout")->palette().color(QPalette::Base) != ground);
            desk.popUp.nextCall();
            desk.pop(record);
            QTRY_COMPARE(find<QWidget>("txtAbout")->palette().color(QPalette::Base), ground);
        }
    }

    void anOpenCardFollowsItsCustomersNewName()
    {
        Desk desk;
        desk.pop(caller(u"5550144"_s));
        desk.popUp.callerRenamed(u"CUSTOMER"_s, 7, u"Somebody else"_s);
        desk.popUp.callerRenamed(u"PHONEBOOK"_s, 70007, u"Somebody else"_s);
        desk.popUp.callerRenamed(u"CUSTOMER"_s, 70007, u"Acme <b>"_s);
        QCOMPARE(find<QLabel>("lblCallerName")->text(), u"Acme <b>"_s);
        QCOMPARE(find<QLineEdit>("txtAbout")->text(), u"5550144     Acme <b>"_s);
    }

    void buttonsAndEscapeEndTheCard()
    {
        Desk desk;
        for (const char *button : {"Command2", "Command1", ""}) {
            desk.pop(caller(u"5550144"_s));
            *button == '\0' ? QTest::keyClick(card(), Qt::Key_Escape)
                            : support::press<lookup::frmPopUp>(button);
            QTRY_COMPARE(card(), nullptr);
            QCOMPARE(desk.navigator.shown, QStringList{u"Show_Editor CUSTOMER 70007"_s}); // by the first
        }
        QTRY_COMPARE(desk.openForms.count(), 0);
    }
};

QTEST_MAIN(tst_CallerPopUp)
#include "tst_CallerPopUp.moc"
