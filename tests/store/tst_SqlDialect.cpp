#include "core/Error.h"
#include "store/SqlDialect.h"

#include <QTest>

using namespace Qt::StringLiterals;
using store::Wildcards;

class tst_SqlDialect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statementsAreEmittedInTheEnginesWords_data();
    void statementsAreEmittedInTheEnginesWords();
    void brokenTextIsRefused_data();
    void brokenTextIsRefused();
    void onlyTheRowsOfOneTableAreFoundByTheirKeys_data();
    void onlyTheRowsOfOneTableAreFoundByTheirKeys();
};

void tst_SqlDialect::statementsAreEmittedInTheEnginesWords_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("emitted");
    const auto row = [](const char *name, const char *given, const char *emitted) {
        QTest::newRow(name) << QString::fromUtf8(given) << QString::fromUtf8(emitted);
    };
    row("like", "Select * from customer where  [CustomerName] like '*it''s [x] like*'",
        "Select * from customer where [CustomerName] GLOB '*it''s [x] like*'");
    row("order by and semicolon", "select * from language where [Item] LIKE '*a*' order by [Item];",
        "select * from language where [Item] GLOB '*a*' order by [Item]");
    row("isnull", "update customer set T3='1' where T3=' ' or isnull(T3)",
        "update customer set T3='1' where T3=' ' or ((T3) is null)");
    row("isnull of a computation", "select 1=isnull(ifnull(a,(b))) , (c)",
        "select 1=((ifnull(a,(b))) is null) , (c)");
    row("a column called isnull", "select isnull from t", "select isnull from t");
    row("double quotes", R"(select "it's ""x""" from t)", R"(select 'it''s "x"' from t)");
    row("no comment begins", "select 1--2 /*3", "select 1- -2 / *3");
    row("first table",
        "Create Table CallInfo (CallID text(50) primary key,CustomerName text(255),DateAndTime Text(20),"
        "Consultant Text(50),CallContent Memo);",
        "Create Table CallInfo (CallID TEXT COLLATE JET primary key,CustomerName TEXT COLLATE JET,"
        "DateAndTime TEXT COLLATE JET,Consultant TEXT COLLATE JET,CallContent TEXT)");
    row("second table",
        "Create Table CustomerRequest ([CallID] text(50),[Request] Memo,[Response] Memo,[IfResolved] BIT,"
        "[Note] Memo);",
        "Create Table CustomerRequest ([CallID] TEXT COLLATE JET,[Request] TEXT,[Response] TEXT,"
        "[IfResolved] BOOLEAN,[Note] TEXT)");
    row("auto-number",
        "create table t (SN counter primary key, n long not null, x text(5) default 'a,b', unique (n))",
        "create table t (SN INTEGER PRIMARY KEY AUTOINCREMENT, n INTEGER not null, x TEXT COLLATE JET "
        "default "
        "'a,b', unique (n))");
    row("index", "create unique index SN on [customer] (SN)",
        "create unique index [customer_SN] on [customer] (SN)");
}

void tst_SqlDialect::statementsAreEmittedInTheEnginesWords()
{
    QFETCH(QString, given);
    QFETCH(QString, emitted);
    QCOMPARE(store::toSqlite(given, Wildcards::Asterisk), emitted);
    QCOMPARE(store::toSqlite(given, Wildcards::Percent), emitted.replace(u" GLOB "_s, u" LIKE "_s));
}

void tst_SqlDialect::brokenTextIsRefused_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("apostrophe") << u"select * from t where a like '*O'Brien*'"_s;
    QTest::newRow("bracket") << u"select [a from t"_s;
    QTest::newRow("second statement") << u"select 1; drop table customer"_s;
    QTest::newRow("smuggled statement") << u"select '*'; delete from customer where '1'='1'"_s;
}

void tst_SqlDialect::brokenTextIsRefused()
{
    QFETCH(QString, sql);
    QVERIFY_THROWS_EXCEPTION(core::Error, store::toSqlite(sql, Wildcards::Asterisk));
}

void tst_SqlDialect::onlyTheRowsOfOneTableAreFoundByTheirKeys_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("keys"); // empty: the whole result is needed
    const auto row = [](const char *sql, const char *keys) {
        QTest::newRow(sql) << QString::fromLatin1(sql) << QString::fromLatin1(keys);
    };
    row("select * from customer ", "select rowid from [customer]  order by rowid");
    row("select a, b from [t] where c='from x' order by d;",
        "select rowid from [t] where c='from x' order by d");
    row("select count(*) from t", "");
    row("select a as b from t", "");
    row("select distinct a from t", "");
    row("select * from t limit 5", "");
    row("select * from t, u where t.a=u.a", "");
    row("select a from t where b in (select b from u)", "");
    row("update t set a=1", "");
}

void tst_SqlDialect::onlyTheRowsOfOneTableAreFoundByTheirKeys()
{
    QFETCH(QString, sql);
    QFETCH(QString, keys);
    const auto table = store::asTableSelect(sql);
    QCOMPARE(table.has_value(), !keys.isEmpty());
    if (table) {
        QCOMPARE(table->inOrder(u"rowid"_s), keys);
    }
}

QTEST_APPLESS_MAIN(tst_SqlDialect)
#include "tst_SqlDialect.moc"
