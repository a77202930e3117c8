#include "reception/Endpoint.h"
#include "reception/Forwarding.h"
#include "support/TestDesk.h"

#include <QNetworkDatagram>

/// Real datagrams over the loopback: all of them, in order, and none behind the operator's back.
class tst_Endpoint : public QObject
{
    Q_OBJECT

    static constexpr quint16 port = 20000; // below those from which the system chooses

    const QByteArray call = "<CRMV1, the rest does not matter";

    /// A caller-ID unit at the other end of the loopback.
    struct Unit : QUdpSocket
    {
        explicit Unit(const QString &address = u"127.0.0.1"_s) { bind(QHostAddress(address)); }
        void send(const QByteArrayList &datagrams)
        {
            for (const QByteArray &bytes : datagrams) {
                writeDatagram(bytes, QHostAddress::LocalHost, port);
            }
        }
        QByteArray answer() { return waitForReadyRead(30000) ? receiveDatagram().data() : ""; }
    };

    static QByteArrayList numbers(int first, int last)
    {
        QByteArrayList datagrams;
        for (int number = first; number <= last; ++number) {
            datagrams.append(QByteArray::number(number));
        }
        return datagrams;
    }

    static void letEventsCome()
    {
        for (int turn = 0; turn < 50; ++turn) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        }
    }

    struct Reception : support::TestDesk
    {
        support::FakePrompts prompts;
        support::KeyTexts texts;
        core::Settings settings{paths, log};
        core::CodePage codePage{936};
        QByteArrayList handled;
        std::function<void()> whileHandling;
        std::unique_ptr<reception::Endpoint> endpoint;
        reception::Senders senders{paths, log, clock};
        reception::Forwarding forwarding{{settings, log, codePage, senders}};
        Unit unit;
        QList<bool> callWaits; ///< as it was told

        Reception() { open(); }
        void open()
        {
            const auto handle = [this](const reception::Datagram &datagram) {
                handled.append(datagram.bytes);
                if (const auto once = std::exchange(whileHandling, {})) {
                    once();
                }
            };
            endpoint = std::make_unique<reception::Endpoint>(
                reception::Endpoint::Context{settings, log, prompts, texts, codePage, senders}, port, handle);
            connect(endpoint.get(), &reception::Endpoint::callWaits,
                    [this](bool waits) { callWaits.append(waits); });
            endpoint->iniUDP();
        }
    };

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"."_s)); }

    void answersGoToTheLastSenderEvenOfTheRunBefore()
    {
        Reception reception;
        reception.endpoint = nullptr;
        reception.settings.record.LastSenderIp.setText(u"127.0.0.1"_s);
        reception.settings.record.LastSenderPort = reception.unit.localPort();
        reception.settings.record.LocalPort = 2000;
        reception.open();
        QVERIFY(reception.logMessages().contains(u"loca port 20000"_s));
        reception.endpoint->SendServer(u"REFRESH 销售"_s);
        QCOMPARE(reception.unit.answer(), "REFRESH \xCF\xFA\xCA\xDB");
        Unit second;
        second.send({"1"});
        QTRY_COMPARE(reception.handled.size(), 1);
        reception.endpoint->SendServer(u"again"_s);
        QCOMPARE(second.answer(), "again");
    }

    void aChangedPortTakesEffectAtOnceUntilAUnitIsHeard()
    {
        for (const QString &lastSender : {u""_s, u"0.0.0.0"_s, u"127.0.0.1"_s}) {
            Reception reception;
            core::SettingsRecord &record = reception.settings.record;
            record.LastSenderIp.setText(lastSender);
            record.LastSenderPort = 4711;
            for (const int setting : {2000, 3000}) {
                record.LocalPort = setting;
                reception.endpoint->iniUDP();
            }
            const bool heard = lastSender == "127.0.0.1"_L1;
            QCOMPARE(reception.logMessages().filter(u"remote port "_s).mid(1),
                     heard ? QStringList(2, u"remote port 4711"_s)
                           : QStringList({u"remote port 1999"_s, u"remote port 2999"_s}));
        }
    }

    void aListTakesAddressesAndNetworksAndNamesEveryOtherLine()
    {
        using reception::AddressList;
        for (const auto &[line, in, out] :
             {std::tuple(u" 192.168.10.7 # the unit"_s, u"192.168.10.7"_s, u"192.168.10.8"_s),
              {u"192.168.10.0/24"_s, u"::ffff:192.168.10.255"_s, u"192.168.11.0"_s},
              {u"192.168.10.77/25"_s, u"192.168.10.0"_s, u"192.168.10.128"_s},
              {u"::ffff:10.0.0.0/104"_s, u"10.9.9.9"_s, u"11.0.0.0"_s},
              {u"fe80::/10"_s, u"febf::1"_s, u"fec0::1"_s},
              {u"0.0.0.0/0"_s, u"0.0.0.0"_s, u"::1"_s}}) {
            const AddressList list = AddressList::fromText(line);
            QVERIFY2(list.contains(QHostAddress(in)), qPrintable(line));
            QVERIFY2(!list.contains(QHostAddress(out)), qPrintable(line));
        }
        const QString unreadable = u"192.168.10\n192.168.10.0/33\n1.2.3.4/\n1.2.3.256\n10.0.0.0/8 10.0.0.1\n"
                                   "::/129\nunit\n1.2.3.4/255.0.0.0\n-1.2.3.4"_s;
        const AddressList list =
            AddressList::fromText(u"\uFEFF# head\r\n\r\n 10.0.0.1\r\n"_s.mid(1) + unreadable);
        QCOMPARE(list.size(), 1);
        QCOMPARE(list.unreadable().size(), unreadable.count(u'\n') + 1);
        QCOMPARE(list.unreadable().first(), u"4: 192.168.10"_s);
    }

    void onlyWhoIsListedIsHeardAndAnswered()
    {
        Reception reception;
        Unit stranger(u"127.0.0.2"_s);
        const auto allow = [&](const QByteArray &list) {
            reception.writeFile(reception.paths.SendersFile, list);
            reception.clock.time = reception.clock.time.addSecs(60);
        };
        reception.settings.record.LastSenderIp.setText(u"127.0.0.2"_s); // heard before there was a list
        allow("\xEF\xBB\xBF# the unit\r\n127.0.0.1\r\n");
        QVERIFY(!reception.endpoint->SendServer(u"to a stranger"_s));
        stranger.send({"1", "", "2"});
        reception.unit.send({"3"});
        QTRY_COMPARE(reception.handled, QByteArrayList{"3"});
        reception.settings.record.LastSenderIp.setText(u"127.0.0.1"_s);
        reception.endpoint->SendServer(u"answer"_s);
        QCOMPARE(reception.unit.answer(), "answer");
        QVERIFY(!stranger.hasPendingDatagrams());
        allow("127.0.0.2\n127.0.0.x\n"); // with a slip: what can be read holds
        reception.unit.send({"5"});
        stranger.send({"6"});
        QTRY_COMPARE(reception.handled.join(), "36"_ba);
        QCOMPARE(reception.senders.trouble(reception.texts), u"[SendersUnreadable]\n2: 127.0.0.x"_s);
        allow("# nobody\n");
        QVERIFY(!reception.senders.admit(QHostAddress(u"127.0.0.2"_s)));
        QCOMPARE(reception.senders.trouble(reception.texts), u"[SendersNobody]"_s);
        QVERIFY(reception.senders.save(u" \n"_s)); // everybody, as without a list
        reception.unit.send({"8"});
        stranger.send({"9"});
        QTRY_COMPARE(reception.handled.join(), "3689"_ba);
    }

    void aListThatCannotBeReadLetsNobodyInAndAFloodFillsNoLog()
    {
        Reception reception;
        QVERIFY(QDir().mkdir(reception.paths.SendersFile));
        reception.clock.time = reception.clock.time.addSecs(1);
        for (int i = 0; i < 1000; ++i) {
            QVERIFY(!reception.senders.admit(QHostAddress(quint32(0x0A000000 + i))));
        }
        QCOMPARE(reception.logMessages().filter(u"!Senders "_s).size(), 1);
        QCOMPARE(reception.logMessages().filter(u"datagrams refused from "_s).size(), 65);
        QVERIFY(!reception.senders.text() && !reception.senders.save(u"127.0.0.1"_s));
        reception.clock.time = reception.clock.time.addSecs(60);
        QTRY_VERIFY(reception.logMessages().contains(u"datagrams refused from other addresses: 935"_s));
    }

    void aBurstOfEverySizeIsHandledInOrder()
    {
        const QByteArrayList sent = QByteArrayList{QByteArray(65507, 'x'), "", "x"} + numbers(1, 150);
        Reception reception;
        reception.unit.send(sent);
        reception.endpoint->iniUDP(); // as the options do
        QTRY_COMPARE(reception.handled, sent);
    }

    // A closing box asks for what waits while the socket has just become readable: it is read twice, once in
    // vain.
    void theSocketIsHeardAfterAReadingInVain()
    {
        Reception reception;
        reception.prompts.expect();
        reception.prompts.tell(u"box"_s, {}, nullptr);
        for (int number = 1; number <= 3; ++number) {
            reception.unit.send(numbers(number, number));
            QTRY_COMPARE(reception.handled, numbers(1, number));
            letEventsCome();
        }
    }

    void aBoxOpenedByADatagramHoldsBackWhatComesAndACallIsSaidToWait()
    {
        Reception reception;
        reception.whileHandling = [&] {
            reception.prompts.expect(true, [&] {
                reception.unit.send(numbers(4, 9));
                letEventsCome();
                QCOMPARE(reception.handled, numbers(1, 1));
                QCOMPARE(reception.callWaits, QList<bool>());
                reception.unit.send({call, call});
                QTRY_COMPARE(reception.callWaits, QList<bool>{true});
            });
            reception.prompts.tell(u"box"_s, {}, nullptr);
        };
        reception.unit.send(numbers(1, 3));
        QTRY_COMPARE(reception.handled, numbers(1, 9) + QByteArrayList(2, call));
        QTRY_COMPARE(reception.callWaits, (QList<bool>{true, false}));
    }

    void aCustomersRecordIsForwardedToTheLastSenderAsOneDatagram()
    {
        Reception reception;
        core::CustomerInfo info{.fields = {{6, u"客户"_s}, {4, u"7"_s}}};
        QUdpSocket other;
        QVERIFY(other.bind(QHostAddress::AnyIPv4, 1991, QAbstractSocket::DontShareAddress));
        reception.forwarding.Ini_TDR_UDP();
        other.close();
        reception.forwarding.Ini_TDR_UDP();
        QUdpSocket unit;
        QVERIFY(unit.bind(QHostAddress::AnyIPv4, 1990));
        for (const QString &lastSender : {u"127.0.0.1"_s, QString()}) {
            reception.settings.record.LastSenderIp.setText(lastSender);
            for (const int doNotSend : {1, 0}) {
                info.doNotSend = quint16(doNotSend);
                reception.forwarding.SendTDRData(info);
            }
            QVERIFY(unit.waitForReadyRead(30000));
            const QNetworkDatagram datagram = unit.receiveDatagram();
            QCOMPARE(datagram.data(), info.toBytes(reception.codePage));
            QCOMPARE(datagram.data().first(10), QByteArray("\xBF\xCD\xBB\xA7  7   "));
            QCOMPARE(datagram.senderPort(), 1991);
            QVERIFY(!unit.hasPendingDatagrams());
        }
        info.fields.append({5, u"Zoë"_s, "ContactPersonName"_L1}); // which the Chinese page lacks
        reception.forwarding.SendTDRData(info);
        reception.settings.record.LastSenderIp.setText(u"nobody"_s);
        reception.forwarding.SendTDRData(info);
        const QStringList told = reception.logMessages().filter(u"TDR"_s);
        QVERIFY(told.size() == 3 && told.first().startsWith("!Ini_TDR_UDP 10048 "_L1));
        QVERIFY(told.at(1).endsWith(u"code page 936 lacks characters of ContactPersonName"_s));
        QCOMPARE(told.last(), u"!SendTDRData 0 no address: nobody"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Endpoint)
#include "tst_Endpoint.moc"
