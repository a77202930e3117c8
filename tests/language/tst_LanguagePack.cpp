#include "language/LanguagePack.h"
#include "store/Database.h"
#include "support/TestDesk.h"

#include <QDir>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 taiwaneseSystem = 0x0404;

void makeDatabase(const QString &path, const QString &sql)
{
    store::createDatabase(path, sql, [](store::Database &) {});
}

const QString languageTable =
    u"create table Language(item text(255), userlanguage text(255), english text(255));"
    "insert into Language values('Edit','Editar','&Edit');"
    "insert into Language values('ver','','Version');"_s;

} // namespace

class tst_LanguagePack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void eachLanguageHasItsTexts_data();
    void eachLanguageHasItsTexts();
    void aLanguageFileStandsInForTheDatabase_data();
    void aLanguageFileStandsInForTheDatabase();
    void aMissingDatabaseIsToldAndTheProgramGoesOn();
    void anUnreadableDatabaseIsLogged_data();
    void anUnreadableDatabaseIsLogged();
    void textsReadBeforeTheDamageAreKept();

private:
    void load(const QString &setting);

    std::optional<support::TestDesk> m_desk;
    std::optional<core::Settings> m_settings;
    std::optional<language::LanguagePack> m_pack;
    support::FakePrompts m_prompts;
};

void tst_LanguagePack::init()
{
    m_desk.emplace();
    m_settings.emplace(m_desk->paths, m_desk->log);
    m_pack.emplace(m_desk->paths, m_desk->log, m_prompts, *m_settings, taiwaneseSystem);
    makeDatabase(m_desk->paths.LangFile, u"create table Lang(id text(255), ENG memo, CHS memo, CHT memo);"
                                         "insert into Lang values('Edit','&Edit','编辑','編輯');"
                                         "insert into Lang values('ver','Version','版本',null);"
                                         "insert into Lang values('VER','second','second','second');"
                                         "insert into Lang values('438','Call notes','','通話紀要');"_s);
}

void tst_LanguagePack::load(const QString &setting)
{
    m_settings->record.LanguageSetting.setText(setting);
    m_pack->iniLanguage();
}

void tst_LanguagePack::eachLanguageHasItsTexts_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QStringList>("texts"); // of "Edit", "ver", "438"
    QTest::newRow("ENG") << u"ENG"_s << QStringList{u"&Edit"_s, u"Version"_s, u"Call notes"_s};
    QTest::newRow("CHS") << u"CHS"_s << QStringList{u"编辑"_s, u"版本"_s, u"Call notes"_s};
    QTest::newRow("AUTO") << u"CHT"_s << QStringList{u"編輯"_s, u"Version"_s, u"通話紀要"_s};
    QTest::newRow("ID") << u"ID"_s << QStringList{u"Edit"_s, u"ver"_s, u"438"_s};
    QTest::newRow("SPN") << u"SPN"_s << QStringList{u"&Edit"_s, u"Version"_s, u"Call notes"_s};
}

void tst_LanguagePack::eachLanguageHasItsTexts()
{
    load(QString::fromLatin1(QTest::currentDataTag()));
    QTEST(m_pack->state().code, "code");
    QTEST((QStringList{m_pack->Lms(u"eDIT"_s), m_pack->Lms(u"Ver"_s), m_pack->Lms(u"438"_s)}), "texts");
    QCOMPARE(m_pack->Lms(u"no such key"_s), QString());
    QCOMPARE(m_pack->state().osLanguageId, u"0404"_s);
    QCOMPARE(m_pack->state().font.fontName, language::fontChoice(m_pack->state().code).fontName);
}

void tst_LanguagePack::aLanguageFileStandsInForTheDatabase_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("spn") << u"SPN.lan"_s;
    QTest::newRow("user") << u"UserLang.lan"_s;
}

void tst_LanguagePack::aLanguageFileStandsInForTheDatabase()
{
    QFETCH(QString, file);
    makeDatabase(m_desk->paths.StartFolder + QDir::separator() + file, languageTable);
    load(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(m_pack->Lms(u"Edit"_s), u"Editar"_s);
    QCOMPARE(m_pack->Lms(u"ver"_s), u"Version"_s);
    QCOMPARE(m_pack->Lms(u"438"_s), QString());
}

void tst_LanguagePack::aMissingDatabaseIsToldAndTheProgramGoesOn()
{
    QVERIFY(QFile::remove(m_desk->paths.LangFile));
    m_prompts.expect();
    load(u"CHS"_s);
    QCOMPARE(m_prompts.asked.last(), u"No Lang.mdb file found! path = "_s + m_desk->paths.LangFile);
    QCOMPARE(m_pack->state().code, u"CHS"_s);
    QCOMPARE(m_pack->Lms(u"Edit"_s), QString());
}

void tst_LanguagePack::anUnreadableDatabaseIsLogged_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a text") << QByteArray("no database at all").repeated(100);
    QTest::newRow("a column is missing") << QByteArray("create table Lang(id text(255), ENG memo);"
                                                       "insert into Lang values('Edit','&Edit');");
}

void tst_LanguagePack::anUnreadableDatabaseIsLogged()
{
    QFETCH(QByteArray, contents);
    QVERIFY(QFile::remove(m_desk->paths.LangFile));
    if (contents.startsWith("create")) {
        makeDatabase(m_desk->paths.LangFile, QString::fromLatin1(contents));
    } else {
        m_desk->writeFile(m_desk->paths.LangFile, contents);
    }
    load(u"CHS"_s);
    QCOMPARE(m_pack->Lms(u"Edit"_s), QString());
    const QString logged = m_desk->logMessages().last();
    QVERIFY2(logged.startsWith(u"!Load LangPack "_s), qPrintable(logged));
}

void tst_LanguagePack::textsReadBeforeTheDamageAreKept()
{
    constexpr int rows = 500;
    constexpr qint64 page = 4096;
    {
        store::Database database(m_desk->paths.LangFile);
        database.transaction([&database] {
            for (int row = 0; row < rows; ++row) {
                database.Execute(u"insert into Lang values(?,?,'','')"_s,
                                 {QString::number(row), QString(400, u'x')});
            }
        });
    }
    QFile file(m_desk->paths.LangFile);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(file.size() / page / 2 * page));
    QCOMPARE(file.write(QByteArray(page, '\xEE')), page);
    file.close();
    load(u"ENG"_s);
    QCOMPARE(m_pack->Lms(u"Edit"_s), u"&Edit"_s);
    QCOMPARE(m_pack->Lms(QString::number(rows - 1)), QString());
    QVERIFY(m_desk->logMessages().last().startsWith(u"!Load LangPack "_s));
}

QTEST_GUILESS_MAIN(tst_LanguagePack)
#include "tst_LanguagePack.moc"
