#include "language/LanguageChoice.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace language;

class tst_LanguageChoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void systemAndSettingDecideTheLanguage_data();
    void systemAndSettingDecideTheLanguage();
    void eachLanguageAsksForItsFont_data();
    void eachLanguageAsksForItsFont();
};

void tst_LanguageChoice::systemAndSettingDecideTheLanguage_data()
{
    QTest::addColumn<int>("identifier");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("decided");
    QTest::addColumn<QString>("logged");
    QTest::newRow("British") << 0x0809 << u""_s << u"ENG"_s << u"ENG, Language ID = 0809"_s;
    QTest::newRow("mainland") << 2052 << u"auto"_s << u"CHS"_s << u"CHINESE, Language ID = 0804"_s;
    QTest::newRow("Singapore") << 4100 << u""_s << u"CHT"_s << u"CHINESE, Language ID = 1004"_s;
    QTest::newRow("which Chinese?") << 4 << u""_s << u"ENG"_s << u"CHINESE, Language ID = 0004"_s;
    QTest::newRow("Mexico") << 0x080A << u""_s << u"SPN"_s << u"SPANISH, Language ID = 080A"_s;
    QTest::newRow("Faeroes") << 0x0438 << u""_s << u"ENG"_s << u"FAEROESE, Language ID = 0438"_s;
    QTest::newRow("a gap in the table") << 0x0417 << u""_s << u"ENG"_s << u", Language ID = 0417"_s;
    QTest::newRow("lower case, blanks")
        << 1028 << u" user "_s << u"USER"_s << u"CHINESE, Language ID = 0404"_s;
    QTest::newRow("no code") << 3076 << u"DEU"_s << u"ENG"_s << u"CHINESE, Language ID = 0C04"_s;
    QTest::newRow("a path") << 5124 << u"../SPN"_s << u"ENG"_s << u"CHINESE, Language ID = 1404"_s;
    QTest::newRow("keys") << 0x042A << u"ID"_s << u"ID"_s << u"VIETNAMESE, Language ID = 042A"_s;
}

void tst_LanguageChoice::systemAndSettingDecideTheLanguage()
{
    QFETCH(int, identifier);
    QFETCH(QString, setting);
    QFETCH(QString, logged);
    support::TestDesk desk;
    QTEST(DecideLanguage(GetOsDefaultLanguage(quint16(identifier), desk.log), setting), "decided");
    QCOMPARE(desk.logMessages(), QStringList(u"OS Language = "_s + logged));
}

void tst_LanguageChoice::eachLanguageAsksForItsFont_data()
{
    QTest::addColumn<QList<uint>>("name");
    QTest::addColumn<int>("characterSet");
    QTest::newRow("CHS") << QList<uint>{0x5B8B, 0x4F53} << 134;
    QTest::newRow("CHT") << QList<uint>{0x65B0, 0x7D30, 0x660E, 0x9AD4} << 136;
    QTest::newRow("JAPANESE") << QList<uint>{0xFF2D, 0xFF33, 0x20, 0xFF30, 0x30B4, 0x30B7, 0x30C3, 0x30AF}
                              << 128;
    QTest::newRow("HBR") << QList<uint>{} << 177;
    QTest::newRow("POL") << QList<uint>{'A', 'r', 'i', 'a', 'l'} << 1;
}

void tst_LanguageChoice::eachLanguageAsksForItsFont()
{
    const FontChoice choice = fontChoice(QString::fromLatin1(QTest::currentDataTag()));
    QTEST(choice.fontName.toUcs4(), "name");
    QTEST(choice.characterSet, "characterSet");
    QCOMPARE(choice.pointSize, choice.characterSet == 1 ? 8 : 9);
}

QTEST_GUILESS_MAIN(tst_LanguageChoice)
#include "tst_LanguageChoice.moc"
