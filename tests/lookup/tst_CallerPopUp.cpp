#include "appearance/theme/Theme.h"
#include "lookup/forms/CallerPopUp.h"
#include "lookup/forms/CallerText.h"
#include "store/Upgrade.h"
#include "support/Row.h"
#include "support/Ui.h"

using Card = support::Ui<lookup::frmPopUp>;

class tst_CallerPopUp : public QObject
{
    Q_OBJECT

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

    static QColor ground(const char *box) { return Card::find(box)->palette().color(QPalette::Base); }

    /// Every letter of the card on what is behind it.
    static bool isReadable()
    {
        double least = appearance::readableContrast;
        for (const auto *text : Card::form()->findChildren<lookup::CallerText *>()) {
            const QColor letters = text->palette().color(QPalette::Text);
            least = std::min(least, appearance::contrast(letters, text->behindLetters()));
        }
        for (const auto *label : Card::form()->findChildren<QLabel *>()) {
            const QPalette colors = label->palette();
            least = std::min(least, appearance::contrast(colors.color(QPalette::WindowText),
                                                         colors.color(QPalette::Window)));
        }
        return least >= appearance::readableContrast;
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
            QTRY_VERIFY(Card::form() != nullptr);
        }
    };

private Q_SLOTS:
    void theMarksDecideColorsAndWords()
    {
        const QColor green(0, 255, 0), red(255, 0, 0), blue(0, 0, 255), black(0, 0, 0), white(255, 255, 255);
        for (const auto &[vip, blackList, alwaysShows, color, text, notice] :
             {std::tuple(u"YES"_s, u"y"_s, false, green, blue, u""_s),
              {u"Y"_s, u"N"_s, true, red, blue, u"[VIPattention]"_s},
              {u""_s, u"Y"_s, true, black, white, u"[ListInBlackAttention]"_s},
              {u"Y"_s, u"Y"_s, true, black, white, u"[ListInBlackAttention]"_s}}) {
            Desk desk;
            const core::CallRecord record = caller(u"5550144"_s, vip, blackList);
            QCOMPARE(lookup::opensCard(record, false), alwaysShows);
            desk.pop(record);
            QCOMPARE(Card::text("txtAbout"), u"5550144     Jane <b>Miller </b>"_s);
            QCOMPARE(Card::text("txtContent"), QString(256, u'w'));
            for (const char *box : {"txtAbout", "txtContent"}) {
                QCOMPARE(ground(box), color);
                QCOMPARE(Card::find(box)->palette().color(QPalette::Text), text);
            }
            QVERIFY(isReadable());
            QCOMPARE(Card::text("lblBlackListNotice"), notice);
            QCOMPARE(Card::isVisible("lblBlackListNotice"), !notice.isEmpty());
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
        QVERIFY(Card::text("txtAbout").startsWith(u"5550177 "_s));
        QVERIFY(Card::form()->testAttribute(Qt::WA_ShowWithoutActivating));
        const QRect free = desk.mainWindow.screen()->availableGeometry();
        QVERIFY(free.contains(Card::form()->geometry()));
        const QPoint gap = free.bottomRight() - Card::form()->geometry().bottomRight();
        QVERIFY(gap.x() < 32 && gap.y() < 64);
        const QPoint moved(free.x() + 100, free.bottom() + 1 - Card::form()->height());
        Card::form()->move(moved);
        core::CallRecord higher = caller(u"5550166"_s, u"Y"_s);
        higher.SimpleDes = QString(300, u'W');
        desk.pop(higher);
        QTRY_VERIFY(Card::text("txtAbout").startsWith(u"5550166 "_s));
        QCOMPARE(Card::form()->x(), moved.x());
        QVERIFY(free.contains(Card::form()->geometry()));
    }

    void theCardGivesWayToAWindowThatTheOperatorTurnsToLater()
    {
        Desk desk;
        desk.pop(caller(u"5550144"_s));
        QWidget later;
        QPushButton button(&later);
        later.setGeometry(Card::form()->geometry());
        button.setGeometry(later.rect());
        later.show();
        later.activateWindow();
        QTRY_VERIFY(!Card::form()->geometry().intersects(later.geometry()));
    }

    void aCardIsOfAnEarlierCallOnceAnotherOneShowsNone()
    {
        Desk desk;
        const core::CallRecord record = caller(u"5550144"_s, u"Y"_s, u"Y"_s);
        desk.popUp.nextCall();
        desk.pop(record);
        const QColor fresh = ground("txtAbout");
        desk.popUp.nextCall();
        desk.popUp.ShowPopup(core::CallRecord()); // of nobody
        QTRY_COMPARE(Card::text("lblBlackListNotice"), u"[EarlierCall] ([IfInBlackList])"_s);
        QVERIFY(ground("txtAbout") != fresh);
        QVERIFY(isReadable());
        desk.popUp.nextCall();
        desk.pop(record);
        QTRY_COMPARE(ground("txtAbout"), fresh);
    }

    void theCardTellsTimeLineAndAge()
    {
        Desk desk;
        core::CallRecord record = caller(u"5550144"_s);
        record.IncomingTime = u"2026-11-21 14:02:59"_s;
        desk.pop(record);
        QCOMPARE(Card::text("lblCall"), u"14:02"_s);
        QVERIFY(Card::text("lblAge").isEmpty());
        for (const auto &[seconds, age] : {std::pair(60, u"[MinutesAgo]"_s), {3600, u"[HoursAgo]"_s}}) {
            desk.clock.time = desk.clock.time.addSecs(seconds);
            QTRY_COMPARE(Card::text("lblAge"), age);
        }
        record.LineNo = u"5550100"_s;
        desk.pop(record);
        QTRY_COMPARE(Card::text("lblCall"), u"[CallOnLine]"_s);
        QVERIFY(Card::text("lblAge").isEmpty());
    }

    void theCardTellsOfACustomersNotesOnceTheyCanBeRead()
    {
        Desk desk;
        desk.runSql(desk.paths.CustomerFile,
                    u"create table customer (SN long, CustomerName text(255), CustomerType text(50));"
                    "insert into customer values(70007,'Jane''s','');"_s);
        store::UpdateDatabase_Customer_0606191111(desk.log, desk.paths);
        desk.pop(caller(u"5550144"_s));
        QTRY_COMPARE(Card::text("lblNotes"), u"[NoNotesOfCustomer]"_s);
        desk.runSql(desk.paths.CustomerFile,
                    u"insert into callinfo values('1','Jane''s','2026-03-01 08:00:00','Bob','x');"
                    "insert into CustomerRequest values('1','a','b',0,'c');"
                    "insert into CustomerRequest values('1','d','e',1,'f');"_s);
        store::Database other(desk.paths.CustomerFile);
        other.Execute(u"begin exclusive"_s);
        desk.pop(caller(u"5550144"_s));
        QTimer::singleShot(400, &desk.mainWindow,
                           [&] { other.Execute(u"commit"_s); }); // behind the first try
        QTRY_COMPARE(Card::text("lblNotes"), u"[LastNote]    [OpenRequests]"_s);
        Card::press("cmdNote");
        QCOMPARE(desk.navigator.shown, QStringList{u"addNote 70007"_s});
        core::CallRecord entry = caller(u"5550144"_s);
        entry.Source = u"PHONEBOOK"_s;
        QTRY_COMPARE(Card::form(), nullptr);
        desk.pop(entry);
        QVERIFY(!Card::isVisible("cmdNote") && !Card::isVisible("lblNotes"));
    }

    void theCardStandsInNobodysWay()
    {
        const QRect small(0, 0, 1366, 768), common(1366, 0, 1920, 1080), large(0, 0, 2560, 1440), none;
        for (const auto &[name, screen, window, field, mirrored, place] :
             {std::tuple("nothing of ours is in use", small, none, none, false, QPoint(910, 452)),
              {"the same, mirrored", small, none, none, true, QPoint(16, 452)},
              {"beside", common, {1500, 100, 900, 600}, {1550, 150, 400, 300}, false, {2416, 400}},
              {"on the free side", common, {2300, 100, 900, 900}, {2350, 150, 400, 300}, false, {1844, 700}},
              {"below", large, {200, 10, 2300, 900}, {300, 100, 300, 30}, false, {2104, 916}},
              {"a small screen", small, {200, 40, 960, 700}, {220, 100, 500, 300}, false, {16, 452}},
              {"all of the screen is in use", small, small, {700, 100, 650, 500}, false, {244, 452}}}) {
            const support::Row row(name);
            lookup::CardRoom room{screen, window, field, {}, mirrored};
            for (int button = 0; button < 3 && window.isValid(); ++button) { // a row at the foot
                room.buttons.append(QRect(window.right() - 100 * (button + 1), window.bottom() - 35, 90, 26));
            }
            room.buttons.append(QRect(window.topLeft(), QSize(window.width(), 24))); // the title bar's
            const QRect card = lookup::placeCard({440, 300}, room);
            QCOMPARE(card.topLeft(), place);
            QVERIFY(screen.contains(card) && !card.intersects(field));
            for (const QRect &button : std::as_const(room.buttons)) {
                QVERIFY(!card.intersects(button));
            }
        }
    }

    void anOpenCardFollowsItsCustomersNewName()
    {
        Desk desk;
        desk.pop(caller(u"5550144"_s));
        desk.popUp.callerRenamed({core::RowKey::Table::Customer, 70007}, u"Acme <b>"_s);
        desk.popUp.callerRenamed({core::RowKey::Table::PhoneBook, 70007}, u"Somebody else"_s);
        QCOMPARE(Card::text("txtAbout"), u"5550144     Acme <b>"_s);
    }

    void theCardStaysWhereNoWindowOpensAndForACallThatCameMeanwhile()
    {
        for (const char *button : {"Command2", "cmdNote"}) {
            Desk desk;
            desk.pop(caller(u"5550144"_s));
            desk.navigator.opens = [] { return false; };
            Card::press(button);
            QVERIFY(Card::form() != nullptr);
            desk.navigator.opens = [&desk] { // something is asked
                desk.popUp.ShowPopup(caller(u"5550144"_s, u"Y"_s));
                return QTest::qWaitFor([] { return Card::isVisible("lblBlackListNotice"); });
            };
            Card::press(button);
            QVERIFY(Card::form() != nullptr);
        }
    }

    void buttonsAndEscapeEndTheCard()
    {
        Desk desk;
        for (const char *ending : {"Command2", "Command1", "Escape"}) {
            desk.pop(caller(u"5550144"_s));
            if (ending == "Escape"_ba) {
                Card::activate();
                Card::key("txtContent", Qt::Key_Escape);
            } else {
                Card::press(ending);
            }
            QTRY_COMPARE(Card::form(), nullptr);
            QCOMPARE(desk.navigator.shown, QStringList{u"Show_Editor CUSTOMER 70007"_s}); // by the first
        }
    }
};

QTEST_MAIN(tst_CallerPopUp)
#include "tst_CallerPopUp.moc"
