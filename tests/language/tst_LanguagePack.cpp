#include "language/LanguagePack.h"
#include "store/Database.h"
#include "support/TestDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Desk : support::TestDesk
{
    support::FakePrompts prompts;
    core::Settings settings{paths, log};
    language::LanguagePack pack{paths, log, prompts, settings, 0x0404}; // a Taiwanese system

    explicit Desk(const QString &langTable = u"create table Lang(id text(255), ENG memo, CHS memo, CHT memo);"
                                             "insert into Lang values('Edit','&Edit','编辑','編輯');"
                                             "insert into Lang values('ver','Version','版本',null);"
                                             "insert into Lang values('VER','second','second','second');"
                                             "insert into Lang values('438','Call notes','','通話紀要');"_s)
    {
        runSql(paths.LangFile, langTable);
    }
    /// The texts of three keys in a language.
    QString textsIn(const QString &setting)
    {
        settings.record.LanguageSetting.setText(setting);
        pack.iniLanguage();
        return pack.Lms(u"eDIT"_s) + u'|' + pack.Lms(u"Ver"_s) + u'|' + pack.Lms(u"438"_s);
    }
};

} // namespace

class tst_LanguagePack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachLanguageHasItsTexts()
    {
        Desk desk;
        QCOMPARE(desk.textsIn(u"ENG"_s), u"&Edit|Version|Call notes"_s);
        QCOMPARE(desk.textsIn(u"CHS"_s), u"编辑|版本|Call notes"_s);
        QCOMPARE(desk.textsIn(u"AUTO"_s), u"編輯|Version|通話紀要"_s);
        QCOMPARE(desk.pack.state().code, u"CHT"_s);
        QCOMPARE(desk.pack.state().osLanguageId, u"0404"_s);
        QCOMPARE(desk.pack.state().font.fontName, language::fontChoice(u"CHT"_s).fontName);
        QCOMPARE(desk.textsIn(u"SPN"_s), u"&Edit|Version|Call notes"_s);
        QCOMPARE(desk.textsIn(u"ID"_s), u"Edit|ver|438"_s);
        QCOMPARE(desk.pack.Lms(u"no such key"_s), QString());
    }

    void aLanguageFileStandsInForTheDatabase()
    {
        for (const auto &[setting, file] :
             {std::pair(u"spn"_s, u"/SPN.lan"_s), {u"user"_s, u"/UserLang.lan"_s}}) {
            Desk desk;
            desk.runSql(desk.paths.StartFolder + file,
                        u"create table Language(item text(255), userlanguage text(255), english text(255));"
                        "insert into Language values('Edit','Editar','&Edit'), ('ver','','Version');"_s);
            QCOMPARE(desk.textsIn(setting), u"Editar|Version|"_s);
        }
    }

    void aMissingDatabaseIsToldAndAnUnusableOneLogged()
    {
        Desk desk(u"create table Lang(id text(255), ENG memo);"_s);
        QCOMPARE(desk.textsIn(u"CHS"_s), u"||"_s);
        QVERIFY(desk.logMessages().last().startsWith(u"!Load LangPack "_s));
        QVERIFY(QFile::remove(desk.paths.LangFile));
        desk.prompts.expect();
        QCOMPARE(desk.textsIn(u"CHS"_s), u"||"_s);
        QCOMPARE(desk.prompts.asked.last(), u"No Lang.mdb file found! path = "_s + desk.paths.LangFile);
        QCOMPARE(desk.pack.state().code, u"CHS"_s);
    }

    void textsReadBeforeTheDamageAreKept()
    {
        Desk desk;
        store::Database(desk.paths.LangFile)
            .Execute(
                u"insert into Lang with recursive n(i) as (select 1 union all select i+1 from n where i<500)"
                " select 'key'||i, hex(zeroblob(200)), '', '' from n"_s);
        QByteArray bytes = desk.fileBytes(desk.paths.LangFile);
        bytes.replace(bytes.size() / 4096 / 2 * 4096, 4096, QByteArray(4096, '\xEE'));
        desk.writeFile(desk.paths.LangFile, bytes);
        QCOMPARE(desk.textsIn(u"ENG"_s), u"&Edit|Version|Call notes"_s);
        QCOMPARE(desk.pack.Lms(u"key500"_s), QString());
        QVERIFY(desk.logMessages().last().startsWith(u"!Load LangPack "_s));
    }
};

QTEST_GUILESS_MAIN(tst_LanguagePack)
#include "tst_LanguagePack.moc"
