#include "CustomerDesk.h"
#include "store/Upgrade.h"
#include "tools/ToolRun.h"

#include <QRandomGenerator>

#include <cstdio>

namespace {

/// Saves customers as the editor does until it is killed: a new one and then a change of him, by turns. Tells
/// of each save when it is done.
struct Saver
{
    core::Paths paths;
    support::FakeClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};
    support::FakeServer server;
    support::KeyTexts texts;
    FakeCustomerEffects effects;
    customers::LoadedCustomer loaded;
    customers::CustomerEditing editing{{paths, values, log, texts, server, effects}};

    explicit Saver(const core::Paths &desk) : paths(desk) {}

    int run(int number)
    {
        store::UpdateDatabase_Customer_0606191111(log, paths);
        bool going = store::FixCustomerData(log, paths) == 1;
        for (; going; ++number) {
            loaded = number % 2 == 0 ? customers::LoadedCustomer() : loaded;
            const QString text = QString::number(number) + u' ' + QString(200, u'x');
            const customers::SavedCustomer saved =
                editing.save(loaded, {loaded.record.SN, fullCustomer(text).shown});
            going = saved.written;
            loaded = saved.customer;
            std::printf("%d %d\n", loaded.record.SN.value_or(0), number);
            std::fflush(stdout);
        }
        return 1;
    }

    /// Counts up one field of the first customer, saving each number; the editor stays open all the while.
    /// What the other's lock refuses is tried again.
    bool countUp(QStringView column, int last)
    {
        std::optional<customers::LoadedCustomer> found;
        while (!found) {
            found = editing.ShowCustomerBySN(1).customer;
        }
        loaded = *found;
        customers::SavedCustomer saved;
        saved.written = true;
        for (int number = 1; number <= last && saved.written; ++number) {
            customers::CustomerRecord typed = loaded.record;
            typed.shown.at(size_t(customers::fieldOf(column))) = QString::number(number);
            do {
                saved = editing.save(loaded, typed);
            } while (!saved.message.isEmpty());
            loaded = saved.customer;
        }
        return saved.written;
    }
};

constexpr int counted = 60;

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
    void twoProgramsThatChangeOneCustomerLoseNothingOfEachOther()
    {
        const support::TestDesk desk;
        deliver(u"Customer"_s, desk.paths.CustomerFile);
        customerSql(desk, u"insert into customer (CustomerName, T3) values ('A', '1')"_s);
        QProcess other;
        other.start(QCoreApplication::applicationFilePath(), {u"count"_s, desk.folder.path()});
        QVERIFY(other.waitForStarted());
        QVERIFY(Saver(desk.paths).countUp(u"PostalCode", counted));
        QTRY_COMPARE(other.state(), QProcess::NotRunning);
        QCOMPARE(other.exitCode(), 0);
        QCOMPARE(customerSql(desk, u"select SN, Fax, PostalCode from customer"_s), u"1|%1|%1"_s.arg(counted));
    }

    void everyConfirmedSaveOutlivesAKillAtAnyMoment()
    {
        constexpr int kills = 100;    // and more until some came within a save
        constexpr int longestMs = 40; // several saves
        constexpr int numbersARound = 10'000;
        const support::TestDesk desk;
        deliver(u"Customer"_s, desk.paths.CustomerFile);
        QMap<int, int> confirmed; // the number last saved of each customer
        QRandomGenerator random(1);
        int leftJournals = 0;
        for (int round = 0; round < kills || leftJournals <= kills / 20; ++round) {
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
        QCOMPARE(desk.logMessages(), QStringList());
    }
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString work = arguments.value(1);
    if (work == "count"_L1 || work == "save"_L1) {
        const QString &folder = arguments.at(2);
        Saver saver(core::pathsBelow(folder + u"/start"_s, folder + u"/data"_s));
        return work == "count"_L1 ? int(!saver.countUp(u"Fax", counted)) : saver.run(arguments.at(3).toInt());
    }
    tst_KilledSaves test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_KilledSaves.moc"
