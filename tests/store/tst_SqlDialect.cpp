#include "core/Error.h"
#include "store/SqlDialect.h"
#include "support/Table.h"

using store::Wildcards;

class tst_SqlDialect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statementsAreEmittedInTheEnginesWords()
    {
        for (const auto &[given, emitted] :
             {std::pair(u"Select * from customer where  [CustomerName] like '*it''s [x] like*'"_s,
                        u"Select * from customer where [CustomerName] GLOB '*it''s [x] like*'"_s),
              {u"update customer set T3='1' where T3=' ' or isnull(T3);"_s,
               u"update customer set T3='1' where T3=' ' or ((T3) is null)"_s},
              {u"select 1=isnull(ifnull(a,(b))) , (c)"_s, u"select 1=((ifnull(a,(b))) is null) , (c)"_s},
              {u"select isnull from t"_s, u"select isnull from t"_s}, // a column called so
              {u"select \"it's \"\"x\"\"\" from t"_s, u"select 'it''s \"x\"' from t"_s},
              {u"select 1--2 /*3"_s, u"select 1- -2 / *3"_s}, // no comment begins
              {u"Create Table t ([ID] text(50) primary key,m Memo,b BIT, n long not null)"_s,
               u"Create Table t ([ID] TEXT COLLATE JET primary key,m TEXT,b BOOLEAN, n INTEGER not null)"_s},
              {u"create table t (SN counter primary key, x text(5) default 'a,b', unique (n))"_s,
               u"create table t (SN INTEGER PRIMARY KEY AUTOINCREMENT, x TEXT COLLATE JET default 'a,b', "
               "unique (n))"_s},
              {u"create unique index SN on [customer] (SN)"_s,
               u"create unique index [customer_SN] on [customer] (SN)"_s}}) {
            QString wanted = emitted;
            QCOMPARE(store::toSqlite(given, Wildcards::Asterisk), wanted);
            QCOMPARE(store::toSqlite(given, Wildcards::Percent), wanted.replace(u" GLOB "_s, u" LIKE "_s));
        }
    }

    void brokenTextIsRefused()
    {
        for (const QString &sql : {u"select * from t where a like '*O'Brien*'"_s, u"select [a from t"_s,
                                   u"select '*'; delete from customer where '1'='1'"_s}) {
            QVERIFY_THROWS_EXCEPTION(core::Error, store::toSqlite(sql, Wildcards::Asterisk));
        }
    }

    void onlyTheRowsOfOneTableAreFoundByTheirKeys()
    {
        for (const QString &whole :
             {u"select count(*) from t"_s, u"select a as b from t"_s, u"select distinct a from t"_s,
              u"select * from t limit 5"_s, u"select * from t, u where t.a=u.a"_s,
              u"select a from t where b in (select b from u)"_s, u"update t set a=1"_s}) {
            QVERIFY2(!store::asTableSelect(whole), qPrintable(whole));
        }
        const auto keysOf = [](QStringView sql) {
            return store::asTableSelect(sql).value().inOrder(u"rowid"_s);
        };
        QCOMPARE(keysOf(u"select * from customer "), u"select rowid from [customer]  order by rowid"_s);
        QCOMPARE(keysOf(u"select a, b from [t] where c='from x' order by d;"),
                 u"select rowid from [t] where c='from x' order by d"_s);
    }
};

QTEST_APPLESS_MAIN(tst_SqlDialect)
#include "tst_SqlDialect.moc"
