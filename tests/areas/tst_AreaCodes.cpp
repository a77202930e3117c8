#include "areas/AreaCodes.h"
#include "support/TestDesk.h"

class tst_AreaCodes : public QObject
{
    Q_OBJECT

    support::TestDesk m_desk;
    const QString m_path = m_desk.paths.StartFolder + u"/AreaCode.mdb"_s;
    areas::AreaCodes m_codes{m_desk.log};

    void load() { m_codes.load(areas::MakeAreaPath(m_desk.log, m_desk.paths.StartFolder)); }

private Q_SLOTS:
    void aBadDatabaseLeavesTheLookupEmpty()
    {
        load();
        QCOMPARE(m_desk.logMessages(), QStringList()); // no file at all is as it should be
        m_desk.writeFile(m_path, "no database at all, but long enough to be looked at by the engine");
        load();
        QCOMPARE(m_desk.logMessages().size(), 1);
        QCOMPARE(m_codes.GetArea(u"0755"_s), u""_s);
        QVERIFY(QFile::remove(m_path));
    }

    void theLongestPrefixNamesThePlace()
    {
        m_desk.runSql(m_path, u"create table placename (AreaCode text, Area text, PlaceName text);"
                              "insert into placename values ('0755', 'South', 'Bay'), ('0', 'Far', 'Out'), "
                              "('0755', 'Second', 'Entry'), ('x1', 'Small', 'x'), (null, 'No', 'Code'), "
                              "('1234567890123456789012345', 'Long', null)"_s);
        load();
        QString places;
        for (const char16_t *number :
             {u"075512345678", u"0754", u"12345678901234567890123456789", u"X1", u""}) {
            places += m_codes.GetArea(number) + u'|';
        }
        QCOMPARE(places, u"South(Bay)|Far(Out)|Long()|||"_s);
    }
};

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
