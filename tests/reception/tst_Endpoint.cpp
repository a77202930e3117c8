#include "reception/Endpoint.h"
#include "reception/Forwarding.h"
#include "support/TestDesk.h"

#include <QNetworkDatagram>

/// Real datagrams over the loopback: all of them, in order, and none behind the operator's back.
class tst_Endpoint : public QObject
{
    Q_OBJECT

    static constexpr quint16 port = 20000; // below those from which the system chooses

    /// A caller-ID unit at the other end of the loopback.
    struct Unit : QUdpSocket
    {
        Unit() { bind(QHostAddress::LocalHost); }
        void send(const QList<QByteArray> &datagrams)
        {
            for (const QByteArray &bytes : datagrams) {
                writeDatagram(bytes, QHostAddress::LocalHost, port);
            }
        }
        QByteArray answer() { return waitForReadyRead(5000) ? receiveDatagram().data() : ""; }
    };

    static QList<QByteArray> numbers(int first, int last)
    {
        QList<QByteArray> datagrams;
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
        QList<QByteArray> handled;
        std::function<void()> whileHandling;
        std::unique_ptr<reception::Endpoint> endpoint;
        reception::Senders senders{paths, log, clock};
        reception::Forwarding forwarding{{settings, log, codePage, senders}};
        Unit unit;

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
        QVERIFY(reception.logMessages().contains(u"loca port 2000"_s));
        QVERIFY(!QFile::exists(reception.paths.SettingsFile));
        reception.endpoint->SendServer(u"REFRESH 销售"_s);
        QCOMPARE(reception.unit.answer(), "REFRESH \xCF\xFA\xCA\xDB");
        Unit second;
        second.send({"1"});
        QTRY_COMPARE(reception.handled.size(), 1);
        reception.endpoint->SendServer(u"again"_s);
        QCOMPARE(second.answer(), "again");
        reception.settings.record.LastSenderIp.setText(u"nobody"_s);
        reception.endpoint->SendServer(u"text"_s);
        QVERIFY(reception.logMessages().constLast().startsWith("!SendServer "_L1));
    }

    void aBurstOfEverySizeIsHandledInOrder()
    {
        const QList<QByteArray> sent = QList<QByteArray>{QByteArray(65507, 'x'), "", "x"} + numbers(1, 150);
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
        reception.prompts.tell(u"box"_s, {});
        for (int number = 1; number <= 3; ++number) {
            reception.unit.send(numbers(number, number));
            QTRY_COMPARE(reception.handled, numbers(1, number));
            letEventsCome();
        }
    }

    void aBoxOpenedByADatagramHoldsBackWhatComes()
    {
        Reception reception;
        reception.whileHandling = [&] {
            reception.prompts.expect(true, [&] {
                reception.unit.send(numbers(4, 9));
                letEventsCome();
                QCOMPARE(reception.handled, numbers(1, 1));
            });
            reception.prompts.tell(u"box"_s, {});
        };
        reception.unit.send(numbers(1, 3));
        QTRY_COMPARE(reception.handled, numbers(1, 9));
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
            QVERIFY(unit.waitForReadyRead(5000));
            const QNetworkDatagram datagram = unit.receiveDatagram();
            QCOMPARE(datagram.data(), info.toBytes(reception.codePage));
            QCOMPARE(datagram.data().first(10), QByteArray("\xBF\xCD\xBB\xA7  7   "));
            QCOMPARE(datagram.senderPort(), 1991);
            QVERIFY(!unit.hasPendingDatagrams());
        }
        reception.settings.record.LastSenderIp.setText(u"nobody"_s);
        reception.forwarding.SendTDRData(info);
        const QStringList told = reception.logMessages().filter(u"TDR"_s);
        QVERIFY(told.size() == 2 && told.first().startsWith("!Ini_TDR_UDP "_L1));
        QCOMPARE(told.last(), u"!SendTDRData 0 no address: nobody"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Endpoint)
#include "tst_Endpoint.moc"
