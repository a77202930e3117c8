#include "ToolRun.h"
#include "support/Table.h"

#include <QFile>
#include <QNetworkDatagram>
#include <QTemporaryDir>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

/// The simulator as a program, against a socket of ours in the place of CallDesk's.
class tst_CalldeskSim : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<QUdpSocket> m_program;

    QString toUs(const QString &options) const
    {
        return options + u" --port "_s + QString::number(m_program->localPort());
    }
    QList<QByteArray> received(qsizetype count)
    {
        QList<QByteArray> datagrams;
        while (datagrams.size() < count &&
               (m_program->hasPendingDatagrams() || m_program->waitForReadyRead(5000))) {
            datagrams.append(m_program->receiveDatagram().data());
        }
        return datagrams;
    }
    QString makeFile(const QString &content) const
    {
        QFile file(m_folder.filePath(u"file.txt"_s));
        const bool made = file.open(QIODevice::WriteOnly) && file.write(content.toUtf8()) >= 0;
        return made ? file.fileName() : QString();
    }

private Q_SLOTS:
    void init()
    {
        m_program = std::make_unique<QUdpSocket>();
        QVERIFY(m_program->bind(QHostAddress::LocalHost));
    }

    void oneDatagramIsSentAsAsked_data()
    {
        const support::Table<QString, QByteArray, QByteArray> row("options", "begin", "end");
        row("call", u"--number 5550199 --raw-cid 01"_s, "<CRMV1 ", "{RAWCID:[01]}{DETAILDES:[]}");
        row("short record", u"--kind cid --number 77"_s, "<CID       77      ", " ");
        row("Chinese line", u"--line 总机 --code-page 936 --time ttttttttttttttttttt"_s,
            "<CRMV1                001     ttttttttttttttttttt\xD7\xDC\xBB\xFA ", " ");
        row("message", u"--message hi"_s, "SENDSMALLMESSAGE ", "{{{hi}}}");
        row("shutdown", u"--shutdown"_s, "SHUTDOWNALL ", " ");
        row("escapes", u"--text <CRMV1\\x00é\\r\\n\\q\\"_s, QByteArray("<CRMV1\0\xC3\xA9\r\n\\q\\", 14),
            "\\");
    }
    void oneDatagramIsSentAsAsked()
    {
        QFETCH(QString, options);
        QFETCH(QByteArray, begin);
        QFETCH(QByteArray, end);
        const ToolRun result = runTool(PROGRAM, toUs(options));
        QVERIFY(result.status == 0 && result.output.contains(u"1 datagram"_s));
        const QByteArray datagram = received(1).value(0);
        QCOMPARE(datagram.first(std::min(begin.size(), datagram.size())), begin);
        QVERIFY2(datagram.endsWith(end), datagram.constData());
        QVERIFY(!m_program->hasPendingDatagrams());
    }

    void aSeriesArrivesWholeAndInOrder()
    {
        const ToolRun result = runTool(
            PROGRAM, toUs(u"--number 555{n:4}-{n}-{no} --first 98 --count 60 --rate 2000 --burst 20"_s));
        QVERIFY2(result.status == 0 && result.output.contains(u"60 datagrams in 0.0"_s),
                 qPrintable(result.output));
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
        const QString scene =
            makeFile(u"0 --say \"First caller\" --number 1\n+0.01 --say Status --channel-status idle\n"_s);
        const ToolRun result = runTool(PROGRAM, toUs(u"--quiet --scene "_s + scene));
        QCOMPARE(result.status, 0);
        QVERIFY(result.output.indexOf(u">  First caller\n"_s) < result.output.indexOf(u">  Status\n"_s));
        const QList<QByteArray> datagrams = received(2);
        QVERIFY(datagrams.value(0).startsWith("<CRMV1"));
        QVERIFY(datagrams.value(1).endsWith(" idle"));
    }

    void whatIsPrintedCanBeReplayed()
    {
        const ToolRun printed = runTool(PROGRAM, u"--text \"call {n}\\r\\n\" --count 3 --print"_s);
        QCOMPARE(runTool(PROGRAM, toUs(u"--rate 0 --replay "_s + makeFile(printed.output))).status, 0);
        QCOMPARE(received(3), QList<QByteArray>({"call 1\r\n", "call 2\r\n", "call 3\r\n"}));
    }

    void itPrintsWhatTheProgramSendsBack()
    {
        QProcess unit;
        unit.start(QStringLiteral(PROGRAM), QProcess::splitCommand(toUs(u"--number 5 --listen 0"_s)));
        QVERIFY(m_program->waitForReadyRead(5000));
        const QNetworkDatagram call = m_program->receiveDatagram();
        m_program->writeDatagram(call.makeReply("REFRESHCUSTOMERLIST"));
        const QByteArray line =
            ">  127.0.0.1:" + QByteArray::number(m_program->localPort()) + "  REFRESHCUSTOMERLIST\n";
        QByteArray output;
        QTRY_VERIFY((output += unit.readAllStandardOutput()).contains(line));
        QVERIFY(output.contains("listening on port " + QByteArray::number(call.senderPort())));
        unit.kill();
        QVERIFY(unit.waitForFinished());
    }

    void itTellsThatNobodyListens()
    {
        const QString options = toUs(u"--number 5 --count 3"_s);
        m_program->close();
        const ToolRun result = runTool(PROGRAM, options);
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.contains(u"nobody listens on 127.0.0.1"_s), qPrintable(result.errors));
    }

    void failuresAreToldInWordsAndByTheExitStatus_data()
    {
        const support::Table<QString, int, QString> row("options", "status", "told");
        row("nothing", u""_s, 2, u"nothing to send"_s);
        row("unknown option", u"--nummer 5"_s, 2, u"nummer"_s);
        row("stray word", u"--number 5 6"_s, 2, u"\"6\""_s);
        row("count", u"--shutdown --count 2.5"_s, 2, u"--count takes a whole number"_s);
        row("rate", u"--shutdown --rate nan"_s, 2, u"--rate takes a number"_s);
        row("kind", u"--kind sms"_s, 2, u"call, cid or detail"_s);
        row("code page", u"--number 5 --code-page 12"_s, 2, u"--code-page"_s);
        row("two datagrams", u"--number 5 --message hi"_s, 2, u"cannot be several"_s);
        row("two sources", u"--number 5 --replay x"_s, 2, u"exclude"_s);
        row("no such file", u"--replay /no/such/file"_s, 1, u"/no/such/file"_s);
        row("too large", u"--text "_s + QString(65508, u'x'), 1, u"65507"_s);
        row("foreign address", u"--shutdown --from 192.0.2.1"_s, 1, u"192.0.2.1"_s);
    }
    void failuresAreToldInWordsAndByTheExitStatus()
    {
        QFETCH(QString, options);
        QFETCH(QString, told);
        const ToolRun result = runTool(PROGRAM, toUs(options));
        QTEST(result.status, "status");
        QVERIFY2(result.errors.contains(told), qPrintable(result.errors));
        QVERIFY(!m_program->hasPendingDatagrams());
    }
};

QTEST_GUILESS_MAIN(tst_CalldeskSim)
#include "tst_CalldeskSim.moc"
