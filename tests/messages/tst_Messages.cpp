#include "messages/ReceivedMessages.h"
#include "messages/SmsRecord.h"
#include "messages/forms/MessageWindows.h"
#include "support/FullDisk.h"
#include "support/Ui.h"

using Card = support::Ui<messages::frmShowSMS>;
using Form = support::Ui<messages::frmSendSMS>;

/// Short messages: their record, their logs and their two windows.
class tst_Messages : public QObject
{
    Q_OBJECT

    struct Desk : support::TestForms
    {
        QList<int> unread;
        messages::MessageWindows windows{{context(), codePage, [this](int count) { unread.append(count); }}};
        Desk() { QDir().mkpath(paths.PopUserDataFolder); }
    };

    static QString shown() { return Card::text("txtSMS"); }
    static QString place() { return Card::text("lblPlace"); }
    static bool says(const QString &outcome) { return Form::text("lblSent").startsWith(outcome); }

private Q_SLOTS:
    void fieldsAreFilledByColumnsOfTheCodePage()
    {
        const QString name(24, u'\u5F20');
        for (const auto &[codePage, sendTo, field, text] :
             {std::tuple(1252, u"Ann"_s, u"Ann"_s.leftJustified(50), u"call {{{back}}} at 5"_s),
              {1252, QString(60, u'x'), QString(50, u'x'), u""_s},
              {936, u"张三"_s, u"张三"_s + QString(46, u' '), u"请回电\r\n谢谢"_s},
              {936, name + u"张三"_s, name + u"张"_s, u"好"_s},
              {936, u"x"_s + name + u"三"_s, u"x"_s + name + u' ', u"}}}"_s}, // never half a character
              {936, u"梅"_s, u"梅"_s + QString(48, u' '), u"谢谢"_s},         // could be UTF-8
              {1258, u"Thị Mỹ"_s, u"Thị Mỹ"_s + QString(42, u' '), u"Gọi lại cho bà Nguyễn ở Huế"_s}}) {
            const core::CodePage page(codePage);
            const QByteArray bytes = page.encode(messages::smsRecord(sendTo, text, page));
            QCOMPARE(bytes.first(50), QByteArray("SENDSMALLMESSAGE").leftJustified(50));
            QCOMPARE(bytes.sliced(50, 50), page.encode(field));
            QCOMPARE(bytes.sliced(100, 103), QByteArray(100, ' ') + "{{{");
            QCOMPARE(messages::smsText(page.decode(bytes).text), text);
        }
    }

    // By characters, by columns of two, and by the bytes of UTF-8.
    void theTextIsFoundBehindEveryPaddingOfTheDestination()
    {
        for (const QString &sendTo : {u"Ann"_s, u"张三"_s, u"李"_s.repeated(16), u"Zoë🙂"_s}) {
            const qsizetype characters = sendTo.size();
            for (const qsizetype width :
                 {characters, characters + sendTo.count(QRegularExpression(u"[^ -~]"_s)),
                  sendTo.toUtf8().size()}) {
                const QString record = u"SENDSMALLMESSAGE"_s.leftJustified(50) + sendTo +
                                       QString(150 - width, u' ') + u"{{{at {{{5}}}"_s;
                QCOMPARE(messages::smsText(record), u"at {{{5"_s);
            }
        }
    }

    void aTextThatIsTooLongIsCutAndTheSenderHearsOfIt()
    {
        for (const auto &[codePage, text, cut, altered, ending] :
             {std::tuple(1252, QString(65301, u'x'), false, false, "x}}}"_L1), // the last that fits
              {1252, QString(65302, u'x'), true, false, "x}}}"_L1},
              {936, u"a"_s + QString(40000, u'\u597D'), true, false, "}}}"_L1},
              {936, u"1\n2?"_s, false, false, "1\r\n2?}}}"_L1},
              {936, u"سارة"_s, false, true, "}}}"_L1},
              {936, u"\U0001F600"_s.repeated(70000), true, true, "}}}"_L1}}) {
            support::TestForms forms;
            const core::CodePage page(codePage);
            messages::MessageSender sender(forms.server, page, forms.log);
            const auto outcome = sender.SendSMS(u"ALL"_s, text);
            QCOMPARE(std::pair(outcome.cut, outcome.altered), std::pair(cut, altered));
            QVERIFY(forms.server.sent.last().endsWith(ending));
            const qsizetype size = page.encode(forms.server.sent.last()).size();
            QVERIFY(size <= 65507 && (size > 65500 || !cut));
        }
    }

