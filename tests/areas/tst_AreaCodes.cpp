#include "areas/AreaCodes.h"
#include "support/TestDesk.h"

class tst_AreaCodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLongestPrefixNamesThePlaceOnceADatabaseIsThere()
    {
        support::TestDesk desk;
        areas::AreaCodes codes(desk.log);
        const QString path = desk.paths.StartFolder + u"/AreaCode.mdb"_s;
        const auto load = [&] { codes.load(areas::MakeAreaPath(desk.log, desk.paths.StartFolder)); };
        load();
        QCOMPARE(desk.logMessages(), QStringList()); // no file at all is as it should be
        desk.writeFile(path, "no database at all, but long enough to be looked at by the engine");
        load();
        QCOMPARE(desk.logMessages().size(), 1);
        QCOMPARE(codes.GetArea(u"0755"_s), u""_s);
        QVERIFY(QFile::remove(path));
        desk.runSql(path, u"create table placename (AreaCode text, Area text, PlaceName text);"
                          "insert into placename values ('0755', 'South', 'Bay'), ('0', 'Far', 'Out'), "
                          "('0755', 'Second', 'Entry'), ('x1', 'Small', 'x'), (null, 'No', 'Code'), "
                          "('1234567890123456789012345', 'Long', null)"_s);
        load();
        QString places;
        for (const char16_t *number :
             {u"075512345678", u"0754", u"12345678901234567890123456789", u"X1", u""}) {
            places += codes.GetArea(number) + u'|';
        }
        QCOMPARE(places, u"South(Bay)|Far(Out)|Long()|||"_s);
    }
};

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
