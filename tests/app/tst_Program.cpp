#include "ProgramDesk.h"
#include "support/Rows.h"

using Desk = ProgramDesk;

class tst_Program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFirstStartLeavesSettingsAndLogAsGiven()
    {
        Desk desk;
        desk.writeFile(desk.paths.OemMarkFile,
                       QByteArray(68, '#') + QByteArray("Corner Desk").leftJustified(40));
        QVERIFY(QDir(desk.paths.DataFolder).removeRecursively());
        QVERIFY(desk.start());
        QCOMPARE(desk.fileBytes(desk.paths.SettingsFile),
                 QByteArray(212, '\0') +
                     QByteArray("Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID").leftJustified(60) +
                     QByteArray("500,1800,2500,2700,500,1500,1500").leftJustified(40) +
                     QByteArray(",1,1,1,1,1,").leftJustified(20) + QByteArray(2, '\0'));
        for (const char *line :
             {"IP State 0", "remote port 1971", "RemoteIp 0.0.0.0", "local IP ", "loca port "}) {
            QVERIFY2(desk.logged(QByteArray(">  ") + line) == 1, line);
        }
        QVERIFY(!desk.logged(">  !"));
        QVERIFY(desk.window().isVisible());
        QCOMPARE(desk.window().windowTitle(), u"Corner Desk Version 1.00C42"_s);
    }

    void flagsAndSettingsDecideWhatACallShows()
    {
        const QString unknownNumber = u"2125550188"_s;
        for (const auto &[number, all, list, popsUp, rows] : {std::tuple(vipNumber, 0, 0, true, 1),
                                                              {silentNumber, 0, 0, false, 0},
                                                              {silentNumber, 1, 0, true, 1},
                                                              {silentNumber, 2, 0, false, 0},
                                                              {unknownNumber, 0, -1, false, 1}}) {
            Desk desk;
            core::SettingsRecord record;
            record.PopupAllLines = qint16(all);
            record.ListUnpoppedCalls = qint16(list);
            desk.writeFile(desk.paths.SettingsFile, record.toBytes());
            QVERIFY(desk.start());
            desk.window().hide();
            desk.send(call(number, u"Harbor Lantern Hotel"_s));
            QTRY_COMPARE(desk.logged("<CRMV1"), 2);
            QTRY_VERIFY(desk.lastCaller().contains(number)); // the bar names every caller
            QTRY_COMPARE(openForm<lookup::frmPopUp>() != nullptr, popsUp);
            QCOMPARE(desk.window().isVisible(), popsUp);
            QTRY_COMPARE(desk.window().calls().rowCount(), rows);
        }
    }

    void aVipPopsUpWithRowBarAndPlace()
    {
        Desk desk;
        desk.runSql(desk.paths.StartFolder + u"/AreaCode.mdb"_s,
                    u"create table placename (AreaCode text, Area text, PlaceName text);"
                    "insert into placename values('617','North','Harbour'), ('6','Far','Out'), "
                    "('617','Second','Entry'), ('x1','Small','x'), (null,'No','Code'), "
                    "('1234567890123456789012345','Long',null)"_s);
        QVERIFY(desk.start());
        desk.send(call(vipNumber, u"老街火锅店"_s));
        QVERIFY((find<lookup::frmPopUp, QPlainTextEdit>("txtAbout")->toPlainText().contains(vipNumber)));
        QTRY_COMPARE(desk.window().calls().cell(0, u"CallerID"_s), vipNumber);
        QCOMPARE(desk.window().calls().cell(0, u"LineNo"_s), u"5550100"_s);
        QCOMPARE(desk.window().calls().cell(0, u"ID"_s), u"CUSTOMER1"_s);
        QTRY_VERIFY(desk.source().endsWith(u"2026-11-21 09:30:15  127.0.0.1"_s));
        QTRY_COMPARE(desk.lastCaller(), u"   6175550101     老街火锅店     North(Harbour)\n"
                                        "last call time:2026-11-20 10:42 ext:201      tel:5550106        "_s);
        for (const auto &[number, place] : {std::pair(u"618"_s, "Far(Out)\n"_L1),
                                            {u"12345678901234567890123456789"_s, "Long()\n"_L1},
                                            {u"X1"_s, "\n"_L1}}) {
            desk.send(call(number, {}));
            QTRY_VERIFY(desk.lastCaller().startsWith(u"   "_s + number + u"          "_s + place));
        }
    }

    void aCallStandsTwiceInTheLogAndItsSenderInTheSettings()
    {
        Desk desk;
        QVERIFY(desk.start());
        desk.showsACall();
        QTRY_COMPARE(desk.logged("<CRMV1"), 2);
        const auto record = core::SettingsRecord::fromBytes(desk.fileBytes(desk.paths.SettingsFile));
        QCOMPARE(record.LastSenderIp.text(), u"127.0.0.1"_s);
        QCOMPARE(record.LastSenderPort, desk.unit.localPort());
        QVERIFY(QFile::remove(desk.paths.SettingsFile));
        desk.showsACall();
        QTRY_COMPARE(desk.logged("<CRMV1"), 4);
        desk.prompts.expect(true);
        desk.choose("Command2"); // what was put off a moment would be written now
        QVERIFY(!QFile::exists(desk.paths.SettingsFile));
    }

    void onlyListedSendersAreHeardAndTheOptionsChangeTheList()
    {
        Desk desk;
        desk.writeFile(desk.paths.SendersFile, "127.0.0.1 # the unit\r\n127.0.0.\r\n");
        desk.prompts.expect();
        QVERIFY(desk.start());
        QVERIFY(desk.prompts.asked.first().endsWith("\n2: 127.0.0."_L1));
        QUdpSocket stranger;
        QVERIFY(stranger.bind(QHostAddress(u"127.0.0.9"_s)));
        const auto strange = [&](const QByteArray &bytes) {
            stranger.writeDatagram(bytes, QHostAddress::LocalHost, desk.port);
        };
        strange(QByteArray("SHUTDOWNALL").leftJustified(50));
        strange(call(silentNumber, {}));
        desk.showsACall();
        QVERIFY(!desk.ended && !desk.logged("SHUTDOWNALL") && !desk.logged(silentNumber.toUtf8()));
        QCOMPARE(desk.logged("datagrams refused from 127.0.0.9: 1"), 1);
        QVERIFY(desk.source().endsWith("127.0.0.1"_L1));
        QCOMPARE(desk.fileBytes(desk.paths.SettingsFile).mid(100, 10), "127.0.0.1 ");
        desk.choose("Command3");
        auto *list = find<options::frmOptions, QPlainTextEdit>("txtSenders");
        QCOMPARE(list->toPlainText(), u"127.0.0.1 # the unit\n127.0.0.\n"_s);
        list->setPlainText(u"127.0.0.0/28"_s);
        find<options::frmOptions>("Command3")->click();
        QCOMPARE(desk.fileBytes(desk.paths.SendersFile), "127.0.0.0/28");
        strange(call(silentNumber, {}));
        QTRY_VERIFY(desk.lastCaller().contains(silentNumber));
    }

    void aDeskWithoutFilesStartsAndSaysSo()
    {
        Desk desk(false);
        desk.prompts.expect();
        QVERIFY(desk.start());
        QVERIFY(desk.prompts.asked.first().startsWith(u"No Lang.mdb file found! path = "_s));
        QVERIFY(desk.prompts.asked.first().contains("calldesk-mkdesk"_L1));
        QVERIFY(desk.logged(">  !FixCustomerData "));
        QVERIFY(desk.source().endsWith("callers are not identified yet"_L1));
        for (const auto &[button, works] : {std::pair("Command4", false),
                                            {"Command1", false},
                                            {"cmdCallInfo", false},
                                            {"Command3", true}}) {
            QCOMPARE(desk.window().findChild<QToolButton *>(QLatin1String(button))->isEnabled(), works);
        }
    }

    // The operator's patience ended while the old files made place for the new ones.
    void aConversionThatWasBrokenOffIsCompletedFirst()
    {
        Desk desk;
        QDir folder(desk.paths.StartFolder);
        QVERIFY(folder.mkdir(u"Old files 2026-11-21"_s) && folder.mkdir(u"Conversion ready 2026-11-21"_s));
        desk.writeFile(folder.filePath(u"Old files 2026-11-21/Customer.ccsm"_s), "old");
        QVERIFY(folder.rename(u"Customer.ccsm"_s, u"Conversion ready 2026-11-21/Customer.ccsm"_s));
        QVERIFY(desk.start());
        QCOMPARE(desk.logged("conversion of the old databases is completed"), 1);
        QCOMPARE(desk.logged(">  !"), 0);
        QCOMPARE(folder.entryList({u"Conversion*"_s}), QStringList());
        QCOMPARE(desk.fileBytes(folder.filePath(u"Old files 2026-11-21/Customer.ccsm"_s)), "old"_ba);
        desk.showsACall(); // of a customer on file
    }

    void aDeskWhoseConversionCannotBeCompletedIsNotOpened()
    {
        Desk desk;
        QDir folder(desk.paths.StartFolder);
        QVERIFY(folder.mkdir(u"Conversion ready 2026-11-21"_s));
        QVERIFY(folder.mkdir(u"Conversion.lock"_s)); // a folder, so that nobody can take it
        QVERIFY(folder.rename(u"Customer.ccsm"_s, u"Conversion ready 2026-11-21/Customer.ccsm"_s));
        const QStringList before = folder.entryList();
        desk.prompts.expect();
        QVERIFY(!desk.start());
        QVERIFY(desk.prompts.asked.first().contains("calldesk-mkdesk --convert"_L1));
        QVERIFY(desk.prompts.asked.first().contains(desk.paths.StartFolder));
        QCOMPARE(desk.logged(">  !completeConversion "), 1);
        QCOMPARE(folder.entryList(), before);
    }

    void aTakenPortIsToldAndHeardOnceItIsFree()
    {
        Desk desk;
        QUdpSocket other;
        QVERIFY(other.bind(QHostAddress::AnyIPv4, desk.port));
        desk.prompts.expect();
        QVERIFY(desk.start());
        QVERIFY(desk.prompts.asked.first().contains(u"UDP port 1972"_s));
        QVERIFY(desk.source().contains(u"UDP port 1972"_s));
        QVERIFY(desk.prompts.asked.first().contains("CallDesk in another user's session"_L1));
        QVERIFY(desk.logged(">  !iniUDP 10048 "));
        other.close();
        desk.choose("Command3");
        find<options::frmOptions, QTabWidget>("SSTab1")->setCurrentIndex(1);
        type<options::frmOptions>("txtPort", u"2000"_s);
        press<options::frmOptions>("Command3");
        QVERIFY(!desk.source().contains(u"UDP port 1972"_s));
        QVERIFY(!other.bind(QHostAddress::AnyIPv4, desk.port, QAbstractSocket::ShareAddress));
        desk.showsACall();
    }

    void aCallThatWaitsBehindAQuestionIsSaidToWait()
    {
        Desk desk;
        QVERIFY(desk.start());
        desk.prompts.expect(false, [&desk] {
            desk.send(call(vipNumber, {}));
            QTRY_VERIFY(desk.source().startsWith("A call is waiting"_L1));
            QVERIFY(desk.lastCaller().isEmpty());
        });
        desk.choose("Command2"); // exit
        QTRY_VERIFY(desk.lastCaller().contains(vipNumber));
        QTRY_VERIFY(desk.source().startsWith("Last received: "_L1));
    }

    void aDatabaseThatCannotBeReadIsNamedAndCallsShow()
    {
        for (const QString &file :
             {u"Customer.ccsm"_s, u"SimplePhoneBook.cpbk"_s, u"Lang.mdb"_s, u"AreaCode.mdb"_s}) {
            for (const char *contents : {"", "No database", "Another schema"}) {
                Desk desk;
                const QString path = desk.paths.StartFolder + u'/' + file;
                desk.writeFile(path, contents);
                if (contents == "Another schema"_ba && QFile::remove(path)) {
                    desk.runSql(path, u"create table strangers (name text)"_s);
                }
                if (file == "Lang.mdb"_L1) {
                    desk.prompts.expect();
                }
                QVERIFY(desk.start());
                desk.showsACall();
                QStringList errors = desk.logMessages().filter(QRegularExpression(u"^!"_s));
                QVERIFY2(!errors.isEmpty(), qPrintable(file));
                QCOMPARE(errors.removeDuplicates(), 0); // one a procedure that needed the file
                QCOMPARE(errors.filter(file), errors);
                QTRY_VERIFY(file != "Lang.mdb"_L1 || desk.source().startsWith("Last received: "_L1));
            }
        }
    }

    void customersThatWereLockedAtTheStartAreReadOnceTheyAreFree()
    {
        Desk desk;
        std::optional<store::Database> other(desk.paths.CustomerFile);
        other->Execute(u"begin exclusive"_s);
        QVERIFY(desk.start());
        for (const char *procedure : {"LoadCustomerPhoneNumberSnArray ", "FixCustomerData 5 ",
                                      "UpdateDatabase_Customer_0606191111 5 "}) {
            QVERIFY2(desk.logged(QByteArray(">  !") + procedure) == 1, procedure);
        }
        const QString unavailable = desk.source();
        QVERIFY(unavailable.endsWith("callers are not identified yet"_L1));
        desk.send(call(vipNumber, {}, u"5550100"_s, {}, {})); // shown at once, and again once he is known
        QTRY_VERIFY(desk.lastCaller().contains(vipNumber));
        QCOMPARE(desk.window().calls().rowCount(), 0);
        other.reset();
        QTRY_COMPARE(desk.window().calls().cell(0, u"ID"_s), u"CUSTOMER1"_s);
        QVERIFY(desk.source() != unavailable);
        QTRY_VERIFY(desk.lastCaller().contains(u"Harbor Lantern Hotel"_s));
        QCOMPARE(support::rowsOf(desk.paths.CustomerFile, u"select count(*) from CallInfo"_s), u"0"_s);
        QVERIFY((find<lookup::frmPopUp, QPlainTextEdit>("txtAbout")
                     ->toPlainText()
                     .contains(u"Harbor Lantern Hotel"_s)));
    }

    void aCallerWhomTheSenderDoesNotKnowIsTheDesksCustomerAndHisCardIsToldApartFromTheNextCall()
    {
        Desk desk;
        QVERIFY(desk.start());
        desk.send(call(vipNumber, {}, u"销售部"_s, sim::CodePageChoice(), {}));
        QVERIFY((find<lookup::frmPopUp, QPlainTextEdit>("txtAbout")
                     ->toPlainText()
                     .contains(u"Harbor Lantern Hotel"_s)));
        const auto notice = [] { return find<lookup::frmPopUp, QLabel>("lblBlackListNotice")->text(); };
        const QString ringing = notice();
        QTRY_COMPARE(desk.window().calls().cell(0, u"ID"_s), u"CUSTOMER1"_s);
        QCOMPARE(desk.window().calls().cell(0, u"SN"_s), u"001"_s);
        QTRY_VERIFY(desk.lastCaller().contains(u"Harbor Lantern Hotel"_s));
        support::clickCell(find<mainwindow::FrmMain, QTableView>("gridCallerId"), 0, 2, true);
        QCOMPARE((find<customers::FrmEditCustomer, QLineEdit>("txtSN")->text()), u"1"_s);
        desk.send(call(u"2125550188"_s, u"An innocent"_s, u"5550100"_s, {}, {}));
        QTRY_COMPARE(notice(), u"Earlier call, 09:30 (VIP)"_s);
        desk.send(call(vipNumber, u"Harbor Lantern Hotel"_s));
        QTRY_COMPARE(notice(), ringing);
    }

    void messagesThatCannotBeFiledAreSaidToBeForAsLongAsThatLasts()
    {
        Desk desk;
        QVERIFY(desk.start());
        QVERIFY(QDir().mkdir(desk.paths.SmsFile));
        const QByteArray message = QByteArray("SENDSMALLMESSAGE").leftJustified(200) + "{{{lunch}}}";
        desk.send(message);
        QTRY_VERIFY(desk.source().startsWith("Messages cannot be saved "_L1));
        const auto notFiled = [] { return find<messages::frmShowSMS, QLabel>("lblNotFiled"); };
        QTRY_COMPARE(notFiled()->text(), desk.source());
        QVERIFY(QDir().rmdir(desk.paths.SmsFile));
        desk.send(message);
        QTRY_VERIFY(desk.source().startsWith("Last received: "_L1));
        QTRY_VERIFY(!notFiled()->isVisible());
        press<messages::frmShowSMS>("cmdPrevious");
        QVERIFY(notFiled()->isVisible()); // that one is in no log
        QVERIFY(!(QFile::permissions(desk.paths.SmsFile) & QFile::Permissions(0x0077)));
        QVERIFY(!(QFile::permissions(desk.paths.DataFolder) & QFile::Permissions(0x0077)));
    }

    void whateverStandsInTheDataFolderTheProgramShowsCalls()
    {
        const QList<std::function<bool(Desk &)>> accidents = {
            [](Desk &desk) { return QDir().mkdir(desk.paths.RunLogFile); },
            [](Desk &desk) { return QDir().mkdir(desk.paths.SettingsFile); },
            [](Desk &desk) {
                desk.writeFile(desk.paths.SettingsFile, QByteArray(333, '\xff'));
                return QFile::setPermissions(desk.paths.SettingsFile, QFile::ReadOwner);
            },
            [](Desk &desk) {
                const bool removed = QDir(desk.paths.DataFolder).removeRecursively();
                desk.writeFile(desk.paths.DataFolder, "in the way");
                return removed;
            }};
        for (const auto &happens : accidents) {
            Desk desk;
            QVERIFY(happens(desk));
            QVERIFY(desk.start());
            desk.showsACall();
        }
    }

    void hostileDatagramsLeaveTheProgramAlive()
    {
        Desk desk;
        QVERIFY(desk.start());
        const QByteArray record = call(vipNumber, u"中文名称 <img src=x>"_s);
        for (qsizetype length = 0; length <= record.size(); ++length) {
            desk.send(record.first(length));
        }
        for (const char filler : {'\0', '\xff', 'x', '\n'}) {
            desk.send(QByteArray(65507, filler));
        }
        desk.send("<CRMV1\x1b[2J" + QByteArray(200, '\xe2'));
        desk.send("SENDSMALLMESSAGE" + QByteArray(60000, '\x81'));
        desk.send("the end");
        QTRY_VERIFY_WITH_TIMEOUT(desk.logged("the end"), 20000);
        QVERIFY(desk.window().isVisible());
    }
};

QTEST_MAIN(tst_Program)
#include "tst_Program.moc"
