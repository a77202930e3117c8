#include "CopiesDesk.h"
#include "copies/Retention.h"
#include "support/FullDisk.h"
#include "support/Row.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>

#include <future>

using copies::Copy, copies::Reason;

namespace {

const QDateTime noon(QDate(2026, 11, 21), QTime(12, 0));

/// The days of a list, in words: "2026-11-21", or a day and how many of them, one a day, go back from it.
QList<copies::Dated> datedOf(const QString &words)
{
    QList<copies::Dated> copies;
    for (const QString &word : words.split(u' ', Qt::SkipEmptyParts)) {
        const QDate day = QDate::fromString(word.section(u'x', 0, 0), Qt::ISODate);
        for (int back = 0; back < std::max(1, word.section(u'x', 1).toInt()); ++back) {
            copies.append({day.addDays(-back).startOfDay()});
        }
    }
    return copies;
}
QString keptOf(const QList<copies::Dated> &copies, const QDate &today)
{
    const QList<qsizetype> gone = copies::superfluous(copies, today);
    QStringList kept;
    for (qsizetype place = 0; place < copies.size(); ++place) {
        if (!gone.contains(place)) {
            kept.append(copies[place].made.toString(u"yyyy-MM-dd"));
        }
    }
    kept.sort();
    return kept.join(u' ');
}

/// Makes copies until it is killed, and tells of each.
int copyForEver(const QString &folder)
{
    const copies::CopyFolder copies(core::pathsBelow(folder + u"/start"_s, folder + u"/data"_s));
    for (QDateTime time = noon;; time = time.addSecs(1)) {
        copies.make(time, Reason::Asked);
        std::printf("copied\n");
        std::fflush(stdout);
    }
}

} // namespace

