#include "language/LanguageChoice.h"
#include "support/Table.h"
#include "support/TestDesk.h"

using namespace Qt::StringLiterals;
using namespace language;

class tst_LanguageChoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void systemAndSettingDecideTheLanguage_data()
    {
        const support::Table<int, QString, QString, QString> row("identifier", "setting", "decided",
                                                                 "logged");
        row("British", 0x0809, u""_s, u"ENG"_s, u"ENG, Language ID = 0809"_s);
        row("mainland", 2052, u"auto"_s, u"CHS"_s, u"CHINESE, Language ID = 0804"_s);
        row("Singapore", 4100, u""_s, u"CHT"_s, u"CHINESE, Language ID = 1004"_s);
        row("which Chinese?", 4, u""_s, u"ENG"_s, u"CHINESE, Language ID = 0004"_s);
        row("Mexico", 0x080A, u""_s, u"SPN"_s, u"SPANISH, Language ID = 080A"_s);
        row("Faeroes", 0x0438, u""_s, u"ENG"_s, u"FAEROESE, Language ID = 0438"_s);
        row("a gap in the table", 0x0417, u""_s, u"ENG"_s, u", Language ID = 0417"_s);
        row("lower case, blanks", 1028, u" user "_s, u"USER"_s, u"CHINESE, Language ID = 0404"_s);
        row("no code", 3076, u"DEU"_s, u"ENG"_s, u"CHINESE, Language ID = 0C04"_s);
        row("a path", 5124, u"../SPN"_s, u"ENG"_s, u"CHINESE, Language ID = 1404"_s);
        row("keys", 0x042A, u"ID"_s, u"ID"_s, u"VIETNAMESE, Language ID = 042A"_s);
    }
    void systemAndSettingDecideTheLanguage()
    {
        QFETCH(int, identifier);
        QFETCH(QString, setting);
        QFETCH(QString, logged);
        support::TestDesk desk;
        QTEST(DecideLanguage(GetOsDefaultLanguage(quint16(identifier), desk.log), setting), "decided");
        QCOMPARE(desk.logMessages(), QStringList(u"OS Language = "_s + logged));
    }

    void eachLanguageAsksForItsFont()
    {
        QStringList asked;
        for (const QString &code : {u"CHS"_s, u"CHT"_s, u"JAPANESE"_s, u"HBR"_s, u"POL"_s}) {
            const FontChoice font = fontChoice(code);
            asked.append(font.fontName + u' ' + QString::number(font.characterSet) + u' ' +
                         QString::number(font.pointSize));
        }
        QCOMPARE(asked.join(u'|'), u"宋体 134 9|新細明體 136 9|ＭＳ Ｐゴシック 128 9| 177 9|Arial 1 8"_s);
    }
};

QTEST_GUILESS_MAIN(tst_LanguageChoice)
#include "tst_LanguageChoice.moc"
