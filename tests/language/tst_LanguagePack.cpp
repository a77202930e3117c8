#include "language/LanguageChoice.h"
#include "language/LanguagePack.h"
#include "language/ShownTexts.h"
#include "support/TestDesk.h"

class tst_LanguagePack : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        support::FakePrompts prompts;
        core::Settings settings{paths, log};
        language::LanguagePack pack{paths, log, prompts, settings, 0x0404}; // a Taiwanese system

        Desk()
        {
            runSql(paths.LangFile, u"create table Lang(id text(255), ENG memo, CHS memo, CHT memo);"
                                   "insert into Lang values('Edit','&Edit','编辑','編輯'),"
                                   "('ver','Version','版本',null),('VER','second','2','2'),"
                                   "('438','Call notes','','通話紀要');"_s);
        }
        /// The texts of three keys in a language.
        QString textsIn(const QString &setting)
        {
            settings.record.LanguageSetting.setText(setting);
            pack.iniLanguage();
            pack.tellUnreadable();
            return pack.Lms(u"eDIT"_s) + u'|' + pack.Lms(u"Ver"_s) + u'|' + pack.Lms(u"438"_s);
        }
    };

private Q_SLOTS:
    void systemAndSettingDecideTheLanguage()
    {
        for (const auto &[identifier, setting, decided, logged] :
             {std::tuple(0x0809, u""_s, u"ENG"_s, u"ENG, Language ID = 0809"_s),
              {2052, u"auto"_s, u"CHS"_s, u"CHINESE, Language ID = 0804"_s},
              {0x080A, u""_s, u"SPN"_s, u"SPANISH, Language ID = 080A"_s},
              {0x0417, u""_s, u"ENG"_s, u", Language ID = 0417"_s}, // a gap in the table
              {1028, u" user "_s, u"USER"_s, u"CHINESE, Language ID = 0404"_s},
              {5124, u"../SPN"_s, u"ENG"_s, u"CHINESE, Language ID = 1404"_s},
              {0x042A, u"ID"_s, u"ID"_s, u"VIETNAMESE, Language ID = 042A"_s}}) {
            support::TestDesk desk;
            const QString system = language::GetOsDefaultLanguage(quint16(identifier), desk.log);
            QCOMPARE(language::DecideLanguage(system, setting), decided);
            QCOMPARE(desk.logMessages(), QStringList(u"OS Language = "_s + logged));
        }
    }

    void eachLanguageHasItsTexts()
    {
        Desk desk;
        QCOMPARE(desk.textsIn(u"ENG"_s), u"&Edit|Version|Call notes"_s);
        QCOMPARE(desk.textsIn(u"CHS"_s), u"编辑|版本|Call notes"_s);
        QCOMPARE(desk.textsIn(u"AUTO"_s), u"編輯|Version|通話紀要"_s);
        QCOMPARE(desk.pack.state().code, u"CHT"_s);
        QCOMPARE(desk.textsIn(u"SPN"_s), u"&Edit|Version|Call notes"_s);
        desk.runSql(desk.paths.StartFolder + u"/SPN.lan"_s,
                    u"create table Language(item text(255), userlanguage text(255), english text(255));"
                    "insert into Language values('Edit','Editar','&Edit'), ('ver','','Version');"_s);
        QCOMPARE(desk.textsIn(u"spn"_s), u"Editar|Version|"_s); // a file stands in for the database
        QCOMPARE(desk.textsIn(u"ID"_s), u"Edit|ver|438"_s);
        QCOMPARE(desk.pack.Lms(u"no such key"_s), QString());
    }

    void textsReadBeforeTheDamageAreKept()
    {
        Desk desk;
        desk.runSql(
            desk.paths.LangFile,
            u"insert into Lang with recursive n(i) as (select 1 union all select i+1 from n where i<500)"
            " select 'key'||i, hex(zeroblob(200)), '', '' from n"_s);
        QByteArray bytes = desk.fileBytes(desk.paths.LangFile);
        bytes.replace(bytes.size() / 4096 / 2 * 4096, 4096, QByteArray(4096, '\xEE'));
        desk.writeFile(desk.paths.LangFile, bytes);
        desk.prompts.expect();
        QCOMPARE(desk.textsIn(u"CHT"_s), u"編輯|Version|通話紀要"_s);
        QCOMPARE(desk.pack.Lms(u"key500"_s), QString());
        QVERIFY(desk.logMessages().last().startsWith(u"!Load LangPack "_s));
        QVERIFY(desk.prompts.asked.value(0).endsWith(u'\n' + desk.paths.LangFile));
    }

    void aTextThatThePackLacksIsShownInTheSystemsLanguageOrInEnglish()
    {
        Desk desk;
        const language::ShownTexts texts(desk.pack);
        const QString schema =
            u"create table Language(item text(255), userlanguage text(255), english text(255));"_s;
        desk.runSql(desk.paths.UserLangFile, schema + u"insert into Language values('Edit','Bewerk','')"_s);
        desk.textsIn(u"USER"_s);
        for (const auto &[key, shown] : {std::pair(u"edit"_s, u"Bewerk"_s), // an older one, with few keys
                                         {u"438"_s, u"通話紀要"_s},
                                         {u"PlsRestartSys"_s, u"The new language will be used when the "
                                                              "program is started again."_s},
                                         {u"no such key"_s, u""_s}}) {
            QCOMPARE(texts.Lms(key), shown);
        }
        desk.runSql(desk.paths.LangFile, u"insert into Lang values('LanguageFileDamaged','','','損毀')"_s);
        desk.writeFile(desk.paths.UserLangFile, "no database");
        desk.prompts.expect();
        QCOMPARE(desk.textsIn(u"USER"_s), u"||"_s);
        QCOMPARE(desk.prompts.asked, QStringList{u"損毀\n"_s + desk.paths.UserLangFile});
        QCOMPARE(texts.Lms(u"Edit"_s), u"編輯"_s);
    }
};

QTEST_GUILESS_MAIN(tst_LanguagePack)
#include "tst_LanguagePack.moc"