/// The copies of a desk: which are kept, that they are whole whatever happens, and that the desk can be had
/// back from them.
class tst_Copies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ofDaysWeeksAndMonthsTheLastAreKept()
    {
        const QString week =
            u"2026-11-15 2026-11-16 2026-11-17 2026-11-18 2026-11-19 2026-11-20 2026-11-21"_s;
        for (const auto &[name, made, kept] :
             {std::tuple("each day of a week", u"2026-11-21x7"_s, week),
              {"each day of two years", u"2026-11-21x730"_s,
               u"2025-12-31 2026-01-31 2026-02-28 2026-03-31 2026-04-30 2026-05-31 2026-06-30 2026-07-31 "
               "2026-08-31 2026-09-30 2026-10-31 2026-11-01 2026-11-08 "_s +
                   week},
              {"nothing for years", u"2019-01-05 2026-11-21"_s, u"2019-01-05 2026-11-21"_s},
              {"a clock that was once years ahead", u"2099-01-01 2026-11-21x7"_s, week + u" 2099-01-01"_s},
              {"a clock that is years behind", u"2026-11-21x7 2001-01-01"_s, u"2001-01-01 "_s + week}}) {
            const support::Row row(name);
            const QDate today = QByteArray(name).contains("behind") ? QDate(2001, 1, 1) : noon.date();
            QCOMPARE(keptOf(datedOf(made), today), kept);
        }
    }

    // Of the last week all, of the time before the first one of a day: what was typed on that day may be just
    // what was wrong. The last one before an import outlives them.
    void ofAnEarlierDayTheFirstCopyIsKept()
    {
        QList<copies::Dated> made = datedOf(u"2026-11-21x7"_s);
        const QDate early(2026, 10, 10);
        made.append({QDateTime(early, QTime(17, 0))});
        made.append({QDateTime(early, QTime(8, 0))});
        made.append({QDateTime(early, QTime(12, 0)), true});
        made.append({QDateTime(early, QTime(11, 0)), true});
        made.append({QDateTime(noon.date(), QTime(17, 0))});
        QList<qsizetype> gone = copies::superfluous(made, noon.date());
        std::ranges::sort(gone);
        QCOMPARE(gone, (QList<qsizetype>{7, 10}));
    }

    void aDayHasOneCopyWhateverTheClockDoes()
    {
        const CopiesDesk desk;
        for (const auto &[time, isMade] : {std::pair(noon, true),
                                           {noon.addSecs(60), false},
                                           {noon.addYears(70), true},
                                           {noon.addYears(70).addSecs(1), false},
                                           {noon.addSecs(120), false},
                                           {noon.addYears(-20), true},
                                           {noon.addDays(1), true}}) {
            QCOMPARE(desk.copies().make(time, Reason::Day).has_value(), isMade);
        }
        QCOMPARE(desk.folders(), QStringList({u"2006-11-21 12-00-00"_s, u"2026-11-21 12-00-00"_s,
                                              u"2026-11-22 12-00-00"_s, u"2096-11-21 12-00-00"_s}));
    }

    void twoDesksThatStartTogetherMakeOne()
    {
        const CopiesDesk desk(2000);
        const auto start = [&desk] {
            try {
                return int(desk.copies().make(noon, Reason::Day).has_value());
            } catch (const copies::MadeElsewhere &) {
                return 0;
            }
        };
        auto other = std::async(std::launch::async, start);
        const int mine = start();
        QCOMPARE(mine + other.get(), 1);
        QCOMPARE(desk.folders().size(), 1);
    }

    void aDeskIsCopiedWhileOthersWriteInIt()
    {
        const CopiesDesk desk(3000);
        const QString copied = desk.folder.filePath(u"copied"_s);
        int slices = 0;
        store::copyDatabase(desk.paths.CustomerFile, copied, store::Database::Mode::New, [&] {
            if (++slices < 40) { // without growing slices the copying would begin anew each time
                desk.runSql(desk.paths.CustomerFile,
                            u"insert into customer (CustomerName) values ('late %1')"_s.arg(slices));
            }
        });
        QVERIFY(slices > 1);
        QCOMPARE(store::damageOf(copied), QStringList());
        const int late = support::rowsOf(copied, u"select count(*) from customer"_s).toInt() - 3000;
        QVERIFY(late > 0);
        QCOMPARE(
            support::rowsOf(copied, u"select max(CustomerName) from customer where SN=%1"_s.arg(3000 + late)),
            u"late %1"_s.arg(late));
    }

    void whatWasThereOnADayComesBack()
    {
        CopiesDesk desk;
        const QString before = desk.names();
        const Copy copy = *desk.copies().make(noon, Reason::Day);
        QCOMPARE(copy.file(u"Customer.ccsm"_s)->rows, 3);
        desk.runSql(desk.paths.CustomerFile, u"delete from customer"_s);
        store::Database other(desk.paths.CustomerFile); // of another desk, which goes on in it
        QCOMPARE(desk.copies().restore(copy, noon.addSecs(60)), QStringList());
        QCOMPARE(desk.names(), before);
        other.Execute(u"insert into customer (CustomerName) values ('new')"_s);
        QCOMPARE(desk.names(), before + u"\n4|new"_s);

        const QString later = desk.names();
        QFile::setPermissions(desk.paths.PhoneBookFile, QFile::ReadOwner); // all of it or nothing
        QVERIFY(!support::errorOf([&] { desk.copies().restore(copy, noon.addSecs(90)); }).isEmpty());
        QCOMPARE(desk.names(), later);
        QFile::setPermissions(desk.paths.PhoneBookFile, QFile::ReadOwner | QFile::WriteOwner);

        desk.spoil(desk.paths.CustomerFile);
        QCOMPARE(desk.copies().restore(copy, noon.addSecs(120), {u"Customer.ccsm"_s}),
                 QStringList{u"Customer.ccsm damaged 2026-11-21"_s});
        QCOMPARE(desk.names(), before);
        QCOMPARE(desk.fileBytes(desk.paths.CustomerFile + u" damaged 2026-11-21"_s), QByteArray(5000, 'x'));
        QCOMPARE(desk.copies().copies().first().reason, Reason::BeforeRestore);
        QVERIFY(desk.copies().copies().first().file(u"Customer.ccsm"_s) == nullptr);

        desk.spoil(copy.path(u"Customer.ccsm"_s));
        const QString refused = support::errorOf([&] { desk.copies().restore(copy, noon.addSecs(180)); });
        QVERIFY2(refused.contains(u"Customer.ccsm"_s), qPrintable(refused));
        QCOMPARE(desk.names(), before);
    }

    void aFullDiskLeavesNoHalfCopy()
    {
        const CopiesDesk desk(300);
        desk.copies().make(noon, Reason::Day);
        QString failure;
        {
            const support::FullDisk full(40000);
            failure = support::errorOf([&] { desk.copies().make(noon.addDays(1), Reason::Day); });
        }
        QVERIFY(!failure.isEmpty());
        QCOMPARE(desk.folders(), QStringList{u"2026-11-21 12-00-00"_s});
    }

    void aKilledCopyIsNone()
    {
        constexpr int kills = 30;
        constexpr int longestMs = 120; // some copies
        const CopiesDesk desk(500);
        QRandomGenerator random(1);
        int leftHalf = 0;
        for (int round = 0; round < kills; ++round) {
            QProcess copier;
            copier.start(QCoreApplication::applicationFilePath(), {u"copy"_s, desk.folder.path()});
            QVERIFY2(copier.waitForReadyRead(), copier.readAllStandardError().constData());
            QVERIFY(!copier.waitForFinished(random.bounded(longestMs)));
            copier.kill();
            copier.waitForFinished();
            leftHalf += desk.folders().contains(u"Copy in progress"_s) ? 1 : 0;
            const QList<Copy> copies = desk.copies().copies();
            QVERIFY(!copies.isEmpty() && std::ranges::all_of(copies, &Copy::isWhole));
            for (const QString &name : desk.folders().filter(u"2026"_s).last(1)) {
                const QString path = desk.copies().path() + u'/' + name + u"/Customer.ccsm"_s;
                QCOMPARE(support::rowsOf(path, u"select count(*) from customer"_s), u"500"_s);
            }
        }
        QVERIFY(leftHalf > 0);
        QDir(desk.copies().path()).mkdir(u"Copy in progress"_s);
        QVERIFY(!desk.copies().make(noon, Reason::Day)); // the day has one
        QVERIFY(!desk.folders().contains(u"Copy in progress"_s));
        QCOMPARE(store::damageOf(desk.paths.CustomerFile), QStringList());
    }
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "copy"_L1) {
        return copyForEver(arguments.value(2));
    }
    tst_Copies test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Copies.moc"
