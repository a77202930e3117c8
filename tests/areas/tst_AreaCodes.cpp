#include "areas/AreaCodes.h"
#include "support/TestDesk.h"

/// The places that calls come from.
class tst_AreaCodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLongestPrefixOnFileTellsThePlace()
    {
        support::TestDesk desk;
        areas::AreaCodes places(desk.log);
        QCOMPARE(places.GetArea(u"617"), QString()); // before there is a list
        QCOMPARE(areas::MakeAreaPath(desk.log, desk.paths.StartFolder), QString());
        desk.runSql(desk.paths.StartFolder + u"/AreaCode.mdb"_s,
                    u"create table placename (AreaCode text, Area text, PlaceName text);"
                    "insert into placename values('617','North','Harbour'), ('6','Far','Out'), "
                    "('617','Second','Entry'), ('x1','Small','x'), (null,'No','Code'), "
                    "('1234567890123456789012345','Long',null), "
                    "('12345678901234567890123456','Longer','x')"_s);
        places.load(areas::MakeAreaPath(desk.log, desk.paths.StartFolder));
        for (const auto &[number, place] :
             {std::pair(u"6175550101"_s, u"North(Harbour)"_s), // the first of equal codes
              {u"617"_s, u"North(Harbour)"_s},
              {u"618"_s, u"Far(Out)"_s},
              {u"12345678901234567890123456789"_s, u"Long()"_s}, // 25 characters count
              {u"X1"_s, u""_s},                                  // capitals differ
              {u"55"_s, u""_s},
              {u""_s, u""_s}}) {
            QCOMPARE(places.GetArea(number), place);
        }
    }
};

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
