#include "reception/Columns.h"

#include <QTest>

using namespace Qt::StringLiterals;
using reception::ByteColumns;
using reception::MidByCols;

/// Byte columns, by which every field from column 50 on is found.
class tst_Columns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCharacterTakesOneColumnBelowCode255AndElseTwo()
    {
        QCOMPARE(ByteColumns({}), 0);
        QCOMPARE(ByteColumns(u"a\u00FE"), 2);
        QCOMPARE(ByteColumns(u"\u00FF\u4E2D🙂"), 6);
    }

    void fieldsAreCutByColumns_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("field");
        QTest::newRow("single bytes") << u"abcdef"_s << 2 << 3 << u"bcd"_s;
        QTest::newRow("double bytes") << u"中文abc"_s << 5 << 2 << u"ab"_s;
        QTest::newRow("second byte inside") << u"a中b"_s << 3 << 2 << u"中b"_s;
        QTest::newRow("second byte outside") << u"a中b"_s << 1 << 2 << u"a"_s;
        QTest::newRow("pair of surrogates") << u"a🙂b"_s << 2 << 2 << u"🙂"_s;
        QTest::newRow("beyond the end") << u"abc"_s << 3 << 30 << u"c"_s;
        QTest::newRow("behind the end") << u"abc"_s << 4 << 30 << QString();
        QTest::newRow("no width") << u"abc"_s << 2 << 0 << QString();
        QTest::newRow("less than none") << u"abc"_s << 144 << -141 << QString();
    }
    void fieldsAreCutByColumns()
    {
        QFETCH(QString, text);
        QFETCH(int, start);
        QFETCH(int, width);
        QTEST(MidByCols(text, start, width), "field");
    }
};

QTEST_GUILESS_MAIN(tst_Columns)
#include "tst_Columns.moc"
