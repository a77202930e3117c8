#include "language/LanguageChoice.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace language;

class tst_LanguageChoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSystemIdentifierNamesTheLanguage_data();
    void theSystemIdentifierNamesTheLanguage();
    void theSettingWinsUnlessItHasNoTexts_data();
    void theSettingWinsUnlessItHasNoTexts();
    void eachLanguageAsksForItsFont_data();
    void eachLanguageAsksForItsFont();
};

void tst_LanguageChoice::theSystemIdentifierNamesTheLanguage_data()
{
    QTest::addColumn<int>("identifier");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("logged");
    QTest::newRow("English") << 0x0409 << u"ENG"_s << u"OS Language = ENG, Language ID = 0409"_s;
    QTest::newRow("British") << 0x0809 << u"ENG"_s << u"OS Language = ENG, Language ID = 0809"_s;
    QTest::newRow("mainland") << 2052 << u"CHS"_s << u"OS Language = CHINESE, Language ID = 0804"_s;
    QTest::newRow("Taiwan") << 1028 << u"CHT"_s << u"OS Language = CHINESE, Language ID = 0404"_s;
    QTest::newRow("Hong Kong") << 3076 << u"CHT"_s << u"OS Language = CHINESE, Language ID = 0C04"_s;
    QTest::newRow("Singapore") << 4100 << u"CHT"_s << u"OS Language = CHINESE, Language ID = 1004"_s;
    QTest::newRow("Macao") << 5124 << u"CHT"_s << u"OS Language = CHINESE, Language ID = 1404"_s;
    QTest::newRow("no region") << 4 << u"CHINESE"_s << u"OS Language = CHINESE, Language ID = 0004"_s;
    QTest::newRow("Mexico") << 0x080A << u"SPN"_s << u"OS Language = SPANISH, Language ID = 080A"_s;
    QTest::newRow("Vietnam") << 0x042A << u"VN"_s << u"OS Language = VIETNAMESE, Language ID = 042A"_s;
    QTest::newRow("Turkey") << 0x041F << u"TUK"_s << u"OS Language = TURKISH, Language ID = 041F"_s;
    QTest::newRow("Russia") << 0x0419 << u"RUSSIA"_s << u"OS Language = RUSSIA, Language ID = 0419"_s;
    QTest::newRow("Faeroes") << 0x0438 << u"FAEROESE"_s << u"OS Language = FAEROESE, Language ID = 0438"_s;
    QTest::newRow("a gap") << 0x0417 << QString() << u"OS Language = , Language ID = 0417"_s;
}

void tst_LanguageChoice::theSystemIdentifierNamesTheLanguage()
{
    QFETCH(int, identifier);
    support::TestDesk desk;
    QTEST(GetOsDefaultLanguage(quint16(identifier), desk.log), "language");
    QTEST(desk.logMessages().value(0), "logged");
}

void tst_LanguageChoice::theSettingWinsUnlessItHasNoTexts_data()
{
    QTest::addColumn<QString>("osLanguage");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("decided");
    QTest::newRow("unset") << u"CHT"_s << QString() << u"CHT"_s;
    QTest::newRow("automatic") << u"KOR"_s << u"auto"_s << u"KOR"_s;
    QTest::newRow("a system without texts") << u"GERMAN"_s << QString() << u"ENG"_s;
    QTest::newRow("an unknown system") << QString() << QString() << u"ENG"_s;
    QTest::newRow("set") << u"CHT"_s << u"SPN"_s << u"SPN"_s;
    QTest::newRow("lower case and blanks") << u"CHT"_s << u" user  "_s << u"USER"_s;
    QTest::newRow("no code") << u"CHT"_s << u"DEU"_s << u"ENG"_s;
    QTest::newRow("a path") << u"CHT"_s << u"../../ENG"_s << u"ENG"_s;
    QTest::newRow("keys") << u"CHT"_s << u"ID"_s << u"ID"_s;
}

void tst_LanguageChoice::theSettingWinsUnlessItHasNoTexts()
{
    QFETCH(QString, osLanguage);
    QFETCH(QString, setting);
    QTEST(DecideLanguage(osLanguage, setting), "decided");
}

void tst_LanguageChoice::eachLanguageAsksForItsFont_data()
{
    QTest::addColumn<QList<uint>>("codePoints");
    QTest::addColumn<int>("characterSet");
    QTest::addColumn<int>("size");
    QTest::newRow("CHS") << QList<uint>{0x5B8B, 0x4F53} << 134 << 9;
    QTest::newRow("CHT") << QList<uint>{0x65B0, 0x7D30, 0x660E, 0x9AD4} << 136 << 9;
    QTest::newRow("JAPANESE") << QList<uint>{0xFF2D, 0xFF33, 0x20, 0xFF30, 0x30B4, 0x30B7, 0x30C3, 0x30AF}
                              << 128 << 9;
    QTest::newRow("KOR") << QList<uint>{0xAD74, 0xB9BC} << 129 << 9;
    QTest::newRow("ARA") << QList<uint>{} << 178 << 9;
    QTest::newRow("HBR") << QList<uint>{} << 177 << 9;
    QTest::newRow("TUK") << QList<uint>{} << 162 << 9;
    QTest::newRow("VN") << QList<uint>{} << 163 << 9;
    QTest::newRow("POL") << QList<uint>{'A', 'r', 'i', 'a', 'l'} << 1 << 8;
}

void tst_LanguageChoice::eachLanguageAsksForItsFont()
{
    const FontChoice choice = fontChoice(QString::fromLatin1(QTest::currentDataTag()));
    QTEST(QList<uint>(choice.fontName.toUcs4()), "codePoints");
    QTEST(choice.characterSet, "characterSet");
    QTEST(choice.pointSize, "size");
}

QTEST_GUILESS_MAIN(tst_LanguageChoice)
#include "tst_LanguageChoice.moc"
