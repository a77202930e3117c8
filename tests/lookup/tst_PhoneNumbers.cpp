#include "lookup/PhoneNumbers.h"
#include "support/Table.h"
#include "support/TestDesk.h"

using namespace Qt::StringLiterals;

class tst_PhoneNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextIsCutAtItsSeparators_data()
    {
        const support::Table<QString, QString, QString> row("text", "pieces", "separator");
        const QString builtIn; // null: the built-in ones
        row("empty", u""_s, u""_s, builtIn);
        row("all of them", u",,1,2:3.4 5|6\r\n7\r8\n"_s, u"1/2/3/4/5/6/7/8"_s, builtIn);
        row("hyphen, tab, semicolon stay", u"0533-1234;4\t5"_s, u"0533-1234;4\t5"_s, builtIn);
        row("wide dash and brackets stay", u"（0533）12－34"_s, u"（0533）12－34"_s, builtIn);
        row("wide comma, blank and digits", u"1，2　3４5"_s, u"1/2/3/5"_s, builtIn);
        row("words around a number", u"电话123号😀4"_s, u"123/4"_s, builtIn);
        row("code 255 stays, 256 not", u"1\u00FF2\u01003"_s, u"1\u00FF2/3"_s, builtIn);
        row("given one", u"123;4 5,6"_s, u"123/4 5,6"_s, u";"_s);
        row("given letter, by case", u"1a2A3"_s, u"1/2A3"_s, u"a"_s);
        row("given two characters", u"1ab2"_s, u""_s, u"ab"_s);
        row("101 pieces", u"7 "_s.repeated(101), u"7/"_s.repeated(101).chopped(1), builtIn);
        row("32767 characters", QString(32767, u'7'), QString(32767, u'7'), builtIn);
    }
    void aTextIsCutAtItsSeparators()
    {
        QFETCH(QString, text);
        QFETCH(QString, separator);
        support::TestDesk desk;
        const auto given = separator.isNull() ? std::nullopt : std::optional(separator);
        const lookup::PhoneNumberList list = lookup::SplitPhoneNumber(desk.log, text, given);
        QTEST(QStringList(list.Items.begin(), list.Items.begin() + list.Count).join(u'/'), "pieces");
        QCOMPARE(std::count(list.Items.begin(), list.Items.end(), QString()), 101 - list.Count);
        QCOMPARE(desk.logMessages(), QStringList());
    }

    void whatDoesNotFitGivesNothingAndIsLogged()
    {
        support::TestDesk desk;
        for (const QString &text : {u"7 "_s.repeated(101) + u'7', QString(32768, u'7')}) {
            QCOMPARE(lookup::SplitPhoneNumber(desk.log, text).Count, 0);
            QVERIFY(desk.logMessages().last().startsWith(u"!SplitPhoneNumber "_s));
        }
    }
};

QTEST_GUILESS_MAIN(tst_PhoneNumbers)
#include "tst_PhoneNumbers.moc"
