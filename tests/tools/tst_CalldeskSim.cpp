#include "ToolRun.h"
#include "core/CustomerInfo.h"
#include "support/TestDesk.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

/// The simulator as a program, against a socket of ours in the place of CallDesk's.
class tst_CalldeskSim : public QObject
{
    Q_OBJECT

    support::TestDesk m_desk;
    std::unique_ptr<QUdpSocket> m_program;

    QString toUs(const QString &options) const
    {
        return options + u" --port "_s + QString::number(m_program->localPort());
    }
    QList<QByteArray> received(qsizetype count)
    {
        QList<QByteArray> datagrams;
        while (datagrams.size() < count &&
               (m_program->hasPendingDatagrams() || m_program->waitForReadyRead(30000))) {
            datagrams.append(m_program->receiveDatagram().data());
        }
        return datagrams;
    }
    QString makeFile(const QString &name, const QString &content) const
    {
        m_desk.writeFile(m_desk.folder.filePath(name), content.toUtf8());
        return m_desk.folder.filePath(name);
    }

private Q_SLOTS:
    void init()
    {
        m_program = std::make_unique<QUdpSocket>();
        QVERIFY(m_program->bind(QHostAddress::LocalHost));
    }

    void oneDatagramIsSentAsAsked()
    {
        for (const auto &[options, begin, end] :
             {std::tuple(u"--number 5550199 --raw-cid 01"_s, "<CRMV1 "_ba, "{RAWCID:[01]}{DETAILDES:[]}"),
              {u"--kind cid --number 77"_s, "<CID       77      ", " "},
              {u"--line 总机 --code-page 936 --time ttttttttttttttttttt"_s,
               "<CRMV1                001     ttttttttttttttttttt\xD7\xDC\xBB\xFA ", " "},
              {u"--message hi"_s, "SENDSMALLMESSAGE ", "{{{hi}}}"},
              {u"--shutdown"_s, "SHUTDOWNALL ", " "},
              {u"--text <CRMV1\\x00é\\r\\n\\q\\"_s, QByteArray("<CRMV1\0\xC3\xA9\r\n\\q\\", 14), "\\"}}) {
            const ToolRun result = runTool(PROGRAM, toUs(options));
            QVERIFY2(result.output.contains(u"1 datagram"_s), qPrintable(result.errors));
            const QByteArray datagram = received(1).value(0);
            QVERIFY2(datagram.startsWith(begin) && datagram.endsWith(end), datagram.constData());
            QVERIFY(!m_program->hasPendingDatagrams());
        }
    }

    void aSeriesArrivesWholeAndInOrder()
    {
        const ToolRun result = runTool(
            PROGRAM, toUs(u"--number 555{n:4}-{n}-{no} --first 98 --count 60 --rate 2000 --burst 20"_s));
        QVERIFY2(result.output.contains(u"60 datagrams in "_s), qPrintable(result.output));
        const QList<QByteArray> datagrams = received(60);
        QCOMPARE(datagrams.size(), 60);
        for (int i = 0; i < datagrams.size(); ++i) {
            const QByteArray number = QByteArray::number(98 + i);
            QCOMPARE(datagrams.at(i).mid(77, 30).trimmed(),
                     "555" + number.rightJustified(4, '0') + '-' + number + "-{no}");
        }
    }

    void aSceneIsPlayedStepByStep()
    {
        const QString scene = makeFile(
            u"scene"_s, u"# a comment\r\n0 --say \"First caller\" --number 1 --vip --black-list N\r\n"
                        "\r\n+0.01 --say Status --channel-status idle\r\n0.02 --shutdown"_s);
        const ToolRun result = runTool(PROGRAM, toUs(u"--quiet --scene "_s + scene));
        QCOMPARE(result.status, 0);
        QVERIFY(result.output.indexOf(u">  First caller\n"_s) < result.output.indexOf(u">  Status\n"_s));
        const QList<QByteArray> datagrams = received(3);
        QCOMPARE(datagrams.value(0).mid(183).simplified(), "N Y"_ba);
        QVERIFY(datagrams.value(1).endsWith(" idle"));
        QVERIFY(datagrams.value(2).startsWith("SHUTDOWNALL "));
    }

