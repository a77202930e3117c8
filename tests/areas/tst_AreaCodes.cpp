#include "areas/AreaCodes.h"
#include "support/TestDesk.h"

/// The places that calls come from.
class tst_AreaCodes : public QObject
{
    Q_OBJECT

    support::TestDesk m_desk;
    areas::AreaCodes m_places{m_desk.log};
    const QString m_path = m_desk.paths.StartFolder + QDir::separator() + u"AreaCode.mdb"_s;

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(m_places.GetArea(u"617"), QString()); // before there is a list
        QCOMPARE(areas::MakeAreaPath(m_desk.log, m_desk.paths.StartFolder), QString());
        m_desk.runSql(m_path, u"create table placename (AreaCode text, Area text, PlaceName text);"
                              "insert into placename values('617','North','Harbour'), ('6','Far','Out'), "
                              "('617','Second','Entry'), ('x1','Small','x'), (null,'No','Code'), "
                              "('1234567890123456789012345','Long',null), "
                              "('12345678901234567890123456','Longer','x')"_s);
        m_places.load(areas::MakeAreaPath(m_desk.log, m_desk.paths.StartFolder));
    }

    void theLongestPrefixOnFileTellsThePlace()
    {
        for (const auto &[number, place] :
             {std::pair(u"6175550101"_s, u"North(Harbour)"_s), // the first of equal codes
              {u"617"_s, u"North(Harbour)"_s},
              {u"618"_s, u"Far(Out)"_s},
              {u"12345678901234567890123456789"_s, u"Long()"_s}, // 25 characters count
              {u"X1"_s, u""_s},                                  // capitals differ
              {u"55"_s, u""_s},
              {u""_s, u""_s}}) {
            QCOMPARE(m_places.GetArea(number), place);
        }
    }

    void aFileThatCannotBeReadKeepsTheListAsItWas()
    {
        m_desk.writeFile(m_path, "no database");
        m_places.load(m_path);
        QCOMPARE(m_places.SearchAreaCode(u"617").PlaceName, u"Harbour"_s);
        QVERIFY(m_desk.logMessages().value(0).startsWith("!AreaCodes::load 26 "_L1));
    }
};

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
