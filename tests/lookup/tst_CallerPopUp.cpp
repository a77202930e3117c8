#include "appearance/Theme.h"
#include "lookup/forms/CallerPopUp.h"
#include "lookup/forms/CallerText.h"
#include "store/Upgrade.h"
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

    /// Every letter of the card on what is behind it.
    static bool isReadable()
    {
        const auto stands = [](const QColor &text, const QColor &ground) {
            return appearance::contrast(text, ground) >= appearance::readableContrast;
        };
        bool readable = true;
        for (const auto *text : card()->findChildren<lookup::CallerText *>()) {
            readable = readable && stands(text->palette().color(QPalette::Text), text->behindLetters());
        }
        for (const auto *label : card()->findChildren<QLabel *>()) {
            readable = readable && stands(label->palette().color(QPalette::WindowText),
                                          label->palette().color(QPalette::Window));
        }
        return readable;
    }

    struct Desk : support::TestForms
    {
        QWidget mainWindow;
        lookup::CallerPopUp popUp{{paths, log, settings, texts, clock, navigator, services(),
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
            QCOMPARE(lookup::opensCard(record, false), alwaysShows);
            desk.pop(record);
            QCOMPARE(find<QPlainTextEdit>("txtAbout")->toPlainText(), u"5550144     Jane <b>Miller </b>"_s);
            QCOMPARE(find<QPlainTextEdit>("txtContent")->toPlainText(), QString(256, u'w'));
            for (const char *box : {"txtAbout", "txtContent"}) {
                QCOMPARE(find<QWidget>(box)->palette().color(QPalette::Base), ground);
                QCOMPARE(find<QWidget>(box)->palette().color(QPalette::Text), text);
            }
            QVERIFY(isReadable());
            QCOMPARE(find<QLabel>("lblBlackListNotice")->text(), notice);
            QCOMPARE(find<QLabel>("lblBlackListNotice")->isVisible(), !notice.isEmpty());
            for (QString core::CallRecord::*field :
                 {&core::CallRecord::SnText, &core::CallRecord::SimpleDes}) {
                core::CallRecord nobody = record; // unknown, or without a name
                (nobody.*field).clear();
                QVERIFY(!lookup::opensCard(nobody, true));
            }
        }
    }

    void theNewestCallsCardStandsInTheCornerAndLeavesTheKeyboardAlone()
    {
        Desk desk;
        desk.popUp.ShowPopup(caller(u"5550144"_s));
        desk.popUp.ShowPopup(caller(u"5550177"_s));
        desk.pop(core::CallRecord()); // pops nobody up and leaves the card to the others
        QVERIFY(find<QPlainTextEdit>("txtAbout")->toPlainText().startsWith(u"5550177 "_s));
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
        card()->move(moved.x(), free.bottom() + 1 - card()->height());
        core::CallRecord longer = caller(u"5550166"_s, u"Y"_s);
        longer.SimpleDes = QString(300, u'W');
        desk.pop(longer);
        QTRY_VERIFY(find<QPlainTextEdit>("txtAbout")->toPlainText().startsWith(u"5550166 "_s));
        QCOMPARE(card()->x(), moved.x());
        QVERIFY(free.contains(card()->geometry()));
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
            QVERIFY(isReadable());
            desk.popUp.nextCall();
            desk.pop(record);
            QTRY_COMPARE(find<QWidget>("txtAbout")->palette().color(QPalette::Base), ground);
        }
    }

    void theCardTellsTimeLineAndAge()
    {
        Desk desk;
        core::CallRecord record = caller(u"5550144"_s);
        record.IncomingTime = u"2026-11-21 14:02:59"_s;
        desk.pop(record);
        QCOMPARE(find<QLabel>("lblCall")->text(), u"14:02"_s);
        QVERIFY(find<QLabel>("lblAge")->text().isEmpty());
        for (const auto &[seconds, age] : {std::pair(60, u"[MinutesAgo]"_s), {3600, u"[HoursAgo]"_s}}) {
            desk.clock.time = desk.clock.time.addSecs(seconds);
            QTRY_COMPARE(find<QLabel>("lblAge")->text(), age);
        }
        record.LineNo = u"5550100"_s;
        desk.pop(record);
        QTRY_COMPARE(find<QLabel>("lblCall")->text(), u"[CallOnLine]"_s);
        QVERIFY(find<QLabel>("lblAge")->text().isEmpty());
    }

    void theCardTellsOfACustomersNotesOnceTheyCanBeRead()
    {
        Desk desk;
        desk.runSql(desk.paths.CustomerFile,
                    u"create table customer (SN long, CustomerName text(255), CustomerType text(50));"
                    "insert into customer values(70007,'Jane''s','');"_s);
        store::UpdateDatabase_Customer_0606191111(desk.log, desk.paths);
        const auto notes = [&](const QString &shown) {
            desk.pop(caller(u"5550144"_s));
            QTRY_COMPARE(find<QLabel>("lblNotes")->text(), shown);
        };
        notes(u"[NoNotesOfCustomer]"_s);
        desk.runSql(desk.paths.CustomerFile,
                    u"insert into callinfo values('1','Jane''s','2026-03-01 08:00:00','Bob','x');"
                    "insert into CustomerRequest values('1','a','b',0,'c');"
                    "insert into CustomerRequest values('1','d','e',1,'f');"_s);
        store::Database other(desk.paths.CustomerFile);
        other.Execute(u"begin exclusive"_s);
        desk.pop(caller(u"5550144"_s));
        QTimer::singleShot(400, &desk.mainWindow,
                           [&] { other.Execute(u"commit"_s); }); // behind the first try
        QTRY_COMPARE(find<QLabel>("lblNotes")->text(), u"[LastNote]    [OpenRequests]"_s);
        QCOMPARE(desk.logMessages(), QStringList());
        support::press<lookup::frmPopUp>("cmdNote");
        QCOMPARE(desk.navigator.shown, QStringList{u"addNote 70007"_s});
        core::CallRecord entry = caller(u"5550144"_s);
        entry.Source = u"PHONEBOOK"_s;
        QTRY_COMPARE(card(), nullptr);
        desk.pop(entry);
        QVERIFY(!find<QWidget>("cmdNote")->isVisible() && !find<QWidget>("lblNotes")->isVisible());
    }

    void theCardStandsInNobodysWay_data()
    {
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<QRect>("window");
        QTest::addColumn<QRect>("field");
        QTest::addColumn<bool>("mirrored");
        QTest::addColumn<QPoint>("place");
        const QRect small(0, 0, 1366, 768), common(1366, 0, 1920, 1080), large(0, 0, 2560, 1440);
        const QRect none;
        QTest::newRow("nothing of ours is in use") << small << none << none << false << QPoint(910, 452);
        QTest::newRow("the same, mirrored") << small << none << none << true << QPoint(16, 452);
        QTest::newRow("beside") << common << QRect(1500, 100, 900, 600) << QRect(1550, 150, 400, 300) << false
                                << QPoint(2416, 400);
        QTest::newRow("beside, mirrored")
            << large << QRect(900, 100, 900, 600) << QRect(950, 150, 400, 300) << true << QPoint(444, 400);
        QTest::newRow("beside on the side that is free")
            << common << QRect(2300, 100, 900, 900) << QRect(2350, 150, 400, 300) << false
            << QPoint(1844, 700);
        QTest::newRow("below") << large << QRect(200, 10, 2300, 900) << QRect(300, 100, 300, 30) << false
                               << QPoint(2104, 916);
        QTest::newRow("on a small screen")
            << small << QRect(200, 40, 960, 700) << QRect(220, 100, 500, 300) << false << QPoint(16, 452);
        QTest::newRow("the same, mirrored")
            << small << QRect(200, 40, 960, 700) << QRect(600, 100, 500, 300) << true << QPoint(16, 452);
        QTest::newRow("all of the screen is in use")
            << small << small << QRect(20, 100, 700, 500) << false << QPoint(910, 416);
    }
    void theCardStandsInNobodysWay()
    {
        QFETCH(const QRect, screen);
        QFETCH(const QRect, window);
        QFETCH(const QRect, field);
        QFETCH(const bool, mirrored);
        lookup::CardRoom room{screen, window, field, {}, mirrored};
        for (int button = 0; button < 3 && window.isValid(); ++button) { // a row at the foot
            room.buttons.append(QRect(window.right() - 100 * (button + 1), window.bottom() - 35, 90, 26));
        }
        room.buttons.append(QRect(window.topLeft(), QSize(window.width(), 24))); // the title bar's
        const QRect card = lookup::placeCard({440, 300}, room);
        QTEST(card.topLeft(), "place");
        QVERIFY(screen.contains(card) && !card.intersects(field));
        for (const QRect &button : std::as_const(room.buttons)) {
            QVERIFY(!card.intersects(button));
        }
    }

    void anOpenCardFollowsItsCustomersNewName()
    {
        Desk desk;
        desk.pop(caller(u"5550144"_s));
        desk.popUp.callerRenamed(u"CUSTOMER"_s, 7, u"Somebody else"_s);
        desk.popUp.callerRenamed(u"PHONEBOOK"_s, 70007, u"Somebody else"_s);
        desk.popUp.callerRenamed(u"CUSTOMER"_s, 70007, u"Acme <b>"_s);
        QCOMPARE(find<QPlainTextEdit>("txtAbout")->toPlainText(), u"5550144     Acme <b>"_s);
    }

    void theCardStaysWhereNoWindowOpensAndForACallThatCameMeanwhile()
    {
        for (const char *button : {"Command2", "cmdNote"}) {
            Desk desk;
            desk.pop(caller(u"5550144"_s));
            desk.navigator.opens = [] { return false; };
            support::press<lookup::frmPopUp>(button);
            QVERIFY(card() != nullptr);
            desk.navigator.opens = [&desk] { // something is asked
                desk.popUp.ShowPopup(caller(u"5550144"_s, u"Y"_s));
                return QTest::qWaitFor([] { return find<QLabel>("lblBlackListNotice")->isVisible(); });
            };
            support::press<lookup::frmPopUp>(button);
            QVERIFY(card() != nullptr);
        }
    }

    void buttonsAndEscapeEndTheCard()
    {
        Desk desk;
        for (const char *button : {"Command2", "Command1"}) {
            desk.pop(caller(u"5550144"_s));
            support::press<lookup::frmPopUp>(button);
            QTRY_COMPARE(card(), nullptr);
            QCOMPARE(desk.navigator.shown, QStringList{u"Show_Editor CUSTOMER 70007"_s}); // by the first
        }
        for (const char *focused : {"txtAbout", "txtContent", "Command2", "Command1"}) {
            desk.pop(caller(u"5550144"_s));
            card()->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(card()));
            find<QWidget>(focused)->setFocus();
            QTest::keyClick(find<QWidget>(focused), Qt::Key_Escape);
            QTRY_COMPARE(card(), nullptr);
        }
        QTRY_COMPARE(desk.openForms.count(), 0);
    }
};

QTEST_MAIN(tst_CallerPopUp)
#include "tst_CallerPopUp.moc"