    void whatIsPrintedCanBeReplayed()
    {
        const ToolRun printed = runTool(PROGRAM, u"--text \"call {n}\\r\\n\" --count 3 --print"_s);
        const QString capture = makeFile(u"capture"_s, printed.output);
        QCOMPARE(runTool(PROGRAM, toUs(u"--rate 0 --replay "_s + capture)).status, 0);
        QCOMPARE(received(3), QList<QByteArray>({"call 1\r\n", "call 2\r\n", "call 3\r\n"}));
    }

    void aRunLogGivesBackItsDatagramsOnce()
    {
        const QString call = u"<CRMV1  first call  "_s; // the blanks at its end belong to it
        const QString status = u"CHANNELSTATUS"_s.leftJustified(50) + u"idle"_s;
        for (const QString &entry : {u"IP State 4"_s, call, call, call, call, // the same call came twice
                                     u"<CID       5550100"_s, u"<CRMV1 a\r\nb"_s,
                                     u"!winsock1 DataArrival 5 text"_s, // a call that was not handled
                                     u"SHUTDOWNALL"_s, status, status, u"garbage"_s}) {
            m_desk.log.WriteRunLog(entry);
        }
        const ToolRun printed = runTool(PROGRAM, u"--print --replay "_s + m_desk.paths.RunLogFile);
        QCOMPARE(printed.output.split(u'\n'), QStringList({call, call, u"<CID       5550100"_s,
                                                           u"<CRMV1 a\u240D\u240Ab"_s, status, QString()}));
    }

    void itPrintsWhatTheProgramSendsBack()
    {
        QProcess unit;
        unit.start(QStringLiteral(PROGRAM),
                   QProcess::splitCommand(toUs(u"--number 5 --listen 0 --code-page 936"_s)));
        QVERIFY(m_program->waitForReadyRead(30000));
        const QNetworkDatagram call = m_program->receiveDatagram();
        m_program->writeDatagram(call.makeReply("REFRESHCUSTOMERLIST"));
        QByteArray output;
        QTRY_VERIFY((output += unit.readAllStandardOutput()).contains("  REFRESHCUSTOMERLIST\n"));
        QVERIFY(output.contains("listening on port " + QByteArray::number(call.senderPort())));
        const core::CustomerInfo customer{.fields = {{100, u"客户\n"_s}, {50, {}}, {1, u"Y"_s}}};
        m_program->writeDatagram(call.makeReply(customer.toBytes(core::CodePage(936))));
        QTRY_VERIFY(
            (output += unit.readAllStandardOutput())
                .contains(u"  customer record\n    CustomerName: 客户\u240A\n    IfVIP: Y\n"_s.toUtf8()));
        unit.kill();
        QVERIFY(unit.waitForFinished());
    }

    void failuresAreToldInWordsAndByTheExitStatus()
    {
        const QString tooLarge = u"--text "_s + QString(65508, u'x');
        const QString port = toUs(QString());
        const auto inScene = [this](const QString &steps) {
            return u"--scene "_s + makeFile(steps.left(1), u"# comment\n"_s + steps);
        };
        m_program->close();
        for (const auto &[options, status, told] :
             {std::tuple(u""_s, 2, "nothing to send"),
              {u"--shutdown --count 2.5"_s, 2, "--count takes a whole number"},
              {u"--number 5 6"_s, 2, "\"6\""},
              {u"--number 5 --message hi"_s, 2, "cannot be several"},
              {u"--number 5 --replay x"_s, 2, "exclude"},
              {inScene(u"soon --shutdown"_s), 2, "line 2: \"soon\" is no time"},
              {inScene(u"5 --shutdown\n4 --shutdown"_s), 2, "line 3: the time goes back"},
              {inScene(u"1 --say hello"_s), 2, "line 2: this step sends nothing"},
              {u"--replay /no/such/file"_s, 1, "/no/such/file"},
              {tooLarge, 1, "65507"},
              {u"--shutdown --from 192.0.2.1"_s, 1, "192.0.2.1"},
              {u"--number 5 --count 3"_s, 1, "nobody listens on 127.0.0.1"}}) {
            const ToolRun result = runTool(PROGRAM, options + port);
            QVERIFY2(result.errors.contains(QLatin1String(told)), qPrintable(result.errors));
            QCOMPARE(result.status, status);
        }
    }
};

QTEST_GUILESS_MAIN(tst_CalldeskSim)
#include "tst_CalldeskSim.moc"
