#include "ToolRun.h"

#include <QFile>
#include <QNetworkDatagram>
#include <QTemporaryDir>
#include <QTest>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

/// The simulator as a program, against a socket of ours in the place of CallDesk's.
class tst_CalldeskSim : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void oneDatagramIsSentAsAsked_data();
    void oneDatagramIsSentAsAsked();
    void aSeriesArrivesWholeAndInOrder();
    void aSceneIsPlayedStepByStep();
    void whatIsPrintedCanBeReplayed();
    void itPrintsWhatTheProgramSendsBack();
    void itTellsThatNobodyListens();
    void failuresAreToldAndSetTheExitStatus_data();
    void failuresAreToldAndSetTheExitStatus();

private:
    QStringList toUs(const QStringList &options) const;
    static ToolRun run(const QStringList &options) { return runTool(QStringLiteral(PROGRAM), options); }
    QList<QByteArray> received(qsizetype count);
    QString makeFile(const QByteArray &content) const;

    QTemporaryDir m_folder;
    std::unique_ptr<QUdpSocket> m_program;
};

void tst_CalldeskSim::init()
{
    m_program = std::make_unique<QUdpSocket>();
    QVERIFY(m_program->bind(QHostAddress::LocalHost));
}

QStringList tst_CalldeskSim::toUs(const QStringList &options) const
{
    return options + QStringList{u"--port"_s, QString::number(m_program->localPort())};
}

QList<QByteArray> tst_CalldeskSim::received(qsizetype count)
{
    QList<QByteArray> datagrams;
    while (datagrams.size() < count &&
           (m_program->hasPendingDatagrams() || m_program->waitForReadyRead(5000))) {
        datagrams.append(m_program->receiveDatagram().data());
    }
    return datagrams;
}

QString tst_CalldeskSim::makeFile(const QByteArray &content) const
{
    QFile file(m_folder.filePath(u"file.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qWarning("cannot write the file");
    }
    return file.fileName();
}

void tst_CalldeskSim::oneDatagramIsSentAsAsked_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("call") << QStringList{u"--number"_s, u"5550199"_s, u"--raw-cid"_s, u"01"_s} << "<CRMV1"_ba
                          << "{RAWCID:[01]}{DETAILDES:[]}"_ba;
    QTest::newRow("short record") << QStringList{u"--kind"_s, u"cid"_s, u"--number"_s, u"77"_s}
                                  << "<CID       77      "_ba
                                  << " "_ba;
    QTest::newRow("Chinese line") << QStringList{u"--line"_s, u"总机"_s,   u"--code-page"_s,
                                                 u"936"_s,    u"--time"_s, QString(19, u't')}
                                  << "<CRMV1                001     ttttttttttttttttttt\xD7\xDC\xBB\xFA "_ba
                                  << " "_ba;
    QTest::newRow("message") << QStringList{u"--message"_s, u"hi"_s} << "SENDSMALLMESSAGE "_ba
                             << "{{{hi}}}"_ba;
    QTest::newRow("shutdown") << QStringList{u"--shutdown"_s} << "SHUTDOWNALL "_ba
                              << " "_ba;
    QTest::newRow("text") << QStringList{u"--text"_s, u"<CRMV1\\x00é"_s} << QByteArray("<CRMV1\0\xC3\xA9", 9)
                          << "\xA9"_ba;
    QTest::newRow("empty") << QStringList{u"--text"_s, u""_s} << QByteArray() << QByteArray();
}

void tst_CalldeskSim::oneDatagramIsSentAsAsked()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, end);
    const ToolRun result = run(toUs(options));
    QCOMPARE(result.status, 0);
    QVERIFY(result.output.contains(u"1 datagram"_s));
    const QList<QByteArray> datagrams = received(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().first(std::min(begin.size(), datagrams.first().size())), begin);
    QVERIFY2(datagrams.first().endsWith(end), datagrams.first().constData());
    QVERIFY(!m_program->hasPendingDatagrams());
}

