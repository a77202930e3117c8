#include "areas/AreaCodes.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_AreaCodes : public QObject
{
    Q_OBJECT

    support::TestDesk m_desk;

private Q_SLOTS:
    void aBadDatabaseLeavesTheLookupEmpty()
    {
        const QString path = m_desk.paths.StartFolder + u"/AreaCode.mdb"_s;
        areas::AreaCodes codes(m_desk.log);
        codes.load(areas::MakeAreaPath(m_desk.log, m_desk.paths.StartFolder));
        QCOMPARE(m_desk.logMessages(), QStringList());
        m_desk.writeFile(path, "no database at all, but long enough to be looked at by the engine");
        codes.load(areas::MakeAreaPath(m_desk.log, m_desk.paths.StartFolder));
        QCOMPARE(m_desk.logMessages().size(), 1);
        QCOMPARE(codes.GetArea(u"0755"_s), u""_s);
        QVERIFY(QFile::remove(path));
    }

    void theLongestPrefixNamesThePlace()
    {
        const QString path = m_desk.paths.StartFolder + u"/AreaCode.mdb"_s;
        m_desk.runSql(path, u"create table placename (AreaCode text, Area text, PlaceName text);"
                            "insert into placename values ('0755', 'South', 'Bay'), ('0', 'Far', 'Out'), "
                            "('0755', 'Second', 'Entry'), ('x1', 'Small', 'x'), (null, 'No', 'Code'), "
                            "('1234567890123456789012345', 'Long', null)"_s);
        areas::AreaCodes codes(m_desk.log);
        codes.load(areas::MakeAreaPath(m_desk.log, m_desk.paths.StartFolder));
        const QStringList numbers = {
            u"075512345678"_s, u"0755"_s, u"0754"_s, u"12345678901234567890123456789"_s,
            u"X1"_s,           u"9"_s,    u""_s};
        QStringList places;
        for (const QString &number : numbers) {
            places.append(codes.GetArea(number));
        }
        QCOMPARE(places.join(u'|'), u"South(Bay)|South(Bay)|Far(Out)|Long()|||"_s);
        QVERIFY(!codes.SearchAreaCode(u"07").found);
    }
};

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
