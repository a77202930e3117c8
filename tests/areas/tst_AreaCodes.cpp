#include "areas/AreaCodes.h"
#include "support/TestDesk.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_AreaCodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAreaPathNeedsItsFile();
    void theLongestPrefixNamesThePlace_data();
    void theLongestPrefixNamesThePlace();
    void aBadDatabaseLeavesTheLookupEmpty();
};

namespace {

QString areaPath(const support::TestDesk &desk)
{
    return QDir::toNativeSeparators(desk.paths.StartFolder + u"/AreaCode.mdb"_s);
}

void makeAreaDatabase(const support::TestDesk &desk)
{
    desk.runSql(areaPath(desk),
                {u"create table placename (AreaCode text, Area text, PlaceName text)"_s,
                 u"insert into placename values ('0755', 'South', 'Bay'), ('0', 'Far', 'Out'), "
                 "('0755', 'Second', 'Entry'), ('x1', 'Small', 'x'), (null, 'No', 'Code'), "
                 "('1234567890123456789012345', 'Long', null)"_s});
}

} // namespace

void tst_AreaCodes::theAreaPathNeedsItsFile()
{
    support::TestDesk desk;
    QCOMPARE(areas::MakeAreaPath(desk.log, desk.paths.StartFolder), u""_s);
    QVERIFY(QDir().mkdir(areaPath(desk)));
    QCOMPARE(areas::MakeAreaPath(desk.log, desk.paths.StartFolder), u""_s);
    QVERIFY(QDir().rmdir(areaPath(desk)));
    makeAreaDatabase(desk);
    QCOMPARE(areas::MakeAreaPath(desk.log, desk.paths.StartFolder), areaPath(desk));
}

void tst_AreaCodes::theLongestPrefixNamesThePlace_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("area");
    QTest::newRow("longest") << u"075512345678"_s << u"South(Bay)"_s;
    QTest::newRow("the code alone") << u"0755"_s << u"South(Bay)"_s;
    QTest::newRow("shorter prefix") << u"0754"_s << u"Far(Out)"_s;
    QTest::newRow("25 characters and more") << u"12345678901234567890123456789"_s << u"Long()"_s;
    QTest::newRow("by case") << u"X1"_s << u""_s;
    QTest::newRow("unknown") << u"9"_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_AreaCodes::theLongestPrefixNamesThePlace()
{
    QFETCH(const QString, number);
    support::TestDesk desk;
    makeAreaDatabase(desk);
    areas::AreaCodes codes(desk.log);
    codes.load(areaPath(desk));
    QTEST(codes.GetArea(number), "area");
    QVERIFY(!codes.SearchAreaCode(u"07").found);
    QVERIFY(codes.SearchAreaCode(u"07").PlaceName.isEmpty());
    QCOMPARE(desk.logMessages(), QStringList());
}

void tst_AreaCodes::aBadDatabaseLeavesTheLookupEmpty()
{
    support::TestDesk desk;
    desk.writeFile(areaPath(desk), "no database at all, but long enough to be looked at by the engine");
    areas::AreaCodes codes(desk.log);
    codes.load(u""_s);
    QCOMPARE(desk.logMessages(), QStringList());
    codes.load(areaPath(desk));
    QCOMPARE(desk.logMessages().size(), 1);
    QCOMPARE(codes.GetArea(u"0755"_s), u""_s);
}

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