void tst_CalldeskSim::aSeriesArrivesWholeAndInOrder()
{
    const ToolRun result = run(toUs({u"--number"_s, u"555{n:4}"_s, u"--first"_s, u"98"_s, u"--count"_s,
                                     u"60"_s, u"--rate"_s, u"2000"_s, u"--burst"_s, u"20"_s}));
    QCOMPARE(result.status, 0);
    QVERIFY2(result.output.contains(u"60 datagrams in 0.0"_s), qPrintable(result.output));
    const QList<QByteArray> datagrams = received(60);
    QCOMPARE(datagrams.size(), 60);
    for (int i = 0; i < datagrams.size(); ++i) {
        QCOMPARE(datagrams.at(i).mid(77, 8), "555" + QByteArray::number(98 + i).rightJustified(4, '0') + ' ');
    }
}

void tst_CalldeskSim::aSceneIsPlayedStepByStep()
{
    const QString scene =
        makeFile("0 --say \"First caller\" --number 1\n+0.01 --say Status --channel-status idle\n");
    const ToolRun result = run(toUs({u"--scene"_s, scene, u"--quiet"_s}));
    QCOMPARE(result.status, 0);
    QVERIFY(result.output.indexOf(u">  First caller\n"_s) < result.output.indexOf(u">  Status\n"_s));
    const QList<QByteArray> datagrams = received(2);
    QCOMPARE(datagrams.size(), 2);
    QVERIFY(datagrams.first().startsWith("<CRMV1"));
    QVERIFY(datagrams.last().endsWith(" idle"));
}

void tst_CalldeskSim::whatIsPrintedCanBeReplayed()
{
    const ToolRun printed = run({u"--text"_s, u"call {n}\\r\\n"_s, u"--count"_s, u"3"_s, u"--print"_s});
    const ToolRun result = run(toUs({u"--replay"_s, makeFile(printed.output.toUtf8()), u"--rate"_s, u"0"_s}));
    QCOMPARE(result.status, 0);
    QCOMPARE(received(3), QList<QByteArray>({"call 1\r\n", "call 2\r\n", "call 3\r\n"}));
}

void tst_CalldeskSim::itPrintsWhatTheProgramSendsBack()
{
    QProcess unit;
    unit.start(QStringLiteral(PROGRAM), toUs({u"--number"_s, u"5"_s, u"--listen"_s, u"0"_s}));
    QVERIFY(m_program->waitForReadyRead(5000));
    const QNetworkDatagram call = m_program->receiveDatagram();
    m_program->writeDatagram(call.makeReply("REFRESHCUSTOMERLIST"));
    QByteArray output;
    QTRY_VERIFY((output += unit.readAllStandardOutput()).contains("REFRESHCUSTOMERLIST"));
    const QByteArray sender = ">  127.0.0.1:" + QByteArray::number(m_program->localPort());
    QVERIFY2(output.contains(sender + "  REFRESHCUSTOMERLIST\n"), output.constData());
    QVERIFY(output.contains("listening on port " + QByteArray::number(call.senderPort())));
    unit.kill();
    QVERIFY(unit.waitForFinished());
}

void tst_CalldeskSim::itTellsThatNobodyListens()
{
    const QStringList options = toUs({u"--number"_s, u"5"_s, u"--count"_s, u"3"_s});
    m_program->close();
    const ToolRun result = run(options);
    QCOMPARE(result.status, 1);
    QVERIFY2(result.errors.contains(u"nobody listens on 127.0.0.1"_s), qPrintable(result.errors));
}

void tst_CalldeskSim::failuresAreToldAndSetTheExitStatus_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("told");
    QTest::newRow("wrong use") << QStringList{u"--bogus"_s} << 2 << u"--help"_s;
    QTest::newRow("no such file") << QStringList{u"--replay"_s, u"/no/such/file"_s} << 1
                                  << u"/no/such/file"_s;
    QTest::newRow("too large") << QStringList{u"--text"_s, QString(65508, u'x')} << 1 << u"65507"_s;
    QTest::newRow("foreign address") << QStringList{u"--shutdown"_s, u"--from"_s, u"192.0.2.1"_s} << 1
                                     << u"192.0.2.1"_s;
}

void tst_CalldeskSim::failuresAreToldAndSetTheExitStatus()
{
    QFETCH(QStringList, options);
    QFETCH(int, status);
    QFETCH(QString, told);
    const ToolRun result = run(toUs(options));
    QCOMPARE(result.status, status);
    QVERIFY2(result.errors.contains(told), qPrintable(result.errors));
    QVERIFY(!m_program->hasPendingDatagrams());
}

QTEST_GUILESS_MAIN(tst_CalldeskSim)
#include "tst_CalldeskSim.moc"