    void shortRecordsAreRefusedAndMessagesWithoutAFolderAreShown()
    {
        support::TestDesk desk;
        messages::ReceivedMessages received(desk.paths, desk.log, desk.clock);
        const QString head = u"SENDSMALLMESSAGE"_s.leftJustified(200);
        for (int length = 0; length < 6; ++length) {
            QVERIFY(!received.ShowSmallMessage(head + QString(length, u'{')));
        }
        QVERIFY(received.ShowSmallMessage(head + u"{{{}}}"_s));
        QCOMPARE(desk.fileBytes(desk.paths.SmsFile), "<2026-11-21 09:30:15>  \r\n\r\n\r\n");
        QVERIFY(QDir(desk.paths.SmsFolder).removeRecursively());
        desk.writeFile(desk.paths.SmsFolder, "a file in its place");
        QVERIFY(received.ShowSmallMessage(head + u"{{{x}}}"_s));
    }

    void aNearlyFullDiskIsKeptForWhatTheDeskCannotDoWithout()
    {
        support::TestDesk desk;
        qint64 free = messages::ReceivedMessages::reserve - 1;
        messages::ReceivedMessages received(desk.paths, desk.log, desk.clock,
                                            [&free](const QString &) { return free; });
        QList<messages::Filing> told;
        received.onFilingChanged([&told](messages::Filing filing) { told.append(filing); });
        const QString record = u"SENDSMALLMESSAGE"_s.leftJustified(200) + u"{{{x}}}"_s;
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(received.ShowSmallMessage(record)->filing, messages::Filing::DiskNearlyFull);
        }
        QVERIFY(!QFile::exists(desk.paths.SmsFile));
        ++free;
        QTRY_COMPARE_WITH_TIMEOUT(told.size(), 2, 20000); // without a further message
        QCOMPARE(received.ShowSmallMessage(record)->filing, messages::Filing::Works);
        const QByteArray whole = desk.fileBytes(desk.paths.SmsFile);
        {
            const support::FullDisk disk(rlim_t(whole.size() + 5));
            QCOMPARE(received.ShowSmallMessage(record)->filing, messages::Filing::Fails);
        }
        QCOMPARE(received.ShowSmallMessage(record)->filing, messages::Filing::Works);
        QCOMPARE(desk.fileBytes(desk.paths.SmsFile), whole + whole);
        QCOMPARE(told, (QList{messages::Filing::DiskNearlyFull, messages::Filing::Works,
                              messages::Filing::Fails, messages::Filing::Works}));
    }

    void aTypedMessageGoesToAllAndStaysInItsForm()
    {
        Desk desk;
        desk.windows.showSend();
        Form::activate();
        Form::key("txtSendTo", Qt::Key_Tab);
        QTRY_COMPARE(Form::text("txtSendTo"), u"ALL"_s);
        support::keys(u"  "_s);
        Form::press("Command6"); // which goes nowhere
        QCOMPARE(desk.server.sent, QStringList());
        QVERIFY(says(u"[MessageEmpty]"_s));
        Form::type("txtSMS", u"lunch at 12"_s);
        Form::press("Command6");
        QCOMPARE(messages::smsText(desk.server.sent.value(0)), u"lunch at 12"_s);
        QVERIFY(says(u"[MessageHandedOver]ALL (09:30:15)"_s));
        Form::set("txtSendTo", u"Anna"_s);
        QTest::keyClick(Form::form(), Qt::Key_Return, Qt::ControlModifier);
        Form::type("txtSendTo", u"Ann"_s); // not completed to the longer name
        Form::press("Command6");
        Form::set("txtSendTo", u"Zoë"_s); // which the Chinese page lacks
        Form::press("Command6");
        QVERIFY(Form::text("lblSent").endsWith(u"\n[MessageToAltered]"_s));
        desk.prompts.expect();
        Form::set("txtSMS", QString(70000, u'x'));
        Form::press("Command6");
        QCOMPARE(desk.prompts.asked, QStringList{u"[MessageCut]"_s});
        QCOMPARE(desk.server.sent.value(1).mid(50, 50).trimmed(), u"Anna"_s);
        QCOMPARE(desk.fileBytes(desk.paths.PopUserDataFolder + u"/txtSendTo_ENG.txt"_s),
                 QByteArray("ALL\r\nAnna\r\nAnn\r\nZoë\r\n"));
        QTest::keyClick(Form::form(), Qt::Key_F1);
        QCOMPARE(desk.navigator.shown, QStringList{u"ShowHelp Popup_Messages"_s});
    }

    void whatWasNotSentIsThereWhenTheFormOpensAgain()
    {
        Desk desk;
        for (const QString &there : {u""_s, u"x"_s, u"xy"_s, u""_s}) {
            desk.windows.showSend();
            QCOMPARE(Form::text("txtSMS"), there);
            QTest::keyClicks(Form::find("txtSendTo"), u"Bo"_s); // in place of the name that stood there
            QCOMPARE(Form::text("txtSendTo"), u"Bo"_s);
            QTest::keyClicks(Form::find("txtSMS"), there.isEmpty() ? u"x"_s : u"y"_s);
            desk.server.reaches = there == "xy"_L1;
            if (!there.isEmpty()) {
                Form::press("Command6");
                QVERIFY(says(desk.server.reaches ? u"[MessageHandedOver]"_s : u"[MessageNotSent]"_s));
            }
            Form::form()->close();
            QTRY_COMPARE(desk.openForms.count(), 0);
        }
        QCOMPARE(messages::smsText(desk.server.sent.value(1)), u"xyy"_s);
        desk.prompts.expect(false);
        QVERIFY(!desk.windows.mayDropDraft());
        QCOMPARE(Form::text("txtSMS"), u"x"_s);
    }

    void noMessageIsLostFromViewAndNoneTakesTheKeyboard()
    {
        Desk desk;
        QLineEdit typing;
        typing.show();
        QVERIFY(QTest::qWaitForWindowActive(&typing));
        for (const QString &text : {u"first"_s, u"second"_s, u"<img src=x>\u202Ethird"_s}) {
            desk.windows.showReceived(text);
        }
        QTRY_VERIFY(Card::form() != nullptr);
        QVERIFY(Card::form()->testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(shown(), u"<img src=x> third"_s);
        QCOMPARE(place(), u"3 / 3"_s);
        // Without a window manager the card is looked at at once.
        QTRY_COMPARE(desk.unread.value(desk.unread.size() - 1), 2);
        Card::press("cmdPrevious");
        QCOMPARE(shown(), u"second"_s);
        desk.windows.showReceived(QString(59999, u'w') + u"end"_s); // does not turn the page
        QTRY_COMPARE(place(), u"2 / 4"_s);
        QCOMPARE(shown(), u"second"_s);
        Card::press("cmdNext");
        Card::press("cmdNext");
        QCOMPARE(shown().remove(u'\n'), QString(59999, u'w') + u"end"_s);
        QVERIFY(!Card::isEnabled("cmdNext"));
        Card::press("cmdPrevious");
        Card::press("Command1");
        QTRY_COMPARE(desk.openForms.count(), 0);
        QCOMPARE(desk.unread.last(), 1); // the first was never looked at
        desk.windows.markAllSeen();
        QCOMPARE(desk.unread.last(), 0);
        desk.windows.showReceived(u"new"_s);
        QCOMPARE(shown(), u"new"_s);
    }

    void hostileTextsStayLinesThatABoxLaysOut()
    {
        Desk desk;
        const QString marks = u"e"_s + QString(60000, QChar(0x0301));
        desk.windows.showReceived(marks + u"\r\n\0\u2028"_s + QChar(0xD800));
        QTRY_VERIFY(Card::form() != nullptr);
        QVERIFY(shown().size() < 1000);
        desk.windows.showReceived(QString(60000, u'\n') + u"end"_s);
        QTRY_VERIFY(shown().endsWith("end"_L1));
        QVERIFY(Card::find<QPlainTextEdit>("txtSMS")->blockCount() < 3000);
        for (int i = 0; i < 300; ++i) {
            desk.windows.showReceived(QString::number(i));
        }
        QTRY_COMPARE(shown(), u"299"_s);
        QCOMPARE(place(), u"100 / 100"_s);
    }
};

QTEST_MAIN(tst_Messages)
#include "tst_Messages.moc"
