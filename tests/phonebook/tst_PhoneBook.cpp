#include "PhoneBookRows.h"
#include "phonebook/DataPhonebook.h"
#include "phonebook/PhoneBookEntry.h"

using phonebook::PhoneBookEntry;

class tst_PhoneBook : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        support::KeyTexts texts;
        support::FakeServer server;
        phonebook::DataPhonebook list{log, texts};
        int rebound = 0;

        Desk() { runSql(paths.PhoneBookFile, phoneBookRows); }
        QString save(const PhoneBookEntry &entry)
        {
            return phonebook::SaveSimplePhoneBook(log, paths.PhoneBookFile, entry,
                                                  {[this](qint32 sn) { rebound = sn; }, server});
        }
        bool show(const QString &query) { return list.setRecordSource(paths.PhoneBookFile, query); }
        QString shown() const { return support::columnOf(list, list.columnOf(u"SN"_s)); }
    };

private Q_SLOTS:
    void anEntryIsWrittenIntoItsRowOrANewOneAndReadBack()
    {
        for (const auto &[sn, key] : {std::pair(u""_s, u"10"_s), {u"5"_s, u"5"_s}, {u"77"_s, u"10"_s}}) {
            Desk desk;
            const auto rows = [&desk, key = key](const QString &which) {
                return support::rowsOf(desk.paths.PhoneBookFile,
                                       u"select * from phonebook where SN "_s + which + key);
            };
            const QString others = rows(u"<>"_s);
            PhoneBookEntry entry{sn,        u"  7 '8' "_s,        u" O'Neil "_s,
                                 u"a\nb"_s, Qt::PartiallyChecked, Qt::Checked};
            QCOMPARE(desk.save(entry), key);
            QCOMPARE(rows(u"<>"_s), others);
            QCOMPARE(rows(u"="_s), key + u"|7 '8'| O'Neil |a\nb|G|Y"_s);
            entry.SN = key;
            entry.Telno = u"7 '8'"_s;
            QVERIFY(phonebook::entryBySn(desk.paths.PhoneBookFile, key.toInt()) == entry);
            QVERIFY(phonebook::entryBySn(desk.paths.PhoneBookFile, 8) == PhoneBookEntry{u"8"_s}); // of Nulls
            QVERIFY(!phonebook::entryBySn(desk.paths.PhoneBookFile, 4));
            QCOMPARE(desk.rebound, key.toInt());
            QCOMPARE(desk.server.sent, QStringList{u"REFRESHSIMPLEPHONEBOOK"_s});
            QCOMPARE(desk.logMessages(), QStringList());
        }
    }

    void aSearchFindsTheTextAnywhere()
    {
        Desk desk;
        for (const auto &[text, found] :
             {std::pair(u""_s, u"3|5|9"_s), // in table order, and nothing in Nulls
              {u"5501"_s, u"3|9"_s},
              {u"ŻÓŁW"_s, u"5"_s},
              {u"LATE"_s, u"3"_s},
              {u"5"_s, u"3|5|9"_s}, // in several columns
              {u"0%"_s, u"9"_s},
              {u"m*er"_s, u"3"_s},
              {u"[K-M]iller"_s, u"3"_s},
              {u"nobody"_s, u""_s}}) {
            QVERIFY(desk.show(phonebook::searchQuery(text)));
            QCOMPARE(desk.shown(), found);
        }
        QVERIFY(desk.show(phonebook::allEntriesQuery()));
        QCOMPARE(desk.logMessages(), QStringList());
        for (const QString &quote : {u"O'Neil"_s, u"'; delete from phonebook; --"_s}) {
            QVERIFY(desk.show(phonebook::searchQuery(quote)));
            QCOMPARE(desk.shown(), u""_s);
        }
        QCOMPARE(desk.logMessages(), QStringList());
        QCOMPARE(tableRows(desk).size(), 4);
    }

    void aCellKeepsLettersAndShowsWords()
    {
        Desk desk;
        QVERIFY(desk.show(phonebook::allEntriesQuery()));
        for (const auto &[field, typed, taken, shown, line] :
             {std::tuple(u"Telno"_s, u"  "_s, false, u"5550144"_s, u"5550144|Miller|pays late|Y|G"_s),
              {u"IfVIP"_s, u"G"_s, false, u"[MarkUndecided]"_s, u"5550144|Miller|pays late|Y|G"_s}, // as is
              {u"IfVIP"_s, u"Y"_s, true, u"[Yes]"_s, u"5550144|Miller|pays late|Y|Y"_s},
              {u"Telno"_s, u" 7 "_s, true, u"7"_s, u"7|Miller|pays late|Y|Y"_s}}) {
            const QModelIndex cell = desk.list.index(2, desk.list.columnOf(field));
            QCOMPARE(desk.list.setData(cell, typed), taken);
            QCOMPARE(cell.data().toString(), shown);
            QCOMPARE(tableRows(desk).first(), u"3|"_s + line);
        }
    }
};

QTEST_GUILESS_MAIN(tst_PhoneBook)
#include "tst_PhoneBook.moc"
