#include "ToolRun.h"
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
              {u"--line 总机 --code-page 936 --time ttttttttttttttttttt"_s,
               "<CRMV1                001     ttttttttttttttttttt\xD7\xDC\xBB\xFA ", " "},
              {u"--message hi"_s, "SENDSMALLMESSAGE ", "{{{hi}}}"},
              {u"--text <CRMV1\\x00é\\r\\n\\q\\"_s, QByteArray("<CRMV1\0\xC3\xA9\r\n\\q\\", 14), "\\"}}) {
            const ToolRun result = runTool(PROGRAM, toUs(options));
            QVERIFY2(result.output.contains(u"1 datagram"_s), qPrintable(result.errors));
            const QByteArray datagram = received(1).value(0);
            QVERIFY2(datagram.startsWith(begin) && datagram.endsWith(end), datagram.constData());
            QVERIFY(!m_program->hasPendingDatagrams());
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
        const ToolRun printed =
            runTool(PROGRAM, u"--text \"call {n:3}\\r\\n\" --first 98 --count 3 --print"_s);
        const QString capture = makeFile(u"capture"_s, printed.output);
        QCOMPARE(runTool(PROGRAM, toUs(u"--rate 0 --replay "_s + capture)).status, 0);
        QCOMPARE(received(3), QList<QByteArray>({"call 098\r\n", "call 099\r\n", "call 100\r\n"}));
    }

    void failuresAreToldInWordsAndByTheExitStatus()
    {
        const QString port = toUs(QString());
        const QString scene = u"--scene "_s + makeFile(u"back"_s, u"5 --shutdown\n4 --shutdown"_s);
        m_program->close();
        for (const auto &[options, status, told] :
             {std::tuple(u""_s, 2, "nothing to send"),
              {u"--shutdown --count 2.5"_s, 2, "--count takes a whole number"},
              {u"--number 5 --message hi"_s, 2, "cannot be several"},
              {scene, 2, "line 2: the time goes back"},
              {u"--replay /no/such/file"_s, 1, "/no/such/file"},
              {u"--number 5 --count 3"_s, 1, "nobody listens on 127.0.0.1"}}) {
            const ToolRun result = runTool(PROGRAM, options + port);
            QVERIFY2(result.errors.contains(QLatin1String(told)), qPrintable(result.errors));
            QCOMPARE(result.status, status);
        }
    }
};

QTEST_GUILESS_MAIN(tst_CalldeskSim)
#include "tst_CalldeskSim.moc"
