#include "PhoneBookRows.h"
#include "phonebook/DataPhonebook.h"
#include "phonebook/PhoneBookEntry.h"
#include "support/Row.h"

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
        phonebook::SavedEntry save(const PhoneBookEntry &loaded, const PhoneBookEntry &typed)
        {
            const auto entrySaved = [this](const PhoneBookEntry &entry) { rebound = *entry.SN; };
            return phonebook::save({paths, log, texts, server, entrySaved}, loaded, typed);
        }
        bool show(const QString &query) { return list.setRecordSource(paths.PhoneBookFile, query); }
        QString shown() const { return support::columnOf(list, list.columnOf(u"SN"_s)); }
    };

private Q_SLOTS:
    void anEntryIsWrittenIntoItsRowOrANewOneAndReadBack()
    {
        for (const auto &[sn, key, place] : {std::tuple(std::optional<qint32>(), 10, 4), {9, 9, 3}}) {
            Desk desk;
            const QString file = desk.paths.PhoneBookFile;
            const QString others = tableRows(desk).first(place).join(u'\n');
            PhoneBookEntry entry{sn,        u"  7 '8' "_s,        u" O'Neil "_s,
                                 u"a\nb"_s, Qt::PartiallyChecked, Qt::Checked};
            const auto loaded = sn ? phonebook::entryBySn(file, *sn) : PhoneBookEntry();
            QCOMPARE(desk.save(*loaded, entry).entry.SN, key);
            QCOMPARE(tableRows(desk).join(u'\n'), others + u"\n%1|7 '8'| O'Neil |a\nb|G|Y"_s.arg(key));
            entry.SN = key;
            entry.Telno = u"7 '8'"_s;
            QVERIFY(phonebook::entryBySn(file, key) == entry);
            QVERIFY(phonebook::entryBySn(file, 8) == PhoneBookEntry{8}); // of Nulls
            QVERIFY(!phonebook::entryBySn(file, 4));
            QCOMPARE(desk.rebound, key);
            QCOMPARE(desk.server.sent, QStringList{u"REFRESHSIMPLEPHONEBOOK"_s});
        }
    }

    // What another desk does between reading and saving, in the editor and in the list.
    void twoDesksLoseNothingOfEachOther()
    {
        const QString update = u"update phonebook set "_s;
        for (const auto &[name, elsewhere, refused, mine] : // the disputed column; the row when mine hold
             {std::tuple("nobody", update + u"SN=SN"_s, u""_s, u"3|1|Miller|pays late|Y|G"_s),
              {"another field", update + u"IfVIP='N'"_s, u""_s, u"3|1|Miller|pays late|Y|N"_s},
              {"the same", update + u"Telno='2' where SN=3"_s, u"Telno"_s, u"3|1|Miller|pays late|Y|G"_s},
              {"deleted", u"delete from phonebook where SN=3"_s, u"gone"_s,
               u"10|1|Miller|pays late|Y|G"_s}}) {
            for (const bool inList : {false, true}) {
                const support::Row row(name);
                Desk desk;
                const QString file = desk.paths.PhoneBookFile;
                PhoneBookEntry loaded = phonebook::entryBySn(file, 3).value();
                PhoneBookEntry typed = phonebook::withField(loaded, u"Telno"_s, u"1"_s);
                desk.runSql(file, elsewhere);
                const auto save = [&] {
                    return inList ? phonebook::writeTyped(file, loaded, typed) : desk.save(loaded, typed);
                };
                phonebook::SavedEntry saved = save();
                const QString column = saved.disputed.isEmpty() ? u""_s : saved.disputed.constFirst().column;
                QCOMPARE(saved.gone ? u"gone"_s : column, refused);
                phonebook::decide(saved, core::Whose::Mine, loaded, typed);
                saved = saved.written ? saved : save();
                QCOMPARE(support::rowsOf(file, u"select * from phonebook where SN=%1"_s.arg(*saved.entry.SN)),
                         mine);
            }
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
              {u"m*er"_s, u"3"_s},
              {u"'; delete from phonebook; --"_s, u""_s}}) {
            QVERIFY(desk.show(phonebook::searchQuery(text)));
            QCOMPARE(desk.shown(), found);
        }
        QCOMPARE(desk.logMessages(), QStringList());
        QCOMPARE(tableRows(desk).size(), 4);
    }

    void aCellKeepsLettersAndShowsWords()
    {
        Desk desk;
        QVERIFY(desk.show(phonebook::allEntriesQuery()) && !desk.shown().isEmpty());
        for (const auto &[field, typed, taken, shown, line] :
             {std::tuple(u"Telno"_s, u"  "_s, false, u"5550144"_s, u"5550144|Miller|pays late|Y|G"_s),
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
