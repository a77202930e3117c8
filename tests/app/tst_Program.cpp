#include "ProgramDesk.h"
#include "copies/CopyFolder.h"
#include "support/Rows.h"

#include <QNetworkDatagram>

using Desk = ProgramDesk;

class tst_Program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFirstStartMakesItsFolderAndSaysNothingWrong()
    {
        Desk desk;
        desk.writeFile(desk.paths.OemMarkFile, QByteArray(68, '#') + "Corner Desk");
        QVERIFY(QDir(desk.paths.DataFolder).removeRecursively());
        QVERIFY(desk.start());
        QVERIFY(QFile::exists(desk.paths.SettingsFile) && desk.logged(">  loca port "));
        QVERIFY(!desk.logged(">  !"));
        QVERIFY(desk.window().isVisible());
        QCOMPARE(desk.window().windowTitle(), u"Corner Desk Version 1.00C42"_s);
    }

    void aVipPopsUpWithRowBarAndPlace()
    {
        Desk desk;
        desk.runSql(desk.paths.StartFolder + u"/AreaCode.mdb"_s,
                    u"create table placename (AreaCode text, Area text, PlaceName text);"
                    "insert into placename values('617','North','Harbour')"_s);
        QVERIFY(desk.start());
        desk.send(call(vipNumber, u"老街火锅店"_s));
        QVERIFY(desk.card().contains(vipNumber));
        QTRY_COMPARE(desk.window().calls().cell(0, u"CallerID"_s), vipNumber);
        QCOMPARE(desk.window().calls().cell(0, u"LineNo"_s), u"5550100"_s);
        QCOMPARE(desk.window().calls().cell(0, u"ID"_s), u"CUSTOMER1"_s);
        QVERIFY(desk.source().endsWith(u"2026-11-21 09:30:15  127.0.0.1"_s));
        QCOMPARE(desk.logged("<CRMV1"), 2);
        QTRY_COMPARE(desk.lastCaller(), u"   6175550101     老街火锅店     North(Harbour)\n"
                                        "last call time:2026-11-20 10:42 ext:201      tel:5550106        "_s);
        desk.send(call(u"2125550188"_s, u"An innocent"_s, u"5550100"_s, {}, {}));
        QTRY_COMPARE((find<lookup::frmPopUp, QLabel>("lblBlackListNotice")->text()),
                     u"Earlier call, 09:30 (VIP)"_s);
    }

    void onlyListedSendersAreHeardAndTheOptionsChangeTheList()
    {
        Desk desk;
        desk.writeFile(desk.paths.SendersFile, "127.0.0.9\r\n127.0.0.\r\n");
        desk.prompts.expect();
        QVERIFY(desk.start());
        desk.send(QByteArray("SHUTDOWNALL").leftJustified(50));
        QTRY_COMPARE(desk.logged("datagrams refused from 127.0.0.1: 1"), 1);
        QVERIFY(!desk.ended);
        desk.choose("Command3");
        auto *list = find<options::frmOptions, QPlainTextEdit>("txtSenders");
        QCOMPARE(list->toPlainText(), u"127.0.0.9\n127.0.0.\n"_s);
        list->setPlainText(u"127.0.0.0/28"_s);
        find<options::frmOptions>("Command3")->click();
        QCOMPARE(desk.fileBytes(desk.paths.SendersFile), "127.0.0.0/28");
        desk.showsACall();
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
        for (const char *button : {"Command4", "Command1", "cmdCallInfo", "Command3"}) {
            const auto *shown = desk.window().findChild<QToolButton *>(QLatin1String(button));
            QCOMPARE(shown->isEnabled(), button == "Command3"_ba);
        }
    }

    // The operator's patience ended while the old files made place for the new ones.
    void aConversionThatWasBrokenOffIsCompletedFirstOrTheDeskIsNotOpened()
    {
        for (const bool completes : {true, false}) {
            Desk desk;
            QDir folder(desk.paths.StartFolder);
            const QString ready = u"Conversion ready 2026-11-21"_s;
            QVERIFY(folder.mkdir(ready) && folder.rename(u"Customer.ccsm"_s, ready + u"/Customer.ccsm"_s));
            if (!completes) {
                QVERIFY(folder.mkdir(u"Conversion.lock"_s)); // a folder, so that nobody can take it
                desk.prompts.expect();
            }
            const QStringList before = folder.entryList();
            QCOMPARE(desk.start(), completes);
            if (completes) {
                QCOMPARE(folder.entryList({u"Conversion*"_s}), QStringList());
                desk.showsACall(); // of a customer on file
            } else {
                QVERIFY(desk.prompts.asked.first().contains("calldesk-mkdesk --convert"_L1));
                QCOMPARE(folder.entryList(), before);
            }
        }
    }

    void aTakenPortIsToldAndHeardOnceItIsFree()
    {
        Desk desk;
        QUdpSocket other;
        QVERIFY(other.bind(QHostAddress::AnyIPv4, desk.port));
        desk.prompts.expect();
        QVERIFY(desk.start());
        QVERIFY(desk.source().contains(u"UDP port 1972"_s));
        other.close();
        desk.choose("Command3");
        find<options::frmOptions, QTabWidget>("SSTab1")->setCurrentIndex(1);
        support::act(u"frmOptions"_s, u"txtPort=2000 Command3"_s);
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
            for (const char *contents : {"", "No database"}) {
                Desk desk;
                desk.writeFile(desk.paths.StartFolder + u'/' + file, contents);
                const bool told = file != "AreaCode.mdb"_L1;
                if (told) {
                    desk.prompts.expect();
                }
                QVERIFY(desk.start());
                desk.showsACall();
                QTRY_COMPARE(desk.prompts.asked.size(), told ? 1 : 0);
                QStringList errors = desk.logMessages().filter(QRegularExpression(u"^!"_s));
                QVERIFY2(!errors.isEmpty(), qPrintable(file));
                QCOMPARE(errors.removeDuplicates(), 0); // one a procedure that needed the file
                QCOMPARE(errors.filter(file), errors);
            }
        }
    }

    void customersThatWereLockedAtTheStartAreReadOnceTheyAreFree()
    {
        Desk desk;
        std::optional<support::TakenFile> other(desk.paths.CustomerFile);
        QVERIFY(desk.start());
        const QString unavailable = desk.source();
        QVERIFY(unavailable.endsWith("callers are not identified yet"_L1));
        desk.send(call(vipNumber, {}, u"5550100"_s, {}, {})); // shown at once, and again once he is known
        QTRY_VERIFY(desk.lastCaller().contains(vipNumber));
        QCOMPARE(desk.window().calls().rowCount(), 0);
        other.reset();
        QTRY_COMPARE(desk.window().calls().cell(0, u"ID"_s), u"CUSTOMER1"_s);
        QVERIFY(desk.source() != unavailable);
        QVERIFY(desk.card().contains(u"Harbor Lantern Hotel"_s));
    }

    void messagesThatCannotBeFiledAreSaidToBeForAsLongAsThatLasts()
    {
        Desk desk;
        QVERIFY(desk.start());
        QVERIFY(QDir().mkdir(desk.paths.SmsFile));
        const QByteArray message = QByteArray("SENDSMALLMESSAGE").leftJustified(200) + "{{{lunch}}}";
        desk.send(message);
        QTRY_VERIFY(desk.source().startsWith("Messages cannot be saved "_L1));
        QVERIFY(QDir().rmdir(desk.paths.SmsFile));
        desk.send(message);
        QTRY_VERIFY(desk.source().startsWith("Last received: "_L1));
        press<messages::frmShowSMS>("cmdPrevious");
        QVERIFY((find<messages::frmShowSMS, QLabel>("lblNotFiled")->isVisible())); // that one is in no log
    }

    void whateverStandsInTheDataFolderTheProgramShowsCalls()
    {
        for (const bool settings : {true, false}) {
            Desk desk;
            const QString path = settings ? desk.paths.SettingsFile : desk.paths.DataFolder;
            QVERIFY(settings || QDir(path).removeRecursively());
            desk.writeFile(path, QByteArray(333, '\xff'));
            QVERIFY(desk.start());
            desk.showsACall();
        }
    }

    void hostileDatagramsLeaveTheProgramAlive()
    {
        Desk desk;
        QVERIFY(desk.start());
        desk.send(call(vipNumber, u"中文名称 <img src=x>"_s).chopped(20));
        for (const QByteArray &bytes :
             {QByteArray(65507, '\0'), QByteArray(65507, '\xff'), QByteArray(65507, '\n'),
              "<CRMV1\x1b[2J" + QByteArray(200, '\xe2'), "SENDSMALLMESSAGE" + QByteArray(60000, '\x81')}) {
            desk.send(bytes);
        }
        desk.send(call(silentNumber, {}));
        QTRY_VERIFY(desk.lastCaller().contains(silentNumber));
    }

    void aMessageArrivesAsItWasTypedWhateverTheSystemSpeaks()
    {
        for (const auto &[system, language, text] :
             {std::tuple(0x0409, u"CHS"_s, u"Yes \u2013 O\u2019Brien\u2019s at {{12}}"_s),
              {0x0804, u"AUTO"_s, u"请回电张三"_s}, // which could be UTF-8
              {0x042A, u"USER"_s, u"Gọi lại cho bà Nguyễn"_s},
              {0x0401, u"ARA"_s, u"اتصل بسارة من فضلك"_s}}) {
            Desk desk;
            desk.systemLanguageId = quint16(system);
            desk.setLanguage(language);
            QVERIFY(desk.start());
            desk.send("the server is up");
            QTRY_VERIFY(desk.logged("the server is up"));
            desk.choose("cmdSendSMS");
            find<messages::frmSendSMS, QPlainTextEdit>("txtSMS")->setPlainText(text);
            press<messages::frmSendSMS>("Command6");
            QTRY_VERIFY(desk.unit.hasPendingDatagrams());
            desk.send(desk.unit.receiveDatagram().data()); // the server passes it on to all
            QCOMPARE((find<messages::frmShowSMS, QPlainTextEdit>("txtSMS")->toPlainText()), text);
            QCOMPARE(desk.fileBytes(desk.paths.SmsFile),
                     "<2026-11-21 09:30:15>  \r\n" + text.toUtf8() + "\r\n\r\n");
        }
    }

    void aLanguageThatWasLockedAtTheStartIsShownOnceItIsFree()
    {
        Desk desk;
        desk.setLanguage(u"FRN"_s);
        std::optional<support::TakenFile> other(desk.paths.StartFolder + u"/FRN.lan"_s);
        QVERIFY(desk.start());
        const auto *phoneBook = desk.window().findChild<QAction *>(u"Command4"_s);
        QCOMPARE(phoneBook->text(), u"Phone book"_s);
        desk.prompts.expect(false); // in English, too
        desk.choose("Command2");
        QVERIFY(desk.prompts.asked.value(0).startsWith("Exit the program?"_L1));
        other.reset();
        QTRY_COMPARE(phoneBook->text(), u"Répertoire"_s);
        QVERIFY(desk.source().startsWith("Rien "_L1));
    }

    void theFirstStartOfADayCopiesTheDeskWhichComesBackFromIt()
    {
        Desk desk;
        const copies::CopyFolder copies(desk.paths);
        QVERIFY(desk.start());
        QTRY_COMPARE(copies.copies().size(), 1);
        desk.program.reset();
        QByteArray bytes = desk.fileBytes(desk.paths.CustomerFile);
        bytes.replace(3 * 4096, 8 * 4096, QByteArray(8 * 4096, '\xA5')); // still a database
        desk.writeFile(desk.paths.CustomerFile, bytes);
        for ([[maybe_unused]] const auto told : {u"damaged", u"restored"}) {
            desk.prompts.expect();
        }
        QVERIFY(desk.start());
        desk.choose("Command4");
        const auto *entries = find<phonebook::frmSimplePhoneBook, QTableView>("DbgPhoneBook")->model();
        const int before = entries->rowCount();
        desk.runSql(desk.paths.PhoneBookFile, u"delete from phonebook where SN=1"_s);
        QTRY_COMPARE(desk.prompts.asked.size(), 2);
        QTRY_COMPARE(entries->rowCount(), before - 1); // the lists follow
        QVERIFY(desk.prompts.asked.first().startsWith(u"Customer.ccsm is damaged"_s));
        desk.send(call(vipNumber, {}));
        QVERIFY(desk.card().contains(u"Harbor Lantern Hotel"_s));
        QVERIFY(QFile::exists(desk.paths.CustomerFile + u" damaged 2026-11-21"_s));
    }
};

QTEST_MAIN(tst_Program)
#include "tst_Program.moc"
