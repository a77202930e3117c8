#include "core/Error.h"
#include "store/Select.h"
#include "store/SqlTokens.h"
#include "store/TextMatcher.h"
#include "store/TextOrder.h"
#include "store/engine/SqliteEmitter.h"
#include "support/Test.h"

using store::TextMatcher, store::Wildcards;

/// The words of statements, and how the texts in them are matched and ordered.
class tst_GivenWords : public QObject
{
    Q_OBJECT

    static bool like(const QString &text, const QString &pattern, Wildcards wildcards = Wildcards::Asterisk)
    {
        return TextMatcher(pattern.toUtf8(), wildcards).matches(text.toUtf8());
    }

    static std::optional<store::Select> parsed(const QString &sql) { return store::parseSelect(sql); }

    static int signOfOrder(const QByteArray &left, const QByteArray &right)
    {
        const int order = store::compareJet(left, right);
        return (order > 0) - (order < 0);
    }

private Q_SLOTS:
    void statementsAreEmittedInTheEnginesWords()
    {
        for (const auto &[given, emitted] :
             {std::pair(u"Select * from customer where  [CustomerName] like '*it''s [x] like*'"_s,
                        u"Select * from customer where [CustomerName] GLOB '*it''s [x] like*'"_s),
              {u"update customer set T3='1' where T3=' ' or isnull(T3);"_s,
               u"update customer set T3='1' where T3=' ' or ((T3) is null)"_s},
              {u"select 1=isnull(ifnull(a,(b))) , (c)"_s, u"select 1=((ifnull(a,(b))) is null) , (c)"_s},
              {u"select \"it's \"\"x\"\"\" from t"_s, u"select 'it''s \"x\"' from t"_s},
              {u"select 1--2 /*3"_s, u"select 1- -2 / *3"_s}, // no comment begins
              {u"Create Table t ([ID] text(50) primary key,m Memo,b BIT, n long not null)"_s,
               u"Create Table t ([ID] TEXT COLLATE JET primary key,m TEXT,b BOOLEAN, n INTEGER not null)"_s},
              {u"create table t (SN counter primary key, x text(5) default 'a,b', unique (n))"_s,
               u"create table t (SN INTEGER PRIMARY KEY AUTOINCREMENT, x TEXT COLLATE JET default 'a,b', "
               "unique (n))"_s},
              {u"alter table t add column [a b] text(5) default ''"_s,
               u"alter table t add column [a b] TEXT COLLATE JET default ''"_s},
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

    void onlyTheRowsOfTablesAreFoundByTheirKeys()
    {
        for (const QString &whole :
             {u"select count(*) from t"_s, u"select a as b from t"_s, u"select distinct a from t"_s,
              u"select * from t limit 5"_s, u"select * from t x where a=1"_s, u"select * from t, u, v"_s,
              u"select a from t where b in (select b from u)"_s, u"update t set a=1"_s,
              u"select a from t where b=1) or (c=1"_s, u"select a from t where (b=1"_s, u"select"_s,
              QString()}) {
            QVERIFY2(!parsed(whole), qPrintable(whole));
        }
        const auto keysOf = [](const QString &sql) {
            return store::toSqlite(parsed(sql).value().inOrder(u"rowid"_s), Wildcards::Percent);
        };
        QCOMPARE(keysOf(u"select * from customer "_s), u"select rowid from [customer] order by rowid"_s);
        QCOMPARE(keysOf(u"select a, b from [t] where c like 'from x' order by d desc;"_s),
                 u"select rowid from [t] where ( c LIKE 'from x' ) order by d desc"_s);
        QCOMPARE(parsed(u"select a from t order by [d]"_s)->orderColumn, u"d"_s);
        QCOMPARE(parsed(u"select a from t order by d desc"_s)->orderColumn, QString());
    }

    void aConditionIsThatOfTheTableWhoseColumnsItNames()
    {
        const QStringList calls{u"CallID"_s, u"Name"_s};
        const QStringList requests{u"CallID"_s, u"Note"_s, u"Done"_s};
        for (const auto &[where, words, ofCalls, ofRequests] :
             {std::tuple(u"Calls.CallID = Requests.CallID"_s, 1, false, false),
              {u"[name] like 'and*' and note='x' or Done = True"_s, 1, false, false}, // "or" binds less
              {u"[NAME] like '*or*'"_s, 1, true, false},
              {u"Requests.[CallID]='Name'"_s, 1, false, true},
              {u"done = True and not isnull([note])"_s, 2, false, true},
              {u"name between 'a' and 'b'"_s, 1, true, false}}) {
            const auto select = parsed(u"select Calls.Name from Requests,Calls where "_s + where);
            QVERIFY2(select && select->conditions.size() == size_t(words), qPrintable(where));
            for (const store::Select::Condition &each : select->conditions) {
                QVERIFY2(isAbout(each, u"calls"_s, calls, requests) == ofCalls, qPrintable(where));
                QVERIFY2(isAbout(each, u"requests"_s, requests, calls) == ofRequests, qPrintable(where));
            }
        }
    }

    void patternsMatch()
    {
        for (const auto &[pattern, hit, miss] : {std::tuple(u""_s, u""_s, u"a"_s),
                                                 {u"0#-*"_s, u"05-"_s, u"0x-"_s},
                                                 {u"[A-cż]x"_s, u"Żx"_s, u"dx"_s},
                                                 {u"[!a-c]x"_s, u"dx"_s, u"Bx"_s},
                                                 {u"a[]b"_s, u"ab"_s, u"a[]b"_s},
                                                 {u"*[a*"_s, u"x[Ay"_s, u"xay"_s},
                                                 {u"a[*]"_s, u"a*"_s, u"ab"_s},
                                                 {u"*ą?c*d"_s, u"xĄ张cyd"_s, u"xĄcd"_s},
                                                 {u"*istanbul ışık*"_s, u"İSTANBUL IŞIK AŞ"_s, u"stanbul"_s},
                                                 {u"5%*"_s, u"5% off"_s, u"5 off"_s}}) {
            QVERIFY2(like(hit, pattern) && !like(miss, pattern), qPrintable(pattern));
        }
        QVERIFY(like(u"a[*]#"_s, u"%[_]%"_s, Wildcards::Percent));
    }

    void namesStandInDictionaryOrder()
    {
        const QStringList ranks =
            QString(u"| |  |0755|A b|ab|Æ|Ea|éa|eb|Isparta=ISPARTA|ısparta|Lodz|Łódź=łÓDŹ|Lodzz|"
                    "resume x|résumé x=re\u0301sume\u0301 x|resumes|Zoë=ZOË　 =Ｚｏë|ΟΔΟΣ=οδος|Дом|"
                    "محمد|ｶﾞ=ガ|张伟|\uA640\uFB21=\uA641\uFB21|한국"_s)
                .split(u'|');
        for (qsizetype i = 0; i < ranks.size(); ++i) {
            for (qsizetype j = 0; j < ranks.size(); ++j) {
                for (const QString &left : ranks.at(i).split(u'=')) {
                    for (const QString &right : ranks.at(j).split(u'=')) {
                        QVERIFY2(signOfOrder(left.toUtf8(), right.toUtf8()) == (i > j) - (i < j),
                                 qPrintable(left + u" and "_s + right));
                    }
                }
            }
        }
    }
};

QTEST_APPLESS_MAIN(tst_GivenWords)
#include "tst_GivenWords.moc"
