#include "CustomerDesk.h"
#include "store/Upgrade.h"
#include "tools/ToolRun.h"

#include <QRandomGenerator>

#include <cstdio>

namespace {

/// Saves customers as the editor does until it is killed: a new one and then a change of him, by turns. Tells
/// of each save when it is done.
struct Saver : customers::CustomerControls
{
    core::Paths paths;
    support::FakeClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};
    support::FakePrompts prompts;
    support::FakeServer server;
    support::KeyTexts texts;
    FakeCustomerEffects effects;
    customers::CustomerRecord shown;
    customers::CustomerEditing editing{{paths, values, log, texts, prompts, server, effects}, *this};

    explicit Saver(const core::Paths &desk) : paths(desk) {}
    customers::CustomerRecord shownCustomer() const override { return shown; }
    void showCustomer(const customers::CustomerRecord &customer) override { shown = customer; }
    void showSN(qint32 sn) override { shown.SN = sn; }
    void turnTo(QStringView) override {}

    int run(int number)
    {
        store::UpdateDatabase_Customer_0606191111(log, paths);
        bool going = store::FixCustomerData(log, paths) == 1;
        for (; going; ++number) {
            shown.SN = number % 2 == 0 ? 0 : shown.SN;
            shown.shown = fullCustomer(QString::number(number) + u' ' + QString(200, u'x')).shown;
            going = editing.save();
            std::printf("%d %d\n", shown.SN, number);
            std::fflush(stdout);
        }
        return 1;
    }
};

} // namespace

/// Whatever kills the program, what it has told the operator to be saved is in the file.
class tst_KilledSaves : public QObject
{
    Q_OBJECT

    /// What a saver has told until it was killed some milliseconds after its first save.
    static QByteArray killedAfter(const support::TestDesk &desk, int number, int milliseconds)
    {
        QProcess saver;
        saver.start(QCoreApplication::applicationFilePath(),
                    {u"save"_s, desk.folder.path(), QString::number(number)});
        const bool saved = saver.waitForReadyRead();
        const bool endedByItself = saver.waitForFinished(milliseconds);
        saver.kill();
        saver.waitForFinished();
        const QByteArray told = saver.readAllStandardOutput();
        return saved && !endedByItself ? told.first(told.lastIndexOf('\n') + 1) : QByteArray();
    }

private Q_SLOTS:
    void everyConfirmedSaveOutlivesAKillAtAnyMoment()
    {
        constexpr int kills = 100;
        constexpr int longestMs = 40; // several saves
        constexpr int numbersARound = 10'000;
        const support::TestDesk desk;
        deliver(u"Customer"_s, desk.paths.CustomerFile);
        QMap<int, int> confirmed; // the number last saved of each customer
        QRandomGenerator random(1);
        int leftJournals = 0;
        for (int round = 0; round < kills; ++round) {
            const QByteArray told = killedAfter(desk, round * numbersARound, random.bounded(longestMs));
            QVERIFY2(!told.isEmpty(), desk.fileBytes(desk.paths.RunLogFile).constData());
            for (const QByteArray &line : told.chopped(1).split('\n')) {
                confirmed[line.split(' ').first().toInt()] = line.split(' ').last().toInt();
            }
            leftJournals += QFile::exists(desk.paths.CustomerFile + u"-journal"_s) ? 1 : 0;
            const ToolRun check = runTool(MKDESK, u"--check \"%1\""_s.arg(desk.folder.path()));
            QVERIFY2(check.status == 0 && check.output.contains(u"Customer.ccsm: ok"_s),
                     qPrintable(check.output + check.errors));
            QMap<int, int> stored;
            store::Database file(desk.paths.CustomerFile);
            file.forEachRow(u"select SN, CustomerName, Address, CustomerName = custom14 from customer"_s,
                            [&](const store::Row &row) {
                                QCOMPARE(row.text(1), row.text(2));
                                stored[row.integer(0)] = row.text(1).section(u' ', 0, 0).toInt();
                            });
            for (auto each = confirmed.cbegin(); each != confirmed.cend(); ++each) {
                QVERIFY(stored.value(each.key(), -1) >= each.value());
            }
        }
        QVERIFY2(leftJournals > kills / 20, "hardly a kill came within a save");
        QCOMPARE(desk.logMessages(), QStringList());
    }
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "save"_L1) {
        const QString &folder = arguments.at(2);
        return Saver(core::pathsBelow(folder + u"/start"_s, folder + u"/data"_s))
            .run(arguments.at(3).toInt());
    }
    tst_KilledSaves test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_KilledSaves.moc"
