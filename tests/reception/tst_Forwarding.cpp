#include "core/CodePage.h"
#include "reception/Forwarding.h"
#include "support/TestDesk.h"

#include <QNetworkDatagram>

/// Needs the fixed ports for itself (see scripts/with-own-network).
class tst_Forwarding : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        core::Settings settings{paths, log};
        core::CodePage codePage{936};
        reception::Forwarding forwarding{{settings, log, codePage}};
        core::CustomerInfo info{.fields = {{6, u"客户"_s}, {4, u"7"_s}}};
    };

private Q_SLOTS:
    void theRecordGoesToTheLastSenderAsOneDatagramAndFailuresAreLogged()
    {
        Desk desk;
        QUdpSocket other;
        QVERIFY(other.bind(QHostAddress::AnyIPv4, 1991, QAbstractSocket::DontShareAddress));
        desk.forwarding.Ini_TDR_UDP();
        other.close();
        desk.forwarding.Ini_TDR_UDP();
        QUdpSocket unit;
        QVERIFY(unit.bind(QHostAddress::AnyIPv4, 1990));
        for (const QString &lastSender : {u"127.0.0.1"_s, QString()}) {
            desk.settings.record.LastSenderIp.setText(lastSender);
            desk.info.doNotSend = 1;
            desk.forwarding.SendTDRData(desk.info);
            desk.info.doNotSend = 0;
            desk.forwarding.SendTDRData(desk.info);
            QVERIFY(unit.waitForReadyRead(5000));
            const QNetworkDatagram datagram = unit.receiveDatagram();
            QCOMPARE(datagram.data(), desk.info.toBytes(desk.codePage));
            QCOMPARE(datagram.data().first(10), QByteArray("\xBF\xCD\xBB\xA7  7   "));
            QCOMPARE(datagram.senderPort(), 1991);
            QVERIFY(!unit.hasPendingDatagrams());
        }
        desk.settings.record.LastSenderIp.setText(u"nobody"_s);
        desk.forwarding.SendTDRData(desk.info);
        QCOMPARE(desk.logMessages().size(), 2);
        QVERIFY(desk.logMessages().at(0).startsWith("!Ini_TDR_UDP "_L1));
        QCOMPARE(desk.logMessages().at(1), u"!SendTDRData 0 no address: nobody"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Forwarding)
#include "tst_Forwarding.moc"
